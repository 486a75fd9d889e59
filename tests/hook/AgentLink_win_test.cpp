// The line into AOL: connecting, reading, commands, menus, children, a hung and a killed AOL.
#include "hook/AgentLink.h"

#include "base/text.h"
#include "hook/smallaol_win.h"

#include <algorithm>
#include <doctest/doctest.h>
#include <vector>

using namespace velora;
using namespace velora::hooktest;
using namespace velora::smallaol;

namespace {

/// What WM_GETTEXT gives is the oracle: hard ends are CR LF, a soft wrap is one blank.
std::wstring joined(const EditLines& lines)
{
    std::wstring text;
    for (std::size_t i = 0; i < lines.lines.size(); ++i) {
        text += lines.lines[i].text;
        if (lines.lines[i].softWrapped)
            text += L' ';
        else if (i + 1 < lines.lines.size())
            text += L"\r\n";
    }
    return text;
}

/// AOL with a display that can be read.
struct Shown {
    SmallAol aol;
    HWND display = aol.display(aol.open());
    AgentLink link;
    explicit Shown(bool ansi = false) : aol(ansi) { REQUIRE(link.connect(aol.frame)); }
};

} // namespace

TEST_CASE("connecting: the right thread, a foreign window and one's own are refused")
{
    SmallAol aol;
    AgentLink link;
    CHECK_FALSE(link.connect(nullptr));
    const HWND own =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    CHECK_FALSE(link.connect(own));
    CHECK(link.lastError() == ERROR_INVALID_WINDOW_HANDLE);
    REQUIRE(link.connect(aol.frame));
    CHECK(link.connected());
    CHECK(link.connect(aol.frame));
    CHECK(link.frame() == aol.frame);
    CHECK(AgentLink::forWindow(aol.frame) == &link);
    CHECK(AgentLink::forWindow(own) == nullptr);
    CHECK_FALSE(link.readText(own).has_value());
    CHECK_FALSE(link.setFocus(own));
    CHECK_FALSE(link.connect(own)); // and lets go of the old one
    CHECK_FALSE(link.connected());
    DestroyWindow(own);
}

TEST_CASE("a missing module is a failed connect with its reason")
{
    SmallAol aol;
    AgentLink link;
    CHECK_FALSE(link.connect(aol.frame, L"C:\\no such folder\\dwspy36.dll"));
    CHECK(link.lastError() != 0);
    CHECK(link.connect(aol.frame));
}

TEST_CASE("the batch read is the display")
{
    for (const bool ansi : {false, true}) {
        CAPTURE(ansi);
        Shown shown(ansi);
        auto& [aol, display, link] = shown;
        const auto empty = link.readLines(display);
        REQUIRE(empty);
        CHECK(joined(*empty) == L"");

        aol.say(display, 60);
        const auto all = link.readLines(display);
        REQUIRE(all);
        CHECK(all->total == static_cast<int>(all->lines.size()));
        CHECK(all->total > 60); // they wrap
        CHECK_FALSE(all->truncated);
        const auto text = link.readText(display);
        REQUIRE(text);
        CHECK(joined(*all) == *text);

        const auto rest = link.readLines(display, all->total - 3);
        REQUIRE(rest);
        REQUIRE(rest->lines.size() == 3);
        CHECK(rest->first == all->total - 3);
        CHECK(rest->lines[0] == all->lines[all->lines.size() - 3]);
        CHECK(rest->lines[2] == all->lines.back());
        CHECK(link.readLines(display, all->total)->lines.empty());
        CHECK(link.readLines(display, 2, 4)->lines.size() == 4);
        CHECK(dwXGetEditLine(display, 1) == all->lines[0].text);
        CHECK(dwXGetEditLine(display, all->total) == all->lines.back().text);
        CHECK(dwXGetEditLine(display, all->total + 1) == L"");
        CHECK(dwXGetEditLine(display, 0) == L"");

        // A paragraph's end counts as one character of the tail, and comes as CR LF.
        for (const int chars : {1, 2, 5, 300}) {
            const auto tail = link.readTail(display, chars);
            REQUIRE(tail);
            CHECK(tail->size() - (std::count(tail->begin(), tail->end(), L'\r'))
                  == static_cast<std::size_t>(chars));
            CHECK(text->substr(text->size() - tail->size()) == *tail);
        }
        CHECK(link.readTail(display, 1 << 20) == text);
        CHECK(link.readTail(display, 0) == L"");
    }
}

