#include "chat/frmFade.h"

#include "base/files.h"
#include "chat/modCurrentFade.h"
#include "support/drive_win.h"
#include "support/memory_store.h"
#include "support/tempdir.h"
#include "ui/MessageLoop.h"

#include <doctest/doctest.h>

#include <commctrl.h>

using namespace velora;

namespace {

/// A fade panel over settings and schemes of the test's own.
struct Panel {
    Panel() : former(setSettingsStore(std::make_unique<MemoryStore>()))
    {
        LoadSettings();
        opt::General::AutoCloseMsgBox.set(false);
        prepareFader(dir.path());
        frmFade::showPanel(dir.path());
        window = drive::window(L"Velora - Fader");
        REQUIRE(window);
        REQUIRE(drive::activate(window));
    }
    ~Panel()
    {
        frmFade::hidePanel();
        doEvents();
        nextScheme = nullptr;
        setSettingsStore(std::move(former));
        LoadSettings();
    }
    TempDir dir;
    std::unique_ptr<SettingsStore> former;
    HWND window = nullptr;
};

bool checked(HWND window, std::wstring_view text)
{
    return SendMessageW(drive::child(window, text), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

/// Presses a button of the box with this caption that has it; other windows may share the caption.
bool answer(const wchar_t* caption, const wchar_t* button)
{
    for (HWND box = nullptr; (box = FindWindowExW(nullptr, box, nullptr, caption));)
        if (drive::child(box, button))
            return drive::press(box, button);
    return false;
}

/// Presses a button that opens a box, and drives that box meanwhile.
void pressWith(HWND window, const wchar_t* button, std::function<void()> drive)
{
    const HWND pressed = drive::child(window, button);
    REQUIRE(pressed);
    // Posted, so that the box is open before the script's timer comes.
    PostMessageW(pressed, BM_CLICK, 0, 0);
    drive::Script script(std::move(drive));
    CHECK(drive::until([&] { return script.done(); }));
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
    const auto typeName = [](const wchar_t* name) {
        const HWND box = drive::window(L"Velora - Save Scheme");
        REQUIRE(box);
        REQUIRE(drive::activate(box));
        drive::type(name);
        drive::key(VK_TAB);
        drive::type(L"Rose");
        drive::key(VK_TAB);
        drive::type(L"for evenings");
        drive::key(VK_RETURN);
    };
    pressWith(panel.window, L"Save...", [&] { typeName(L"Mine"); });
    REQUIRE(schemes.load(L"Mine"));
    CHECK(schemes.load(L"Mine")->Author == L"Rose");
    CHECK(schemes.load(L"Mine")->Comments == L"for evenings");

    Fade other = before;
    other.FadeNumber = 2;
    setCurrentFade(other);
    std::unique_ptr<drive::Script> refusal;
    pressWith(panel.window, L"Save...", [&] {
        typeName(L"Mine");
        // The question comes up when the box's own loop has ended, and this script with it.
        refusal = std::make_unique<drive::Script>(
            [] { CHECK(drive::until([] { return answer(L"Velora - Save Scheme", L"No"); })); });
    });
    CHECK(drive::until([&] { return refusal->done(); }));
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

    pressWith(panel.window, L"Delete", [] {
        CHECK(drive::until([] { return answer(L"Velora - Delete Scheme", L"Yes"); }));
    });
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
    pressWith(panel.window, L"Load",
              [] { CHECK(drive::until([] { return answer(L"Velora - Fader", L"OK"); })); });
    CHECK(currentFade() == before);
}
