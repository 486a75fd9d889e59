// Hooks: verdicts, delayed events, posted events, pauses, re-entry, other programs over us, leaks.
#include "hook/WindowHook.h"

#include "hook/smallaol_win.h"

#include <algorithm>
#include <doctest/doctest.h>
#include <memory>
#include <vector>

using namespace velora;
using namespace velora::hooktest;
using namespace velora::smallaol;

namespace {

struct Room {
    SmallAol aol;
    HWND child = aol.open();
    HWND display = aol.display(child);
    HWND input = aol.input(child);
    AgentLink link;

    explicit Room(bool ansi = false) : aol(ansi) { REQUIRE(link.connect(aol.frame)); }

    /// AOL has dealt with all that was posted to the window before.
    void settle()
    {
        const int ups = aol.count(kEnterUp);
        PostMessageW(input, WM_KEYUP, VK_RETURN, 0xC01C0001);
        REQUIRE(waitFor([&] { return aol.count(kEnterUp) > ups; }));
    }
};

const std::initializer_list<WatchRule> kEnterRules = {WatchRule::key(WM_KEYDOWN, VK_RETURN),
                                                      WatchRule::key(WM_CHAR, VK_RETURN)};
const WatchRule kNoticeRule{kNotice, 0, ~WPARAM{0}, Delivery::postedAfter, true};

} // namespace

TEST_CASE("Enter taken from AOL: neither key nor character reach it; let through: both do")
{
    for (const bool ansi : {false, true}) {
        CAPTURE(ansi);
        Room room(ansi);
        bool swallow = true;
        int asked = 0;
        std::vector<int> delayed;
        WindowHook hook;
        hook.WndMessageX = [&](HookMessage& message) {
            ++asked;
            CHECK(message.window == room.input);
            CHECK(message.message == WM_KEYDOWN);
            CHECK(message.wParam == VK_RETURN);
            CHECK_FALSE(message.posted);
            message.noDefault = swallow;
            message.requestDelayed(7);
        };
        hook.DelayedEvent = [&](int code) { delayed.push_back(code); };
        REQUIRE(hook.attach(room.link, room.input, kEnterRules));
        CHECK(hook.window() == room.input);

        room.aol.pressEnter(room.input);
        CHECK(waitFor([&] { return !delayed.empty(); }));
        CHECK(delayed == std::vector<int>{7});
        room.settle();
        CHECK(room.aol.count(kEnterDown) == 0);
        CHECK(room.aol.count(kEnterChar) == 0);
        CHECK(asked == 1);

        swallow = false;
        delayed.clear();
        room.aol.pressEnter(room.input);
        CHECK(waitFor([&] { return !delayed.empty(); }));
        // The delayed event comes when AOL has had the key.
        CHECK(room.aol.count(kEnterDown) == 1);
        room.settle();
        CHECK(room.aol.count(kEnterChar) == 1);
        CHECK(asked == 2);

        hook.detach();
        CHECK(hook.window() == nullptr);
        room.aol.pressEnter(room.input);
        room.settle();
        CHECK(room.aol.count(kEnterDown) == 2);
        CHECK(asked == 2);
    }
}

TEST_CASE("the program's own Enter inside the event: nested, no deadlock, asked again")
{
    Room room;
    int depth = 0, deepest = 0;
    WindowHook hook;
    hook.WndMessageX = [&](HookMessage& message) {
        deepest = std::max(deepest, ++depth);
        if (message.message == WM_KEYDOWN) {
            message.noDefault = true;
            CHECK(room.link.setText(room.input, L"faded"));
            CHECK(room.link.readText(room.input) == L"faded");
            CHECK(sendToAol(room.input, WM_CHAR, VK_RETURN, 0).has_value());
        }
        --depth;
    };
    REQUIRE(hook.attach(room.link, room.input, kEnterRules));
    room.aol.pressEnter(room.input);
    REQUIRE(waitFor([&] { return room.aol.count(kEnterChar) == 1; }));
    room.settle();
    CHECK(deepest == 2);
    CHECK(room.aol.count(kEnterDown) == 0);
    CHECK(room.aol.count(kEnterChar) == 1); // the program's, not the user's
}

