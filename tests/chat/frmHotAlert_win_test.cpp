#include "chat/frmHotAlert.h"

#include "support/drive_win.h"
#include "ui/Placement.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE(
    "a hot word is told in the corner, without the focus, one at a time, and goes by its button")
{
    const HWND front = GetForegroundWindow();
    frmHotAlert::alert(L"pizza", L"Rose~B3", L"who wants ~B pizza?");
    frmHotAlert::alert(L"again", L"Mallory", L"within ten seconds");
    const HWND window = drive::window(L"Velora - Hot Word");
    REQUIRE(window);
    for (const wchar_t* text : {L"Hot word: pizza", L"Rose~B3 said:", L"who wants ~B pizza?"})
        CHECK(drive::child(window, text));
    CHECK(GetForegroundWindow() == front);
    RECT at;
    GetWindowRect(window, &at);
    const Rect screen = monitorAreas().at(0);
    CHECK((at.right < screen.right && at.right > screen.right - 40));
    CHECK((at.bottom < screen.bottom && at.bottom > screen.bottom - 40));
    CHECK(drive::press(window, L"\u00D7"));
    CHECK(drive::gone(window));
}
