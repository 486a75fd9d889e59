#include "base/trap.h"
#include "support/drive_win.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Menu.h"
#include "ui/MessageLoop.h"
#include "ui/WinGeometry.h"

#include <doctest/doctest.h>

#include <stdexcept>
#include <string>

using namespace velora;

namespace {

int g_alive = 0;

class TestForm final : public Form {
public:
    explicit TestForm(std::wstring title, FormKind kind = FormKind::dialog) : Form("TestForm")
    {
        made.title = std::move(title);
        made.kind = kind;
        ++g_alive;
    }
    ~TestForm() override { --g_alive; }

    FormOptions made;
    Edit txtOne, txtTwo;
    Button cmdOK, cmdOther, cmdCancel;
    std::function<void()> onOK, onOther, onMade;
    std::function<bool(CloseReason)> mayClose;
    bool mayUnload = true;
    int destroyed = 0;

    using Form::setLayout;

private:
    FormOptions options() const override { return made; }
    void onCreate() override
    {
        txtOne.create(*this, L"one");
        txtTwo.create(*this, L"two");
        cmdOther.create(*this, L"O&ther", [this] { call(onOther); });
        cmdOK.create(*this, L"OK", [this] { call(onOK); });
        cmdCancel.create(*this, L"Cancel", [this] { close(); });
        setLayout(rows({txtOne, grow(txtTwo), buttonRow({cmdOther, cmdOK, cmdCancel})}).margins());
        call(onMade);
    }
    bool onClose(CloseReason reason) override { return !mayClose || mayClose(reason); }
    bool onQueryUnload() override { return mayUnload; }
    void onDestroy() override { ++destroyed; }
    static void call(const std::function<void()>& f)
    {
        if (f)
            f();
    }
};

TestForm& shown(std::wstring title, FormKind kind = FormKind::dialog)
{
    auto& form = Form::open<TestForm>(std::move(title), kind);
    form.show();
    drive::activate(form.hwnd());
    return form;
}

bool drawnAsDefault(const Button& button)
{
    return (GetWindowLongPtrW(button.hwnd(), GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
}

struct Clean {
    ~Clean()
    {
        Form::unloadAll();
        doEvents();
        CHECK(g_alive == 0);
    }
};

std::string g_reported;

} // namespace

TEST_CASE("a closed form is deleted by the loop, not under its own handler")
{
    const Clean clean;
    auto& form = shown(L"Delete me");
    const HWND window = form.hwnd();
    bool stillThere = false;
    form.onOther = [&form, &stillThere] {
        form.close();
        doEvents(); // nested loops must leave the object alone
        pause(30);
        stillThere = g_alive == 1 && !form.isOpen() && form.txtOne.text().empty();
    };
    CHECK(drive::press(window, L"Other"));
    CHECK(drive::gone(window));
    CHECK(drive::until([] { return g_alive == 0; }));
    CHECK(stillThere);
}

TEST_CASE("what a handler throws is reported by form and procedure, and the form goes on")
{
    const Clean clean;
    const ErrorSink before = setErrorSink([](const ErrorRecord& record) noexcept {
        g_reported = std::string(record.module) + "/" + record.procedure + "/" + record.reason;
    });
    auto& form = shown(L"Thrower");
    int pressed = 0;
    form.onOther = [&] {
        ++pressed;
        throw std::runtime_error("no such luck");
    };
    CHECK(drive::press(form.hwnd(), L"Other"));
    CHECK(drive::until([&] { return pressed == 1; }));
    CHECK(g_reported == "TestForm/onCommand/no such luck");
    CHECK(drive::press(form.hwnd(), L"Other"));
    CHECK(drive::until([&] { return pressed == 2; }));
    setErrorSink(before);
}

TEST_CASE("a form whose controls cannot be made leaves nothing behind")
{
    const Clean clean;
    TestForm form(L"Stillborn");
    form.onMade = [] { throw std::runtime_error("no"); };
    CHECK_THROWS(form.create());
    CHECK(!form.isOpen());
    CHECK(Form::all().empty());
}

TEST_CASE("Tab, Shift+Tab, Enter, mnemonics")
{
    const Clean clean;
    auto& form = shown(L"Keys");
    form.setDefaultButton(form.cmdOK);
    int ok = 0, other = 0;
    form.onOK = [&] { ++ok; };
    form.onOther = [&] { ++other; };
    CHECK(drive::until([&] { return form.txtOne.focused(); }));
    CHECK(form.txtOne.selection() == std::pair{0, 3}); // typing replaces the first field
    drive::key(VK_TAB);
    CHECK(drive::until([&] { return form.txtTwo.focused(); }));
    drive::key(VK_RETURN);
    CHECK(drive::until([&] { return ok == 1; }));
    drive::key(VK_TAB);
    CHECK(drive::until([&] { return form.cmdOther.focused(); }));
    CHECK(drawnAsDefault(form.cmdOther));
    CHECK(!drawnAsDefault(form.cmdOK));
    drive::key(VK_RETURN); // the button with the focus, not the default one
    CHECK(drive::until([&] { return other == 1; }));
    CHECK(ok == 1);
    drive::key(VK_TAB, {VK_SHIFT});
    CHECK(drive::until([&] { return form.txtTwo.focused(); }));
    CHECK(!drawnAsDefault(form.cmdOther));
    CHECK(drawnAsDefault(form.cmdOK));
    drive::key('T', {VK_MENU});
    CHECK(drive::until([&] { return other == 2; }));
    form.txtTwo.focus();
    drive::key(VK_RETURN); // the default one again
    CHECK(drive::until([&] { return ok == 2; }));
}

TEST_CASE("Enter on a disabled default button does nothing")
{
    const Clean clean;
    auto& form = shown(L"Disabled");
    int ok = 0;
    form.onOK = [&] { ++ok; };
    form.setDefaultButton(form.cmdOK);
    form.cmdOK.enable(false);
    drive::key(VK_RETURN);
    doEvents();
    form.cmdOK.enable();
    drive::key(VK_RETURN);
    CHECK(drive::until([&] { return ok > 0; }));
    CHECK(ok == 1);
}

TEST_CASE("Esc closes a dialog, presses its cancel button, and leaves other windows alone")
{
    const Clean clean;
    auto& dialog = shown(L"Dialog");
    const HWND window = dialog.hwnd();
    drive::key(VK_ESCAPE);
    CHECK(drive::gone(window));

    auto& sizable = shown(L"Sizable", FormKind::sizable);
    int ok = 0;
    drive::key(VK_ESCAPE);
    doEvents();
    CHECK(sizable.isOpen());
    sizable.setCancelButton(sizable.cmdOK);
    sizable.onOK = [&] { ++ok; };
    drive::key(VK_ESCAPE);
    CHECK(drive::until([&] { return ok == 1; }));
    PostMessageW(sizable.hwnd(), WM_CLOSE, 0, 0); // the close button is the cancel button
    CHECK(drive::until([&] { return ok == 2; }));
}

TEST_CASE("a form may refuse to close, but not at the end of the program")
{
    const Clean clean;
    auto& form = shown(L"Stubborn");
    CloseReason seen{};
    form.mayClose = [&](CloseReason reason) {
        seen = reason;
        return false;
    };
    PostMessageW(form.hwnd(), WM_CLOSE, 0, 0);
    doEvents();
    CHECK(form.isOpen());
    CHECK(seen == CloseReason::user);
    CHECK(!form.close());
    CHECK(seen == CloseReason::program);
    form.mayUnload = false;
    CHECK(!Form::mayUnloadAll());
    form.mayUnload = true;
    CHECK(Form::mayUnloadAll());
    Form::unloadAll();
    CHECK(seen == CloseReason::unload);
    CHECK(Form::all().empty());
}

TEST_CASE("a modal form shuts out the others and gives them back")
{
    const Clean clean;
    auto& other = shown(L"Other one");
    TestForm modal(L"Modal");
    modal.onOK = [&] { modal.endModal(7); };
    drive::Script script([&] {
        REQUIRE(drive::window(L"Modal"));
        CHECK(!IsWindowEnabled(other.hwnd()));
        CHECK(GetWindow(modal.hwnd(), GW_OWNER) == other.hwnd());
        CHECK(drive::press(modal.hwnd(), L"OK"));
    });
    CHECK(modal.runModal() == 7);
    CHECK(script.done());
    CHECK(!modal.isOpen());
    CHECK(IsWindowEnabled(other.hwnd()));
    CHECK(drive::until([&] { return GetForegroundWindow() == other.hwnd(); }));
}

TEST_CASE("a modal form that ends under another one keeps the rest shut out")
{
    const Clean clean;
    auto& other = shown(L"Bystander");
    TestForm lower(L"Lower"), upper(L"Upper");
    bool wasDisabled = false;
    drive::Script first([&] {
        REQUIRE(drive::window(L"Lower"));
        drive::Script second([&] {
            REQUIRE(drive::window(L"Upper"));
            lower.endModal(1);
            wasDisabled = !IsWindowEnabled(other.hwnd());
            upper.endModal(2);
        });
        CHECK(upper.runModal() == 2);
        CHECK(second.done());
        CHECK(IsWindowEnabled(other.hwnd()));
    });
    CHECK(lower.runModal() == 1);
    CHECK(first.done());
    CHECK(wasDisabled);
}

TEST_CASE("unloading ends modal forms from within")
{
    const Clean clean;
    TestForm lower(L"Lower"), upper(L"Upper");
    int result = -1;
    drive::Script first([&] {
        drive::Script second([] { Form::unloadAll(); });
        result = upper.runModal();
    });
    CHECK(lower.runModal() == IDCANCEL);
    CHECK(result == IDCANCEL);
    CHECK(lower.destroyed == 1);
}

TEST_CASE("a panel works without taking the focus")
{
    const Clean clean;
    auto& window = shown(L"Main", FormKind::sizable);
    window.setPlace({400, 300, 900, 600});
    auto& panel = Form::open<TestForm>(L"Panel", FormKind::panel);
    panel.setPlace({50, 50, 350, 200});
    int pressed = 0;
    panel.onOther = [&] { ++pressed; };
    panel.show();
    CHECK(drive::activate(window.hwnd()));
    CHECK(drive::press(panel.hwnd(), L"Other"));
    CHECK(drive::until([&] { return pressed == 1; }));
    CHECK(GetForegroundWindow() == window.hwnd());
    CHECK(SendMessageW(panel.hwnd(), WM_MOUSEACTIVATE, 0, 0) == MA_NOACTIVATE);
}

TEST_CASE("the focus comes back to where it was")
{
    const Clean clean;
    auto& form = shown(L"Focus");
    form.txtTwo.focus();
    auto& other = shown(L"Elsewhere");
    CHECK(drive::until([&] { return other.txtOne.focused(); }));
    CHECK(drive::activate(form.hwnd()));
    CHECK(drive::until([&] { return form.txtTwo.focused(); }));
}

TEST_CASE("keys of the form come before its controls")
{
    const Clean clean;
    auto& form = shown(L"Own keys");
    int pressed = 0;
    form.addKey(MOD_CONTROL, 'W', [&] { ++pressed; });
    form.addKey(MOD_CONTROL | MOD_SHIFT, VK_TAB, [&] { pressed += 10; });
    drive::key('W');
    drive::key('W', {VK_CONTROL});
    CHECK(drive::until([&] { return pressed == 1; }));
    CHECK(form.txtOne.text() == L"w");
    drive::key(VK_TAB, {VK_CONTROL, VK_SHIFT});
    CHECK(drive::until([&] { return pressed == 11; }));
}

TEST_CASE("a sizable form lays out anew and is never smaller than its layout")
{
    const Clean clean;
    auto& form = shown(L"Sizes", FormKind::sizable);
    form.setPlace({100, 100, 700, 500});
    const Size client = clientSize(form.hwnd());
    CHECK(form.txtTwo.place().width() == client.width - 2 * kMargin);
    CHECK(form.cmdCancel.place().right == client.width - kMargin);
    CHECK(form.cmdCancel.place().bottom == client.height - kMargin);
    MINMAXINFO info = {};
    SendMessageW(form.hwnd(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    CHECK(info.ptMinTrackSize.x >= 3 * 75);
    CHECK(info.ptMinTrackSize.y > 60);
    form.cmdOther.show(false);
    form.relayout();
    CHECK(form.cmdOK.place().right == form.cmdCancel.place().left - 6);
}

TEST_CASE("a remembered place is taken where it can be seen, else the middle of the screen")
{
    const Clean clean;
    TestForm good(L"Good", FormKind::sizable), bad(L"Bad", FormKind::sizable);
    good.made.place = Rect{120, 130, 620, 530};
    good.create();
    CHECK(good.place() == Rect{120, 130, 620, 530});
    bad.made.place = Rect{-5000, 130, -4500, 530};
    bad.made.client = {300, 200};
    bad.create();
    CHECK(bad.place().left > 0);
    CHECK(bad.place().right < GetSystemMetrics(SM_CXSCREEN));
}

TEST_CASE("a menu runs the handler that was chosen")
{
    const Clean clean;
    auto& form = shown(L"Menus");
    std::wstring chosen;
    Menu menu;
    menu.item(L"&First", [&] { chosen = L"first"; });
    menu.separator();
    menu.item(L"Greyed", [&] { chosen = L"greyed"; }, {.enabled = false});
    menu.submenu(L"&More").item(L"&Deep", [&] { chosen = L"deep"; }, {.checked = true});
    drive::Script script([] {
        // The menu has its own loop: the keys are only sent here.
        drive::key('M');
        drive::key('D');
    });
    CHECK(menu.popup(form, {200, 200}));
    CHECK(chosen == L"deep");
    CHECK(!menu.run(999));
    CHECK(!menu.run(2000));
    drive::Script escape([] { drive::key(VK_ESCAPE); });
    CHECK(!menu.popup(form, {200, 200}));
    CHECK(chosen == L"deep");
}