TEST_CASE("the program's own Enter after the event, while the user's character is still to come")
{
    Room room;
    WindowHook hook;
    hook.WndMessageX = [&](HookMessage& message) {
        message.noDefault = message.message == WM_KEYDOWN;
    };
    REQUIRE(hook.attach(room.link, room.input, kEnterRules));
    CHECK(sendToAol(room.input, WM_KEYDOWN, VK_RETURN, 0x001C0001));
    CHECK(sendToAol(room.input, WM_CHAR, VK_RETURN, 0));
    CHECK(room.aol.count(kEnterChar) == 1);
    PostMessageW(room.input, WM_CHAR, VK_RETURN, 0x001C0001);
    PostMessageW(room.input, WM_CHAR, 'z', 1);
    CHECK(waitFor([&] { return textOf(room.input).find(L'z') != std::wstring::npos; }));
    CHECK(room.aol.count(kEnterDown) == 0);
    CHECK(room.aol.count(kEnterChar) == 1);
}

TEST_CASE("posted events are coalesced, and one comes after the last change")
{
    Room room;
    int told = 0, linesSeen = 0;
    WindowHook hook;
    hook.WndMessageX = [&](HookMessage& message) {
        CHECK(message.posted);
        CHECK(message.message == kNotice);
        ++told;
        linesSeen = room.link.readLines(room.display, 0, 0)->total;
    };
    REQUIRE(hook.attach(room.link, room.display, {kNoticeRule}));
    room.aol.say(room.display, 50); // nothing is pumped here meanwhile
    CHECK(told == 0);
    const int all = room.link.readLines(room.display, 0, 0)->total;
    CHECK(waitFor([&] { return linesSeen == all; }));
    CHECK(told == 1);
    CHECK(room.aol.count(kNotices) == 50);
    room.aol.say(room.display, 1);
    CHECK(waitFor([&] { return told == 2; }));
}

TEST_CASE("a paused hook raises nothing, and what it missed is raised once afterwards")
{
    Room room;
    int told = 0, asked = 0;
    WindowHook display, input;
    display.WndMessageX = [&](HookMessage&) { ++told; };
    input.WndMessageX = [&](HookMessage&) { ++asked; };
    REQUIRE(display.attach(room.link, room.display, {kNoticeRule}));
    REQUIRE(input.attach(room.link, room.input, kEnterRules));
    {
        WindowHook::Pause pause(display), inputPause(input);
        WindowHook::Pause nested(display);
        room.aol.say(room.display, 5);
        room.aol.pressEnter(room.input);
        room.settle();
        CHECK(told == 0);
        CHECK(asked == 0);
    }
    CHECK(waitFor([&] { return told == 1; }));
    room.settle();
    CHECK(told == 1);
    {
        WindowHook::Pause pause(display); // nothing happens under this one
    }
    room.settle();
    CHECK(told == 1);
    room.aol.say(room.display, 1);
    CHECK(waitFor([&] { return told == 2; }));
    // An event that was under way when the pause began is kept as well.
    room.aol.say(room.display, 1);
    {
        WindowHook::Pause pause(display);
        room.settle();
        CHECK(told == 2);
    }
    CHECK(waitFor([&] { return told == 3; }));
    // A hook may be detached, or destroyed, under its pause.
    auto owned = std::make_unique<WindowHook>();
    REQUIRE(owned->attach(room.link, room.input, kEnterRules));
    WindowHook::Pause pause(*owned);
    owned.reset();
}

TEST_CASE("a hook may detach and be destroyed inside its own event")
{
    Room room;
    auto hook = std::make_unique<WindowHook>();
    bool done = false;
    hook->WndMessageX = [&](HookMessage& message) {
        message.noDefault = true;
        hook.reset();
        done = true;
    };
    REQUIRE(hook->attach(room.link, room.input, kEnterRules));
    room.aol.pressEnter(room.input);
    CHECK(waitFor([&] { return done; }));
    room.settle();
    CHECK(room.aol.count(kEnterDown) == 0);
    CHECK_FALSE(room.aol.subclassed(room.input));
}

TEST_CASE("disconnecting inside an event gives everything back")
{
    Room room;
    WindowHook hook;
    bool done = false;
    hook.WndMessageX = [&](HookMessage& message) {
        message.noDefault = true;
        room.link.disconnect();
        done = true;
    };
    REQUIRE(hook.attach(room.link, room.input, kEnterRules));
    room.aol.pressEnter(room.input);
    CHECK(waitFor([&] { return done; }));
    room.settle();
    CHECK(room.aol.count(kEnterDown) == 0); // its answer still counts
    CHECK_FALSE(room.aol.subclassed(room.input));
    CHECK(room.link.connect(room.aol.frame));
}

