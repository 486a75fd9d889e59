// The hooks in the AOL stand-in, whose windows are built and behave as AOL's do.
#include "base/text.h"
#include "hook/WindowHook.h"
#include "support/aolhost_win.h"

#include <algorithm>
#include <doctest/doctest.h>
#include <vector>

using namespace velora;
using namespace velora::test;

namespace {

constexpr UINT kNotice = 5143;

std::vector<AolHost::Options> everyKind()
{
    std::vector<AolHost::Options> kinds(4);
    kinds[0].version = 3;
    kinds[1].version = 5;
    kinds[1].mdiCreation = L"ex";
    kinds[1].notice = L"posted";
    kinds[2].version = 6;
    kinds[2].unicodeEdits = true;
    kinds[2].notice = L"sent";
    kinds[3].version = 7;
    kinds[3].mdiCreation = L"plain";
    kinds[3].more = {L"--enter=keydown"};
    return kinds;
}

/// Types Enter as a queue would bring it.
void pressEnter(HWND input)
{
    PostMessageW(input, WM_KEYDOWN, VK_RETURN, 0x001C0001);
    PostMessageW(input, WM_KEYUP, VK_RETURN, 0xC01C0001);
}

std::wstring lastLine(AgentLink& link, HWND display)
{
    const auto lines = link.readLines(display);
    return lines && !lines->lines.empty() ? lines->lines.back().text : L"";
}

} // namespace

TEST_CASE("in every kind of AOL: lines are told and read, Enter is taken or let through")
{
    for (const AolHost::Options& kind : everyKind()) {
        CAPTURE(kind.version);
        AolHost aol(kind);
        aol.enterRoom();
        const HWND display = aol.displayWindow(), input = aol.inputWindow();
        AgentLink link;
        REQUIRE(link.connect(aol.frame()));

        WindowHook chat;
        int told = 0;
        chat.WndMessageX = [&](HookMessage&) { ++told; };
        REQUIRE(
            chat.attach(link, display, {{kNotice, 0, ~WPARAM{0}, Delivery::postedAfter, true}}));
        aol.command(L"say Guest: hello from the room");
        CHECK(waitFor([&] { return told > 0; }));
        CHECK(waitFor([&] {
            return lastLine(link, display).find(L"hello from the room") != std::wstring::npos;
        }));

        WindowHook typed;
        bool swallow = true;
        int asked = 0;
        std::vector<int> delayed;
        typed.WndMessageX = [&](HookMessage& message) {
            ++asked;
            message.noDefault = swallow;
            message.requestDelayed(3);
        };
        typed.DelayedEvent = [&](int code) { delayed.push_back(code); };
        REQUIRE(typed.attach(
            link, input,
            {WatchRule::key(WM_KEYDOWN, VK_RETURN), WatchRule::key(WM_CHAR, VK_RETURN)}));
        REQUIRE(link.setText(input, L"kept back"));
        pressEnter(input);
        CHECK(waitFor([&] { return delayed.size() == 1; }));
        CHECK(link.readText(input) == L"kept back");
        CHECK(aol.sent().empty());
        CHECK(asked == 1);
        swallow = false;
        REQUIRE(link.setText(input, L"said aloud"));
        pressEnter(input);
        // Answered first: asking the pipe serves no messages, and AOL would wait for both.
        CHECK(waitFor([&] { return delayed.size() == 2; }));
        CHECK(waitFor([&] { return aol.sent() == std::vector<std::wstring>{L"said aloud"}; }));
        CHECK(asked == 2);
    }
}