TEST_CASE("letters beyond ASCII, long words and blank lines arrive whole")
{
    for (const bool ansi : {false, true}) {
        CAPTURE(ansi);
        Shown shown(ansi);
        auto& [aol, display, link] = shown;
        const std::wstring word(1000, L'x');
        REQUIRE(link.setText(display, L"\x20AC caf\xE9 \r\n\r\n" + word + L"\r\nend  "));
        const auto lines = link.readLines(display);
        REQUIRE(lines);
        REQUIRE(lines->lines.size() >= 5);
        CHECK(lines->lines[0] == EditLine{L"\x20AC caf\xE9 ", false}); // its own blank stays
        CHECK(lines->lines[1] == EditLine{L"", false});
        std::wstring whole;
        std::size_t at = 2;
        for (; lines->lines[at].softWrapped; ++at)
            whole += lines->lines[at].text;
        CHECK(at > 2);
        CHECK(whole + lines->lines[at].text == word);
        CHECK(lines->lines.back() == EditLine{L"end  ", false});
        CHECK(link.readTail(display, 5) == L"end  ");
        CHECK(link.readTail(display, 1007)->front() == L'\r');
    }
}

TEST_CASE("selection, text and focus")
{
    SmallAol aol;
    const HWND child = aol.open();
    const HWND input = aol.input(child);
    AgentLink link;
    REQUIRE(link.connect(aol.frame));
    REQUIRE(link.setText(input, L"one two three"));
    CHECK(aolText(input) == L"one two three");
    CHECK(link.selectionText(input) == L"");
    REQUIRE(link.select(input, 4, 7));
    CHECK(link.selectionText(input) == L"two");
    REQUIRE(link.replaceSelection(input, L"\x20AC 2"));
    CHECK(aolText(input) == L"one \x20AC 2 three");
    CHECK(link.setFocus(input));
    CHECK(aol.tell(kFocus) == reinterpret_cast<LRESULT>(input));
    CHECK(setAolText(input, L"plain"));
    CHECK(link.readText(input) == L"plain");
}

TEST_CASE("a new child is told when it has settled, whatever way it was made, and when it goes")
{
    SmallAol aol;
    const HWND before = aol.open();
    AgentLink link;
    std::vector<HWND> children, gone;
    std::vector<int> controlsThen;
    link.onChild = [&](HWND child) {
        children.push_back(child);
        controlsThen.push_back(FindWindowExW(child, nullptr, L"RICHCNTL", nullptr) ? 1 : 0);
    };
    link.onGone = [&](HWND window) { gone.push_back(window); };
    REQUIRE(link.connect(aol.frame));
    CHECK(waitFor([&] { return children == std::vector<HWND>{before}; }));
    for (const Way way : {kByMessage, kByExStyle, kPlain}) {
        CAPTURE(way);
        children.clear();
        controlsThen.clear();
        gone.clear();
        const HWND child = aol.open(way);
        REQUIRE(waitFor([&] { return !children.empty(); }));
        CHECK(children.back() == child);
        CHECK(controlsThen.back() == 1);
        PostMessageW(child, WM_CLOSE, 0, 0);
        CHECK(waitFor([&] { return !gone.empty(); }));
        CHECK(gone == std::vector<HWND>{child});
    }
    // Controls that come later than the rest make it told again.
    children.clear();
    controlsThen.clear();
    const HWND late = aol.open(kByMessage, 400);
    CHECK(waitFor([&] { return !controlsThen.empty() && controlsThen.back() == 1; }));
    CHECK(children.back() == late);
    // So does a new caption.
    children.clear();
    SetWindowTextW(late, L"");
    DWORD_PTR result;
    SendMessageTimeoutW(late, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"IM From: Guest"), 0, 2000,
                        &result);
    CHECK(waitFor([&] { return children == std::vector<HWND>{late}; }));
}

