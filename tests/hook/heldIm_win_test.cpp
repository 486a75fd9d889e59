// Instant message windows: taken, placed, given back, closed, and their owner's end.
#include "hook/AgentLink.h"

#include "hook/smallaol_win.h"

#include <doctest/doctest.h>
#include <vector>

using namespace velora;
using namespace velora::hooktest;
using namespace velora::smallaol;

namespace {

constexpr RECT kPlace = {700, 120, 1000, 400};

struct Held {
    SmallAol aol;
    HWND other = aol.open();
    HWND im = aol.open();
    HWND mdi = GetAncestor(im, GA_PARENT);
    HWND input = aol.input(im);
    HWND top = CreateWindowExW(0, L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 690, 60,
                               330, 360, nullptr, nullptr, nullptr, nullptr);
    AgentLink link;
    RECT before = {};

    Held()
    {
        GetWindowRect(im, &before);
        REQUIRE(link.connect(aol.frame));
    }
    ~Held()
    {
        if (IsWindow(top))
            DestroyWindow(top);
    }
    bool isBack() const
    {
        RECT now;
        GetWindowRect(im, &now);
        return GetAncestor(im, GA_PARENT) == mdi && EqualRect(&now, &before)
               && (GetWindowLongW(im, GWL_STYLE) & WS_CAPTION) == WS_CAPTION && IsWindowVisible(im);
    }
};

RECT rectOf(HWND window)
{
    RECT rect;
    GetWindowRect(window, &rect);
    return rect;
}

} // namespace

TEST_CASE(
    "a window taken lies over its place, without its frame, and types on; given, it is as before")
{
    Held held;
    const HWND holder = held.link.takeIM(held.im, kPlace, held.top);
    REQUIRE(holder);
    CHECK(held.link.takeIM(held.im, kPlace, held.top) == holder);
    CHECK(GetAncestor(held.im, GA_PARENT) == holder);
    CHECK(GetWindow(holder, GW_OWNER) == held.top);
    RECT at = rectOf(held.im);
    CHECK(EqualRect(&at, &kPlace));
    CHECK(IsWindowVisible(held.im));
    CHECK(held.link.setText(held.input, L"typed"));
    CHECK(held.link.readText(held.input) == L"typed");
    CHECK(held.link.setFocus(held.input));

    const RECT moved = {720, 140, 980, 380};
    held.link.placeIM(held.im, moved, true);
    CHECK(waitFor([&] {
        at = rectOf(held.im);
        return EqualRect(&at, &moved);
    }));
    held.link.placeIM(held.im, moved, false);
    CHECK(waitFor([&] { return !IsWindowVisible(held.im); }));
    held.link.placeIM(held.im, moved, true);
    CHECK(waitFor([&] { return IsWindowVisible(held.im) != FALSE; }));

    CHECK(held.link.giveIM(held.im));
    CHECK(held.isBack());
    CHECK_FALSE(IsWindow(holder));
    CHECK_FALSE(held.link.giveIM(held.im));
    CHECK(held.link.readText(held.input) == L"typed");
}

TEST_CASE("a held window is closed, by us or by AOL: its holder goes too")
{
    for (const bool byAol : {false, true}) {
        CAPTURE(byAol);
        Held held;
        const HWND holder = held.link.takeIM(held.im, kPlace, held.top);
        REQUIRE(holder);
        HWND gone = nullptr;
        held.link.onGone = [&](HWND window) {
            if (window == held.im)
                gone = window;
        };
        CHECK(byAol ? PostMessageW(held.im, WM_CLOSE, 0, 0) != 0 : held.link.closeIM(held.im));
        CHECK(waitFor([&] { return gone == held.im && !IsWindow(held.im) && !IsWindow(holder); }));
        CHECK(IsWindow(held.other));
        CHECK(held.aol.alive());
    }
}

TEST_CASE("disconnecting gives held windows back")
{
    Held held;
    REQUIRE(held.link.takeIM(held.im, kPlace, held.top));
    REQUIRE(held.link.takeIM(held.other, kPlace, held.top));
    held.link.disconnect();
    CHECK(held.isBack());
    CHECK(GetAncestor(held.other, GA_PARENT) == held.mdi);
}

TEST_CASE("the owner is destroyed: the held window goes back to AOL")
{
    Held held;
    const HWND holder = held.link.takeIM(held.im, kPlace, held.top);
    REQUIRE(holder);
    DestroyWindow(held.top);
    CHECK(waitFor([&] { return held.isBack() && !IsWindow(holder); }));
}

TEST_CASE("what changes in a held window is told too")
{
    Held held;
    std::vector<HWND> children;
    REQUIRE(held.link.takeIM(held.im, kPlace, held.top));
    held.link.onChild = [&](HWND child) { children.push_back(child); };
    CHECK(waitFor([&] { return children.size() >= 2; })); // both, from the time of connecting
    children.clear();
    CHECK(sendToAol(held.im, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"IM From: Guest")));
    CHECK(waitFor([&] { return children == std::vector<HWND>{held.im}; }));
}

TEST_CASE("a maximised window is taken at its own size and comes back unmaximised")
{
    Held held;
    SendMessageW(held.mdi, WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(held.im), 0);
    REQUIRE(IsZoomed(held.im));
    REQUIRE(held.link.takeIM(held.im, kPlace, held.top));
    const RECT at = rectOf(held.im);
    CHECK(EqualRect(&at, &kPlace));
    CHECK(held.link.giveIM(held.im));
    CHECK(held.isBack());
}

TEST_CASE("only an MDI child of AOL can be taken")
{
    Held held;
    CHECK(held.link.takeIM(held.input, kPlace, held.top) == nullptr);
    CHECK(held.link.takeIM(held.aol.frame, kPlace, held.top) == nullptr);
    CHECK(held.link.takeIM(held.top, kPlace, held.top) == nullptr);
    CHECK(held.link.takeIM(nullptr, kPlace, held.top) == nullptr);
    CHECK_FALSE(held.link.closeIM(held.im));
}
