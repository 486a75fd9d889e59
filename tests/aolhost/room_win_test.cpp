#include "support/aolhost_win.h"

#include <doctest/doctest.h>

using namespace velora::test;

namespace {

void setText(HWND input, const std::wstring& text)
{
    SendMessageW(input, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

constexpr const wchar_t* kEntry = L"OnlineHost:\t*** You are in \"Town Square\". ***";

} // namespace

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

TEST_CASE("a room built late exists without controls and then shows what was said before")
{
    AolHost aol({.lateMs = 600000});
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

TEST_CASE("the mark of an unread message goes when its window comes to the front")
{
    AolHost aol;
    aol.enterRoom();
    aol.command(L"im Joe: one");
    const HWND im = aol.document(L"Joe");
    CHECK(textOf(im) == L">Instant Message From: Joe");
    aol.command(L"activate Joe");
    CHECK(textOf(im) == L"Instant Message From: Joe");
    aol.command(L"activate Town Square");
    aol.command(L"im Joe: two");
    CHECK(textOf(im) == L">Instant Message From: Joe");
}