TEST_CASE("an exception in a handler lets the message through")
{
    Room room;
    WindowHook hook;
    int asked = 0;
    hook.WndMessageX = [&](HookMessage&) {
        ++asked;
        throw 1;
    };
    REQUIRE(hook.attach(room.link, room.input, kEnterRules));
    room.aol.pressEnter(room.input);
    CHECK(waitFor([&] { return room.aol.count(kEnterChar) == 1; }));
    CHECK(asked == 1);
    CHECK(room.aol.count(kEnterDown) == 1);
}

TEST_CASE("answerNow frees AOL before the handler is done")
{
    Room room;
    WindowHook hook;
    bool aolWentOn = false;
    hook.WndMessageX = [&](HookMessage& message) {
        if (message.message != WM_KEYDOWN)
            return;
        message.noDefault = true;
        message.answerNow();
        // Only an AOL that no longer waits for us gets to its posted messages.
        PostMessageW(room.input, WM_CHAR, 'x', 1);
        aolWentOn = waitFor([&] { return textOf(room.input).find(L'x') != std::wstring::npos; });
    };
    REQUIRE(hook.attach(room.link, room.input, kEnterRules));
    // Pressed by another process's thread would be the same: a posted key.
    PostMessageW(room.input, WM_KEYDOWN, VK_RETURN, 1);
    PostMessageW(room.input, WM_KEYUP, VK_RETURN, 1);
    CHECK(waitFor([&] { return aolWentOn; }));
    CHECK(room.aol.count(kEnterDown) == 0);
}

TEST_CASE("a program that does not answer is asked no more after three times, until it is back")
{
    Room room;
    int asked = 0;
    WindowHook hook;
    hook.WndMessageX = [&](HookMessage&) { ++asked; };
    REQUIRE(hook.attach(room.link, room.input, kEnterRules));
    for (int i = 0; i < 5; ++i)
        room.aol.pressEnter(room.input);
    // This thread serves nothing while AOL waits its 2 s each; asking AOL may not serve either.
    const DWORD start = GetTickCount();
    DWORD_PTR down = 0;
    while (down < 5 && GetTickCount() - start < 30000) {
        SendMessageTimeoutW(room.aol.frame, kCount, kEnterDown, 0, SMTO_BLOCK, 100, &down);
        Sleep(20);
    }
    CHECK(down == 5);
    CHECK(room.link.counters().questions == 3);
    CHECK(room.link.counters().timeouts == 3);
    // It comes back, and is asked again.
    const int before = asked;
    CHECK(waitFor([&] {
        room.aol.pressEnter(room.input);
        room.settle();
        return asked > before;
    }));
}

TEST_CASE("another program subclasses over us: detaching leaves its chain whole")
{
    for (const bool ansi : {false, true}) {
        CAPTURE(ansi);
        Room room(ansi);
        int asked = 0;
        WindowHook hook;
        hook.WndMessageX = [&](HookMessage&) { ++asked; };
        REQUIRE(hook.attach(room.link, room.input, kEnterRules));
        room.aol.tell(kOverlay, reinterpret_cast<WPARAM>(room.input), 1);
        room.aol.pressEnter(room.input);
        CHECK(waitFor([&] { return asked == 1; }));
        hook.detach();
        room.aol.pressEnter(room.input);
        room.settle();
        CHECK(asked == 1);
        CHECK(room.aol.count(kEnterDown) == 2);
        CHECK(room.aol.count(kOverlaid) > 0);
        // Attached again the old record serves, and the message is asked once, not twice.
        REQUIRE(hook.attach(room.link, room.input, kEnterRules));
        room.aol.pressEnter(room.input);
        room.settle();
        CHECK(asked == 2);
        hook.detach();
        room.aol.tell(kOverlay, reinterpret_cast<WPARAM>(room.input), 0);
        room.aol.pressEnter(room.input);
        room.settle();
        CHECK(room.aol.count(kEnterDown) == 4);
    }
}

