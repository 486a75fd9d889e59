#include "core/modMsgStyle.h"

#include <doctest/doctest.h>

#include <climits>

using namespace velora;

namespace {
std::wstring buttons(int style)
{
    std::wstring all;
    for (const MsgButton& button : parseMsgStyle(style).buttons)
        all += std::wstring(button.text) + L"=" + std::to_wstring(button.answer) + L" ";
    return all;
}
} // namespace

TEST_CASE("the button sets and their answers")
{
    CHECK(buttons(0) == L"OK=1 ");
    CHECK(buttons(1) == L"OK=1 Cancel=2 ");
    CHECK(buttons(2) == L"&Abort=3 &Retry=4 &Ignore=5 ");
    CHECK(buttons(3) == L"&Yes=6 &No=7 Cancel=2 ");
    CHECK(buttons(4) == L"&Yes=6 &No=7 ");
    CHECK(buttons(5) == L"&Retry=4 Cancel=2 ");
    CHECK(buttons(6) == L"&Delete=8 &Preview=9 Cancel=2 ");
    for (int unknown : {7, 15, -1, INT_MIN})
        CHECK(buttons(unknown) == L"OK=1 ");
}

TEST_CASE("the number is taken apart from the top")
{
    struct Case {
        int style;
        MsgIcon icon;
        int preset; // answer of the default button
        bool systemModal;
    };
    const Case cases[] = {
        {0, MsgIcon::none, 1, false},
        {16, MsgIcon::critical, 1, false},
        {32 + 4, MsgIcon::question, 6, false},
        {48, MsgIcon::exclamation, 1, false},
        {64, MsgIcon::information, 1, false},
        {256 + 32 + 4, MsgIcon::question, 7, false},
        {512 + 48 + 3, MsgIcon::exclamation, 2, false},
        {512 + 48 + 6, MsgIcon::exclamation, 2, false},
        {256 + 6, MsgIcon::none, 9, false},
        {512 + 4, MsgIcon::none, 6, false}, // the set has no third button
        {256, MsgIcon::none, 1, false},
        {4096 + 16, MsgIcon::critical, 1, true},
        {4096 + 512 + 64 + 2, MsgIcon::information, 5, true},
    };
    for (const Case& c : cases) {
        CAPTURE(c.style);
        const MsgStyle style = parseMsgStyle(c.style);
        CHECK(style.icon == c.icon);
        CHECK(style.defaultAnswer() == c.preset);
        CHECK(style.systemModal == c.systemModal);
    }
}

TEST_CASE("what Esc and the end of the program answer")
{
    struct Case {
        int style, escape, harmless;
    };
    const Case cases[] = {{0, 1, 1}, {1, 2, 2}, {2, 0, 3}, {3, 2, 2},
                          {4, 0, 7}, {5, 2, 2}, {6, 2, 2}};
    for (const Case& c : cases) {
        CAPTURE(c.style);
        CHECK(parseMsgStyle(c.style).escapeAnswer() == c.escape);
        CHECK(parseMsgStyle(c.style).harmlessAnswer() == c.harmless);
    }
}

TEST_CASE("captions and the copied text")
{
    CHECK(captionOf(L"Error") == L"Velora - Error");
    CHECK(captionOf(L"") == L"Velora");
    CHECK(msgBoxAsText(L"Velora - Quit", L"Really?", parseMsgStyle(3).buttons)
          == L"---------------------------\r\nVelora - Quit\r\n---------------------------\r\n"
             L"Really?\r\n---------------------------\r\nYes   No   Cancel   \r\n"
             L"---------------------------\r\n");
}
