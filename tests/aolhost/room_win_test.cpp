#include "support/aolhost_win.h"

#include "base/text.h"

#include <doctest/doctest.h>

using namespace velora::test;

namespace {

void setText(HWND input, const std::wstring& text)
{
    SendMessageW(input, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

/// The first "_AOL_Icon" after the window among its siblings.
HWND iconAfter(HWND window)
{
    do
        window = GetWindow(window, GW_HWNDNEXT);
    while (window && classOf(window) != L"_AOL_Icon");
    return window;
}

constexpr const wchar_t* kEntry = L"OnlineHost:\t*** You are in \"Town Square\". ***";

} // namespace

TEST_CASE("a room has AOL's controls in AOL's order, in every version")
{
    for (int version = 3; version <= 7; ++version) {
        CAPTURE(version);
        AolHost::Options options;
        options.version = version;
        AolHost aol(options);
        const HWND room = aol.enterRoom();
        CHECK(classOf(room) == L"AOL Child");
        CHECK(textOf(room) == L"Town Square");
        const HWND display = childOfClass(room, version == 7 ? L"RICHCNTLREADONLY" : L"RICHCNTL");
        const HWND input = childOfClass(room, L"RICHCNTL", version == 7 ? 1 : 2);
        CHECK(display == aol.displayWindow());
        CHECK(input == aol.inputWindow());
        CHECK(textOf(iconAfter(input)) == L"Send");
        CHECK(childOfClass(room, L"_AOL_LISTBOX"));
        CHECK(childOfClass(room, L"_AOL_COMBOBOX"));
        CHECK(childOfText(room, L"1"));
        aol.command(L"people +Rose3");
        CHECK(childOfText(room, L"2"));
    }
}

TEST_CASE("what is typed is sent by Enter and by Send, and arrives in the display")
{
    for (const int version : {5, 6}) {
        CAPTURE(version);
        AolHost::Options options;
        options.version = version;
        AolHost aol(options);
        aol.enterRoom();
        const HWND input = aol.inputWindow();
        const HWND send = iconAfter(input);
        setText(input, L"<FONT COLOR=#FF0000>hi</FONT> all");
        SendMessageW(input, WM_CHAR, VK_RETURN, 0);
        CHECK(aol.sent() == std::vector<std::wstring>{L"<FONT COLOR=#FF0000>hi</FONT> all"});
        CHECK(aol.display() == std::wstring(kEntry) + L"\r\nOrv Tester:\thi all");
        CHECK(textOf(input).empty());

        setText(input, L"by the mouse");
        PostMessageW(send, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
        PostMessageW(send, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
        CHECK(waitFor([&] { return aol.sent().size() == 2; }));

        setText(input, L"by the space key");
        SendMessageW(send, WM_KEYDOWN, VK_SPACE, 0);
        SendMessageW(send, WM_KEYUP, VK_SPACE, 0);
        CHECK(aol.sent().size() == 3);

        setText(input, L"by a character");
        SendMessageW(send, WM_CHAR, VK_RETURN, 0);
        CHECK(aol.sent().size() == (version >= 6 ? 4 : 3));
        setText(input, L"   ");
        SendMessageW(input, WM_CHAR, VK_RETURN, 0);
        CHECK(aol.sent().size() == (version >= 6 ? 4 : 3));
    }
}

TEST_CASE("the Enter key sends once and leaves no line end, whichever of its messages counts")
{
    for (const wchar_t* way : {L"char", L"keydown"}) {
        CAPTURE(way);
        const bool onChar = way[0] == L'c';
        AolHost aol;
        aol.command(std::wstring(L"enter ") + way);
        aol.enterRoom();
        const HWND input = aol.inputWindow();
        setText(input, L"once");
        // A posted key-down makes its character in AOL's own message loop, as a real key does.
        PostMessageW(input, WM_KEYDOWN, VK_RETURN, 0x001C0001);
        PostMessageW(input, WM_KEYUP, VK_RETURN, static_cast<LPARAM>(0xC01C0001));
        CHECK(waitFor([&] { return !aol.sent().empty(); }));
        CHECK(textOf(input).empty());
        setText(input, L"twice");
        SendMessageW(input, WM_CHAR, VK_RETURN, 0);
        CHECK(aol.sent() == std::vector<std::wstring>{L"once", L"twice"});

        setText(input, L"down");
        SendMessageW(input, WM_KEYDOWN, VK_RETURN, 0x001C0001);
        CHECK(aol.sent().size() == (onChar ? 2 : 3));
        setText(input, L"character");
        SendMessageW(input, WM_CHAR, VK_RETURN, 0x001C0001);
        CHECK(aol.sent().back() == (onChar ? L"character" : L"down"));
    }
}

TEST_CASE("each line is followed by one notice, sent or posted, through every way of creation")
{
    struct Way {
        const wchar_t *mdi, *notice;
        bool wide;
    };
    for (const Way& way : {Way{L"create", L"sent", false}, Way{L"ex", L"posted", true},
                           Way{L"plain", L"posted", false}}) {
        CAPTURE(way.mdi);
        AolHost::Options options;
        options.mdiCreation = way.mdi;
        options.notice = way.notice;
        options.unicodeEdits = way.wide;
        AolHost aol(options);
        const HWND room = aol.enterRoom();
        CHECK(GetParent(room) == aol.mdi());
        CHECK((IsWindowUnicode(aol.displayWindow()) != 0) == way.wide);
        for (int i = 0; i < 3; ++i)
            aol.command(L"say Rose3: line");
        CHECK(waitFor([&] { return aol.status()[L"notices"] == L"4"; }));
        aol.command(L"leave");
        CHECK_FALSE(IsWindow(room));
    }
}

TEST_CASE("a room built late exists without controls and then shows what was said before")
{
    AolHost::Options options;
    options.lateMs = 600000;
    AolHost aol(options);
    aol.command(L"room Town Square");
    aol.command(L"say Rose3: early");
    const HWND room = aol.document(L"Town Square");
    REQUIRE(room);
    CHECK(aol.status()[L"built"] == L"0");
    CHECK(childrenOf(room).empty());
    aol.command(L"build");
    CHECK(aol.status()[L"built"] == L"1");
    CHECK(aol.display() == std::wstring(kEntry) + L"\r\nRose3:\tearly");
    aol.command(L"late 30");
    aol.command(L"room Lobby");
    CHECK(waitFor([&] { return aol.status()[L"built"] == L"1"; }));
}

TEST_CASE("long lines wrap, a long display loses its oldest whole lines")
{
    AolHost aol;
    aol.enterRoom();
    const HWND display = aol.displayWindow();
    aol.command(L"clear");
    aol.command(L"say Rose3: " + std::wstring(1000, L'x'));
    CHECK(aol.display() == L"Rose3:\t" + std::wstring(1000, L'x'));
    CHECK(SendMessageW(display, EM_GETLINECOUNT, 0, 0) > 5);
    aol.command(L"trim 4000");
    aol.command(L"burst 300");
    const std::wstring text = aol.display();
    CHECK(text.size() < 4000 + 300);
    CHECK(text.size() > 2000);
    CHECK(text.compare(0, 6, L"Member") == 0);
    CHECK(text.find(L"\tline 300") + 9 == text.size());
}

TEST_CASE("a room may be a window of the chat form's class, known by that alone")
{
    AolHost aol;
    aol.command(L"chatform on");
    const HWND room = aol.enterRoom();
    CHECK(classOf(room) == L"AOL_CHAT_FORM");
    CHECK_FALSE(childOfText(room, L"1"));
}
