#include "base/handles.h"
#include "support/drive_win.h"
#include "ui/MessageLoop.h"
#include "ui/Timer.h"

#include <doctest/doctest.h>

#include <memory>
#include <stdexcept>
#include <string>

using namespace velora;

namespace {
KernelHandle event(bool manual = false)
{
    return KernelHandle(CreateEventW(nullptr, manual, FALSE, nullptr));
}
} // namespace

TEST_CASE("posted calls run later, in order, and one that throws loses none")
{
    std::string order;
    postCall([&] {
        order += 'a';
        postCall([&] { order += 'd'; });
    });
    postCall([&] {
        order += 'b';
        throw std::runtime_error("lost?");
    });
    postCall([&] { order += 'c'; });
    CHECK(order.empty());
    CHECK(waitUntil([&] { return order.size() == 4; }, 5000));
    CHECK(order == "abcd");
}

TEST_CASE("waiting ends with the condition or the time")
{
    CHECK(waitUntil([] { return true; }, 0));
    CHECK(!waitUntil([] { return false; }, 30));
    Timer timer;
    bool rung = false;
    timer.startOnce(10, [&] { rung = true; });
    CHECK(waitUntil([&] { return rung; }, 5000));
}

TEST_CASE("a timer repeats, stops, starts anew and dies in its own tick")
{
    Timer timer;
    int ticks = 0;
    timer.start(5, [&] {
        if (++ticks == 3)
            timer.stop();
    });
    CHECK(timer.active());
    CHECK(waitUntil([&] { return !timer.active(); }, 5000));
    pause(50);
    CHECK(ticks == 3);

    int again = 0;
    timer.startOnce(5, [&] { timer.startOnce(5, [&] { ++again; }); });
    CHECK(waitUntil([&] { return again == 1; }, 5000));

    auto mortal = std::make_unique<Timer>();
    bool died = false;
    mortal->start(5, [&] {
        mortal.reset();
        died = true;
    });
    CHECK(waitUntil([&] { return died; }, 5000));

    int thrown = 0;
    timer.start(5, [&] {
        ++thrown;
        throw std::runtime_error("tick");
    });
    CHECK(waitUntil([&] { return thrown >= 3; }, 5000));
    timer.stop();
}

TEST_CASE("a tick that pumps is not entered again")
{
    Timer timer;
    int depth = 0, deepest = 0, ticks = 0;
    timer.start(5, [&] {
        deepest = std::max(deepest, ++depth);
        pause(40);
        --depth;
        ++ticks;
    });
    CHECK(waitUntil([&] { return ticks >= 2; }, 5000));
    timer.stop();
    CHECK(deepest == 1);
}

TEST_CASE("a handle is served once, or each time, until its wait is dropped")
{
    const KernelHandle once = event(true), again = event();
    int onceCount = 0, againCount = 0;
    WaitHandle waitOnce = addWaitHandle(once.get(), [&] { ++onceCount; });
    WaitHandle waitAgain = addWaitHandle(
        again.get(), [&] { ++againCount; }, true);
    SetEvent(once.get()); // stays signalled, like a process that has ended
    for (int i = 1; i <= 3; ++i) {
        SetEvent(again.get());
        CHECK(waitUntil([&] { return againCount == i; }, 5000));
    }
    CHECK(onceCount == 1);
    waitAgain = {};
    SetEvent(again.get());
    pause(60);
    CHECK(againCount == 3);

    WaitHandle self;
    int own = 0;
    self = addWaitHandle(once.get(), [&] {
        self = {};
        ++own;
    });
    CHECK(waitUntil([&] { return own == 1; }, 5000));
}

TEST_CASE("handles and messages do not starve each other")
{
    const KernelHandle always = event(true), later = event();
    int served = 0;
    bool flood = true, seen = false;
    const WaitHandle busy = addWaitHandle(
        always.get(), [&] { ++served; }, true);
    const WaitHandle other = addWaitHandle(later.get(), [&] { seen = true; });
    std::function<void()> again = [&] {
        if (flood)
            postCall(again);
    };
    postCall(again);
    SetEvent(later.get());
    CHECK(waitUntil([&] { return seen; }, 5000)); // in spite of the flood of messages
    SetEvent(always.get());
    bool message = false;
    postCall([&] { message = true; });
    CHECK(waitUntil([&] { return message && served > 0; }, 5000));
    flood = false;
    doEvents();
}

TEST_CASE("a handle that was closed under its wait is dropped, the others go on")
{
    KernelHandle closed = event();
    const KernelHandle good = event();
    int served = 0;
    const WaitHandle bad = addWaitHandle(closed.get(), [&] { served += 100; });
    const WaitHandle fine = addWaitHandle(good.get(), [&] { ++served; });
    closed.reset();
    SetEvent(good.get());
    CHECK(waitUntil([&] { return served > 0; }, 5000));
    CHECK(served == 1);
}

TEST_CASE("too many handles are refused")
{
    const KernelHandle one = event();
    std::vector<WaitHandle> waits;
    CHECK_THROWS(([&] {
        for (int i = 0; i < 100; ++i)
            waits.push_back(addWaitHandle(one.get(), [] {}));
    }()));
    CHECK(waits.size() == 60);
}

TEST_CASE("quitting ends every loop and its code reaches the outermost")
{
    bool innerEnded = false;
    postCall([&] {
        postCall([] { quitMessageLoop(5); });
        innerEnded = !waitUntil([] { return false; }, 5000);
    });
    CHECK(runMessageLoop() == 5);
    CHECK(innerEnded);
    CHECK(!messageLoopQuits());
    PostQuitMessage(6); // another library's way
    CHECK(runMessageLoop() == 6);
}
