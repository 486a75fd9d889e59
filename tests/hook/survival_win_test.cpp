// The companion is killed at bad moments: AOL goes on as if it had never been there.
#include "hook/AgentLink.h"

#include "hook/smallaol_win.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::hooktest;
using namespace velora::smallaol;

namespace {

/// Types Enter until AOL's own input box has had it once more.
void checkTypingGoesOn(const SmallAol& aol, HWND input)
{
    const int before = aol.count(kEnterChar);
    aol.pressEnter(input);
    CHECK(waitFor([&] { return aol.count(kEnterChar) == before + 1; }));
}

/// AOL with a hook of this process on an input box.
struct Attached {
    SmallAol aol;
    HWND input = aol.input(aol.open());
    AgentLink link;
    WindowHook hook;
    Attached()
    {
        REQUIRE(link.connect(aol.frame));
        REQUIRE(hook.attach(link, input, {WatchRule::key(WM_CHAR, VK_RETURN)}));
    }
};

HWND parentOf(HWND window)
{
    return GetAncestor(window, GA_PARENT);
}

} // namespace

TEST_CASE("killed while attached: typing goes on, everything is given back")
{
    SmallAol aol;
    const HWND input = aol.input(aol.open());
    Companion companion(aol, L"attached");
    REQUIRE(waitFor([&] { return companion.ready(); }));
    CHECK(aol.subclassed(input));
    CHECK(aol.tell(kPopup, 1) == 2);
    companion.kill();
    checkTypingGoesOn(aol, input);
    CHECK(waitFor([&] { return !aol.subclassed(input); }, 1000));
    CHECK(waitFor([&] { return aol.tell(kMenuLeft, 1212) == 0; }, 1000));
}

TEST_CASE("killed inside the question that AOL waits for")
{
    SmallAol aol;
    const HWND input = aol.input(aol.open());
    Companion companion(aol, L"inside");
    REQUIRE(waitFor([&] { return aol.subclassed(input); }));
    aol.pressEnter(input);
    REQUIRE(waitFor([&] { return companion.ready(); })); // it sits in the handler now
    companion.kill();
    CHECK(waitFor([&] { return aol.count(kEnterChar) == 1; }));
    CHECK(aol.count(kEnterDown) == 1);
    CHECK(waitFor([&] { return !aol.subclassed(input); }, 1000));
    checkTypingGoesOn(aol, input);
}

TEST_CASE("killed while it holds an instant message: the window is back in AOL, alive")
{
    SmallAol aol;
    const HWND im = aol.open();
    const HWND mdi = parentOf(im);
    const HWND input = aol.input(im);
    RECT before, after;
    GetWindowRect(im, &before);
    Companion companion(aol, L"holding");
    REQUIRE(waitFor([&] { return companion.ready(); }));
    CHECK(parentOf(im) != mdi);
    companion.kill();
    CHECK(
        waitFor([&] { return IsWindow(im) && parentOf(im) == mdi && IsWindowVisible(im); }, 1000));
    GetWindowRect(im, &after);
    CHECK(EqualRect(&before, &after));
    CHECK((GetWindowLongW(im, GWL_STYLE) & WS_CAPTION) == WS_CAPTION);
    checkTypingGoesOn(aol, input);
    PostMessageW(im, WM_CLOSE, 0, 0);
    CHECK(waitFor([&] { return !IsWindow(im); }));
    CHECK(aol.alive());
}

TEST_CASE("AOL is killed while it waits, and while an instant message is held: the companion lives")
{
    for (const wchar_t* mode : {L"attached", L"holding"}) {
        SmallAol aol;
        aol.open();
        Companion companion(aol, mode);
        REQUIRE(waitFor([&] { return companion.ready(); }));
        aol.kill();
        CHECK_FALSE(waitFor([&] { return !companion.alive(); }, 500));
    }
}

TEST_CASE("the companion is started again, after a clean end and after a kill")
{
    SmallAol aol;
    const HWND input = aol.input(aol.open());
    for (int i = 0; i < 2; ++i) {
        Companion once(aol, L"once");
        REQUIRE(waitFor([&] { return !once.alive(); }));
        CHECK(once.exitCode() == 0);
        CHECK_FALSE(aol.subclassed(input));
    }
    for (int i = 0; i < 2; ++i) {
        Companion killed(aol, L"attached");
        REQUIRE(waitFor([&] { return killed.ready(); }));
        killed.kill();
    }
    Companion last(aol, L"attached");
    REQUIRE(waitFor([&] { return last.ready(); }));
    CHECK(aol.subclassed(input));
    CHECK(aol.tell(kPopup, 1) == 2);
    last.kill();
    checkTypingGoesOn(aol, input);
}

TEST_CASE("a second companion takes over from the first")
{
    SmallAol aol;
    const HWND input = aol.input(aol.open());
    Companion first(aol, L"attached");
    REQUIRE(waitFor([&] { return first.ready(); }));
    AgentLink link;
    REQUIRE(link.connect(aol.frame));
    CHECK_FALSE(aol.subclassed(input));
    first.kill();
    // The first one's death is none of the second's business.
    CHECK(link.readText(input).has_value());
    WindowHook hook;
    CHECK(hook.attach(link, input, {WatchRule::key(WM_CHAR, VK_RETURN)}));
    checkTypingGoesOn(aol, input);
    CHECK(aol.subclassed(input));
}

TEST_CASE_FIXTURE(Attached,
                  "a link whose agent serves another companion notices, and can take it back")
{
    Companion other(aol, L"attached");
    REQUIRE(waitFor([&] { return other.ready(); }));
    CHECK_FALSE(link.readText(input).has_value());
    CHECK_FALSE(link.connected());
    CHECK(hook.window() == nullptr);
    CHECK(link.connect(aol.frame));
    CHECK(link.readText(input).has_value());
}

TEST_CASE_FIXTURE(Attached,
                  "AOL hangs while the companion ends: everything is given back when AOL is back")
{
    PostMessageW(aol.frame, kHang, 3000, 0);
    REQUIRE(waitFor([&] { return !link.readText(input, 200).has_value(); }));
    link.disconnect();
    CHECK_FALSE(link.connected());
    CHECK(waitFor([&] { return !aol.subclassed(input); }));
    checkTypingGoesOn(aol, input);
}