TEST_CASE("two hooks on one window each have their say")
{
    Room room;
    int first = 0, second = 0;
    WindowHook one, two;
    one.WndMessageX = [&](HookMessage&) { ++first; };
    two.WndMessageX = [&](HookMessage& message) {
        ++second;
        message.noDefault = true;
    };
    REQUIRE(one.attach(room.link, room.input, kEnterRules));
    REQUIRE(two.attach(room.link, room.input, kEnterRules));
    room.aol.pressEnter(room.input);
    CHECK(waitFor([&] { return first == 1 && second == 1; }));
    room.settle();
    CHECK(room.aol.count(kEnterDown) == 0);
    two.detach();
    room.aol.pressEnter(room.input);
    CHECK(waitFor([&] { return first == 2; }));
    CHECK(second == 1);
}

TEST_CASE("refused: windows that are not AOL's, too many rules, too many hooks")
{
    Room room;
    WindowHook hook;
    const HWND own =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    CHECK_FALSE(hook.attach(room.link, own, kEnterRules));
    CHECK_FALSE(hook.attach(room.link, nullptr, kEnterRules));
    CHECK_FALSE(hook.attach(room.link, GetDesktopWindow(), kEnterRules));
    CHECK(hook.window() == nullptr);
    DestroyWindow(own);
    const WatchRule r = WatchRule::key(WM_KEYDOWN, 1);
    CHECK_FALSE(
        hook.attach(room.link, room.input, {r, r, r, r, r, r, r, r, r, r, r, r, r, r, r, r, r}));
    std::vector<std::unique_ptr<WindowHook>> many;
    bool attached = true;
    for (int i = 0; attached && i < 100; ++i) {
        many.push_back(std::make_unique<WindowHook>());
        attached = many.back()->attach(room.link, room.input, kEnterRules);
    }
    CHECK(many.size() == 33);
    many.clear();
    CHECK_FALSE(room.aol.subclassed(room.input));
    CHECK(hook.attach(room.link, room.input, kEnterRules));
}

TEST_CASE("a hooked window that goes: the hook knows, and stale events are dropped")
{
    Room room;
    int told = 0;
    HWND gone = nullptr;
    room.link.onGone = [&](HWND window) {
        if (window == room.display)
            gone = window;
    };
    WindowHook hook;
    hook.WndMessageX = [&](HookMessage&) { ++told; };
    REQUIRE(hook.attach(room.link, room.display, {kNoticeRule}));
    room.aol.say(room.display, 1);
    hook.detach(); // its event is still under way
    REQUIRE(hook.attach(room.link, room.display, {{kNotice, 1, 1, Delivery::postedAfter, true}}));
    room.settle();
    CHECK(told == 0);
    PostMessageW(room.child, WM_CLOSE, 0, 0);
    CHECK(waitFor([&] { return gone == room.display; }));
    CHECK(hook.window() == nullptr);
}

TEST_CASE("a thousand times attached and detached leaves nothing behind")
{
    Room room;
    WindowHook hook;
    const auto round = [&] {
        REQUIRE(hook.attach(room.link, room.input, kEnterRules));
        hook.detach();
    };
    round();
    std::vector<LRESULT> before, after;
    DWORD handlesBefore = 0, handlesAfter = 0;
    for (const WPARAM kind : {0, 1, 2})
        before.push_back(room.aol.tell(kResources, kind));
    GetProcessHandleCount(GetCurrentProcess(), &handlesBefore);
    for (int i = 0; i < 1000; ++i)
        round();
    for (const WPARAM kind : {0, 1, 2})
        after.push_back(room.aol.tell(kResources, kind));
    GetProcessHandleCount(GetCurrentProcess(), &handlesAfter);
    CHECK(after == before);
    CHECK(handlesAfter == handlesBefore);
    CHECK_FALSE(room.aol.subclassed(room.input));
}

TEST_CASE("connecting and disconnecting a hundred times leaves nothing behind")
{
    SmallAol aol;
    const HWND input = aol.input(aol.open());
    AgentLink link;
    const auto round = [&] {
        REQUIRE(link.connect(aol.frame));
        WindowHook hook;
        REQUIRE(hook.attach(link, input, kEnterRules));
        link.disconnect();
        CHECK_FALSE(aol.subclassed(input));
    };
    // The first rounds make what Windows keeps for good: thread pools, classes.
    for (int i = 0; i < 5; ++i)
        round();
    const LRESULT before = aol.tell(kResources, 0);
    const LRESULT windowsBefore = aol.tell(kResources, 1);
    for (int i = 0; i < 100; ++i)
        round();
    CHECK(aol.tell(kResources, 0) <= before + 3); // the pool's threads come and go
    CHECK(aol.tell(kResources, 1) == windowsBefore);
}