TEST_CASE("the frame's moves are told, coalesced")
{
    SmallAol aol;
    AgentLink link;
    int moves = 0;
    link.onMoved = [&] { ++moves; };
    REQUIRE(link.connect(aol.frame));
    for (int i = 0; i < 20; ++i)
        SetWindowPos(aol.frame, nullptr, 60 + i, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    CHECK(waitFor([&] { return moves > 0; }));
    CHECK(moves < 5);
    const int before = moves;
    SetWindowPos(aol.frame, nullptr, 10, 10, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    CHECK(waitFor([&] { return moves > before; }));
}

TEST_CASE("menu items: put in when the popup opens, run here, unseen by AOL, taken out again")
{
    SmallAol aol;
    AgentLink link;
    std::vector<UINT> chosen;
    link.onMenu = [&](UINT id) { chosen.push_back(id); };
    REQUIRE(link.connect(aol.frame));
    CHECK(link.menuFind(L"about america online") == UINT{kAboutId});
    CHECK(link.menuFind(L"E&xit") == 101u);
    CHECK_FALSE(link.menuFind(L"no such item").has_value());
    CHECK_FALSE(link.addMenuItem({L"&Help", 0, L""}, -1, 0xF020, L"close"));
    REQUIRE(link.addMenuItem({L"&Help", 0, L""}, -1, 1212, L"Velora IM Manager"));
    REQUIRE(link.addMenuItem({L"", 101, L""}, 0, 1213, L"Channels"));
    // One that would take AOL's own identifier away never shows.
    REQUIRE(link.addMenuItem({L"&File", 0, L""}, 0, kAboutId, L"Clash"));
    CHECK(aol.tell(kPopup, 1) == 2);
    CHECK(aol.tell(kPopup, 1) == 2);
    CHECK(aol.tell(kPopupItem, 1, 1) == 1212);
    CHECK(aol.tell(kPopup, 0) == 2);
    CHECK(aol.tell(kPopupItem, 0, 0) == 1213);

    const int seen = aol.count(kCommands);
    PostMessageW(aol.frame, WM_COMMAND, 1212, 0);
    CHECK(waitFor([&] { return chosen == std::vector<UINT>{1212}; }));
    CHECK(aol.count(kCommands) == seen);
    aol.tell(WM_COMMAND, kAboutId);
    CHECK(aol.count(kCommands) == seen + 1);

    // AOL makes a new menu bar: the items come again.
    aol.tell(kNewMenu);
    CHECK(aol.tell(kMenuLeft, 1212) == 0);
    CHECK(aol.tell(kPopup, 1) == 2);

    link.removeMenuItems();
    CHECK(aol.tell(kMenuLeft, 1212) == 0);
    CHECK(aol.tell(kPopup, 1) == 1);
    REQUIRE(link.addMenuItem({L"", 0, L"About America Online"}, 0, 1212, L"Velora IM Manager"));
    CHECK(aol.tell(kPopup, 1) == 2);
    link.disconnect();
    CHECK(aol.tell(kMenuLeft, 1212) == 0);
    aol.tell(WM_COMMAND, 1212);
    CHECK(aol.count(kCommands) == seen + 2);
}

TEST_CASE("AOL hangs: one bounded wait, then none until it is back")
{
    Shown shown;
    auto& [aol, display, link] = shown;
    PostMessageW(aol.frame, kHang, 3000, 0);
    // The post may be a moment on its way; then a read times out.
    REQUIRE(waitFor([&] { return !link.readText(display, 300).has_value(); }));
    CHECK(link.busy());
    CHECK_FALSE(sendToAol(display, WM_NULL, 0, 0).has_value());
    CHECK_FALSE(link.setFocus(display));
    CHECK(waitFor([&] { return !link.busy(); }, 15000));
    CHECK(link.readText(display).has_value());
    CHECK(sendToAol(display, WM_NULL, 0, 0).has_value());
}

TEST_CASE("AOL is killed inside a hook's event: what the handler still asks is answered neutral")
{
    SmallAol aol;
    const HWND input = aol.input(aol.open());
    AgentLink link;
    int ended = 0;
    bool handled = false;
    link.onAolEnded = [&] { ++ended; };
    REQUIRE(link.connect(aol.frame));
    WindowHook hook;
    hook.WndMessageX = [&](HookMessage& message) {
        message.noDefault = true;
        aol.kill();
        CHECK_FALSE(link.readText(input).has_value());
        CHECK_FALSE(sendToAol(input, WM_CHAR, VK_RETURN, 0).has_value());
        CHECK_FALSE(link.setText(input, L"x"));
        handled = true;
    };
    REQUIRE(hook.attach(link, input, {WatchRule::key(WM_KEYDOWN, VK_RETURN)}));
    aol.pressEnter(input);
    CHECK(waitFor([&] { return handled && ended == 1; }));
    CHECK_FALSE(link.connected());
}

TEST_CASE("a hanging AOL is not booted into, and does not keep the program waiting")
{
    SmallAol aol;
    AgentLink link;
    PostMessageW(aol.frame, kHang, 2000, 0);
    REQUIRE(waitFor([&] {
        DWORD_PTR result;
        return !SendMessageTimeoutW(aol.frame, WM_NULL, 0, 0, 0, 50, &result);
    }));
    CHECK_FALSE(link.connect(aol.frame));
    CHECK(link.lastError() == ERROR_TIMEOUT);
    CHECK(waitFor([&] { return link.connect(aol.frame); }));
}

TEST_CASE("AOL is killed: told once, everything answers neutral")
{
    SmallAol aol;
    const HWND child = aol.open();
    const HWND display = aol.display(child);
    AgentLink link;
    int ended = 0;
    link.onAolEnded = [&] { ++ended; };
    REQUIRE(link.connect(aol.frame));
    WindowHook hook;
    REQUIRE(hook.attach(link, display, {{kNotice, 0, ~WPARAM{0}, Delivery::postedAfter, true}}));
    aol.kill();
    CHECK(waitFor([&] { return ended == 1; }));
    CHECK_FALSE(link.connected());
    CHECK(hook.window() == nullptr);
    CHECK_FALSE(link.readLines(display).has_value());
    hook.detach();
    link.disconnect();
    SmallAol next;
    CHECK(link.connect(next.frame));
}
