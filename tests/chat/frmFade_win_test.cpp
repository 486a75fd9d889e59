#include "chat/frmFade.h"

#include "base/files.h"
#include "chat/modCurrentFade.h"
#include "support/drive_win.h"
#include "support/form_scope_win.h"
#include "support/steps_win.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

#include <commctrl.h>

using namespace velora;

namespace {

/// A fade panel over settings and schemes of the test's own.
struct Panel : test::FormScope {
    Panel()
    {
        prepareFader(dir.path());
        frmFade::showPanel(dir.path());
        window = drive::window(L"Velora - Fader");
        REQUIRE(window);
        REQUIRE(drive::activate(window));
    }
    ~Panel()
    {
        frmFade::hidePanel();
        nextScheme = nullptr;
    }
    TempDir dir;
    HWND window = nullptr;
};

bool checked(HWND window, std::wstring_view text)
{
    return SendMessageW(drive::child(window, text), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

/// Presses a button that opens boxes, and answers them.
void pressWith(HWND window, const wchar_t* button, std::vector<test::Step> boxes)
{
    const HWND pressed = drive::child(window, button);
    REQUIRE(pressed);
    test::Steps(std::move(boxes), [&] { PostMessageW(pressed, BM_CLICK, 0, 0); });
}

} // namespace

TEST_CASE("the panel writes the options and follows them")
{
    Panel panel;
    CHECK(currentFade().colours[0] != 0); // a new user's fade has colours
    REQUIRE(drive::press(panel.window, L"Fade what I send"));
    CHECK(drive::until([] { return opt::Fader::On.get(); }));
    opt::Fader::On.set(false); // as the keyword "/fadeoff" does
    CHECK(drive::until([&] { return !checked(panel.window, L"Fade what I send"); }));
    REQUIRE(drive::press(panel.window, L"Wavy"));
    CHECK(drive::until([] { return currentFade().Wavy; }));
    drive::key('B', {VK_MENU}); // a mnemonic
    CHECK(drive::until([] { return currentFade().Bold; }));
}

TEST_CASE("a scheme is saved, replaced only on yes, loaded and deleted")
{
    Panel panel;
    const Fade before = currentFade();
    const clsSchemes schemes(panel.dir.path());
    const test::Step named = test::byKeys(L"Velora - Save Scheme", [] {
        drive::type(L"Mine");
        drive::key(VK_TAB);
        drive::type(L"Rose");
        drive::key(VK_TAB);
        drive::type(L"for evenings");
        drive::key(VK_RETURN);
    });
    pressWith(panel.window, L"Save...", {named});
    REQUIRE(schemes.load(L"Mine"));
    CHECK(schemes.load(L"Mine")->Author == L"Rose");
    CHECK(schemes.load(L"Mine")->Comments == L"for evenings");

    Fade other = before;
    other.FadeNumber = 2;
    setCurrentFade(other);
    pressWith(panel.window, L"Save...",
              {named, {L"Velora - Save Scheme", L"Mine already exists.", L"No"}});
    CHECK(schemes.load(L"Mine")->fade == before);

    const HWND list = drive::child(panel.window, WC_LISTBOXW);
    REQUIRE(list);
    const LRESULT index = SendMessageW(list, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                       reinterpret_cast<LPARAM>(L"Mine"));
    REQUIRE(index != LB_ERR);
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
    REQUIRE(drive::press(panel.window, L"Load"));
    CHECK(drive::until([&] { return currentFade() == before; }));
    CHECK(opt::Fader::Default.get() == L"Mine");

    pressWith(panel.window, L"Delete", {{L"Velora - Delete Scheme", L"Mine", L"Yes"}});
    CHECK_FALSE(schemes.exists(L"Mine"));
}

TEST_CASE("a damaged scheme is said to be one and changes nothing")
{
    Panel panel;
    const Fade before = currentFade();
    replaceFile(panel.dir.path() + L"\\Fader\\Schemes\\AAA.fde", "no scheme");
    REQUIRE(drive::press(panel.window, L"Refresh"));
    const HWND list = drive::child(panel.window, WC_LISTBOXW);
    REQUIRE(drive::until([&] {
        return SendMessageW(list, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(L"AAA"))
               == 0;
    }));
    SendMessageW(list, LB_SETCURSEL, 0, 0);
    pressWith(panel.window, L"Load", {{L"Velora - Fader", L"Cannot load the Scheme!"}});
    CHECK(currentFade() == before);
}
