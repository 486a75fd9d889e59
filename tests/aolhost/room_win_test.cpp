#include "support/aolhost_win.h"

#include "base/text.h"

#include <doctest/doctest.h>

using namespace velora::test;

namespace {

void typeAndEnter(HWND input, const std::wstring& text)
{
    SendMessageW(input, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    SendMessageW(input, WM_CHAR, VK_RETURN, 0);
}

} // namespace

TEST_CASE("a room has AOL's controls in AOL's order, in every version")
{
    for (int version = 3; version <= 7; ++version) {
        CAPTURE(version);
        AolHost aol({.version = version});
        const HWND room = aol.enterRoom();
        CHECK(classOf(room) == L"AOL Child");
        CHECK(textOf(room) == L"Town Square");
        const HWND display = childOfClass(room, version == 7 ? L"RICHCNTLREADONLY" : L"RICHCNTL");
        const HWND input = childOfClass(room, L"RICHCNTL", version == 7 ? 1 : 2);
        CHECK(display == aol.displayWindow());
        CHECK(input == aol.inputWindow());
        CHECK(textOf(childOfText(room, L"Send")) == L"Send");
        CHECK(childOfClass(room, L"_AOL_Listbox"));
        CHECK(childOfClass(room, L"_AOL_Combobox"));
        CHECK(childOfText(room, L"1"));
    }
}

TEST_CASE("what is typed and sent by Enter arrives as sent and in the display")
{
    AolHost aol;
    aol.enterRoom();
    typeAndEnter(aol.inputWindow(), L"<FONT COLOR=#FF0000>hi</FONT> all");
    CHECK(aol.sent() == std::vector<std::wstring>{L"<FONT COLOR=#FF0000>hi</FONT> all"});
    CHECK(aol.display()
          == L"OnlineHost:\t*** You are in \"Town Square\". ***\r\nOrv Tester:\thi all");
    CHECK(textOf(aol.inputWindow()).empty());
}