TEST_CASE("two thousand lines in a burst: the batch read has them all, in order")
{
    AolHost aol;
    aol.enterRoom();
    const HWND display = aol.displayWindow();
    AgentLink link;
    REQUIRE(link.connect(aol.frame()));
    WindowHook chat;
    int told = 0;
    chat.WndMessageX = [&](HookMessage&) { ++told; };
    REQUIRE(chat.attach(link, display, {{kNotice, 0, ~WPARAM{0}, Delivery::postedAfter, true}}));
    aol.command(L"burst 2000");
    CHECK(waitFor([&] { return told > 0; }));
    CHECK(told < 2000);
    const auto text = link.readText(display, 10000);
    const auto lines = link.readLines(display, 0, 1 << 20, 10000);
    REQUIRE(text);
    REQUIRE(lines);
    CHECK_FALSE(lines->truncated);
    std::wstring joined;
    for (std::size_t i = 0; i < lines->lines.size(); ++i) {
        joined += lines->lines[i].text;
        if (lines->lines[i].softWrapped)
            joined += L' ';
        else if (i + 1 < lines->lines.size())
            joined += L"\r\n";
    }
    CHECK(joined == *text);
    CHECK(link.readTail(display, 1000)->size() >= 1000);
}

TEST_CASE("a menu item of ours, chosen with the keyboard in AOL's own menu loop")
{
    AolHost aol;
    AgentLink link;
    std::vector<UINT> chosen;
    link.onMenu = [&](UINT id) { chosen.push_back(id); };
    REQUIRE(link.connect(aol.frame()));
    const auto about = link.menuFind(L"&About America Online");
    REQUIRE(about);
    REQUIRE(link.addMenuItem({L"", *about, L""}, 0, 1212, L"&Zebra"));
    // Help is opened by its letter, our item by its own.
    PostMessageW(aol.frame(), WM_SYSCOMMAND, SC_KEYMENU, 'h');
    CHECK(waitFor([&] {
        GUITHREADINFO info = {};
        info.cbSize = sizeof info;
        return GetGUIThreadInfo(GetWindowThreadProcessId(aol.frame(), nullptr), &info)
               && (info.flags & GUI_INMENUMODE);
    }));
    PostMessageW(aol.frame(), WM_KEYDOWN, 'Z', 1);
    PostMessageW(aol.frame(), WM_CHAR, 'z', 1);
    CHECK(waitFor([&] { return chosen == std::vector<UINT>{1212}; }));
    CHECK(link.menuFind(L"Zebra") == 1212u);
    link.disconnect();
    REQUIRE(link.connect(aol.frame()));
    CHECK_FALSE(link.menuFind(L"Zebra").has_value());
}

TEST_CASE(
    "instant messages of the stand-in are told once built, however late, taken and given back")
{
    for (const int late : {0, 300}) {
        CAPTURE(late);
        AolHost::Options options;
        options.lateMs = late;
        AolHost aol(options);
        AgentLink link;
        HWND im = nullptr;
        link.onChild = [&](HWND child) {
            if (textOf(child).find(L"Message From: ") != std::wstring::npos
                && childOfClass(child, L"RICHCNTL", 2))
                im = child;
        };
        REQUIRE(link.connect(aol.frame()));
        aol.command(L"im Guest: are you there");
        REQUIRE(waitFor([&] { return im != nullptr; }));
        const HWND owner = CreateWindowExW(0, L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                           600, 100, 400, 400, nullptr, nullptr, nullptr, nullptr);
        REQUIRE(link.takeIM(im, {620, 140, 980, 480}, owner));
        CHECK(IsWindowVisible(im));
        CHECK(GetAncestor(im, GA_PARENT) != aol.mdi());
        const HWND conversation = childOfClass(im, L"RICHCNTL", 1);
        CHECK(link.readText(conversation)->find(L"are you there") != std::wstring::npos);
        CHECK(link.giveIM(im));
        CHECK(GetAncestor(im, GA_PARENT) == aol.mdi());
        CHECK(IsWindowVisible(im));
        DestroyWindow(owner);
    }
}

TEST_CASE("AOL is ended by its user: the frame's end and then AOL's are told")
{
    AolHost aol;
    AgentLink link;
    HWND gone = nullptr;
    bool ended = false;
    link.onGone = [&](HWND window) {
        if (window == aol.frame())
            gone = window;
    };
    link.onAolEnded = [&] { ended = true; };
    REQUIRE(link.connect(aol.frame()));
    PostMessageW(aol.frame(), WM_CLOSE, 0, 0);
    CHECK(waitFor([&] { return ended; }));
    CHECK(gone == aol.frame());
    CHECK_FALSE(link.connected());
}
