// The toolbar's menus, the program's items in AOL's menus and the windows that they open, used with
// the mouse and the keys.
#include "base/text.h"
#include "chat/ToolbarRoutes.h"
#include "chat/frmEditor.h"
#include "chat/frmMultiLine.h"
#include "chat/modEditorLists.h"
#include "chat/modShellOpen.h"
#include "core/modAOL.h"
#include "hook/AgentLink.h"
#include "settings/Options.h"
#include "support/drive_win.h"
#include "support/toolbar_win.h"
#include "ui/MessageLoop.h"
#include "ui/WinGeometry.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

struct Desk {
    Desk()
    {
        opt::General::AutoCloseMsgBox.set(false);
        opt::Toolbar::Position.set(L"20,0");
        ToolbarRoutes& routes = toolbarRoutes();
        routes.openIMs = [this] { done += "ims "; };
        routes.exitProgram = [this] { done += "exit "; };
        routes.ignoreMember = [this](const std::wstring& name) { done += to1252(name) + " "; };
        shellOpen = [this](const std::wstring& file, const std::wstring& arguments) {
            done += to1252(arguments.empty() ? file : arguments) + " ";
            return true;
        };
        writeSetting(L"Commands", L"home", L"http://www.example.com/");
        bench.load();
        bench.enterRoom(L"Town Square");
        bench.host.command(L"people +Rose3");
    }
    ~Desk() { shellOpen = formerOpen; }

    /// Clicks a button of the panel and gives its menu these keys.
    void choose(const wchar_t* button, std::initializer_list<WORD> keys)
    {
        REQUIRE(drive::activate(bench.host.frame()));
        // The keys wait in the queue until the menu's own loop takes them.
        PostMessageW(drive::child(frmToolbar::instance()->hwnd(), button), BM_CLICK, 0, 0);
        const drive::Script script([&] {
            CHECK(drive::until(drive::menuIsOpen));
            for (const WORD key : keys)
                drive::key(key);
        });
        REQUIRE(drive::until([&] { return script.done() && !drive::menuIsOpen(); }));
    }

    ToolbarBench bench;
    std::string done; ///< what was asked for outside the room
    std::function<bool(const std::wstring&, const std::wstring&)> formerOpen = shellOpen;
};

} // namespace

TEST_CASE("each menu of the panel does what its items say")
{
    Desk desk;
    const auto sent = [&] { return desk.bench.host.sent(); };

    // The second of the people, "Ignore"; then the name on the clipboard.
    desk.choose(L"People", {VK_DOWN, VK_DOWN, VK_RIGHT, 'G'});
    CHECK(desk.done == "Rose3 ");
    desk.choose(L"People", {VK_DOWN, VK_DOWN, VK_RIGHT, 'C'});
    CHECK(drive::clipboardText() == L"Rose3");

    const auto hugs = loadEditorList(EditorList::Hugs, {});
    REQUIRE(hugs.size() > 1);
    // Past "Hug" and "Hug Somebody..." to the second style.
    desk.choose(L"Hugs", {VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN});
    CHECK(opt::Hugs::Current.get() == hugs[1].text);
    desk.choose(L"Hugs", {VK_DOWN, VK_RIGHT, VK_DOWN, VK_RETURN});
    CHECK(waitFor([&] { return !sent().empty(); }));
    CHECK(sent() == std::vector<std::wstring>{hugText(hugs[1].text, L"Rose3")});

    desk.choose(L"Fader", {'F'});
    CHECK(opt::Fader::On.get());
    desk.choose(L"Menu", {'L'});
    CHECK(opt::General::ChatLog.get());
    desk.done.clear();
    desk.choose(L"Commands", {VK_DOWN, VK_RETURN});
    desk.choose(L"Menu", {'X'});
    CHECK(desk.done == "http://www.example.com/ exit ");
}

TEST_CASE("the program's items stand in AOL's menus and never reach AOL")
{
    Desk desk;
    // AOL's own menu loop runs in AOL: this thread only serves the toolbar.
    const auto choose = [](WORD menu, WORD item) {
        drive::key(menu, {VK_MENU});
        CHECK(waitFor(drive::menuIsOpen));
        drive::key(item);
        CHECK(waitFor([] { return !drive::menuIsOpen(); }));
    };
    // No program shows pages here, so the help is opened without its place.
    const struct {
        WORD menu, item;
        const char* done;
    } items[] = {{'P', 'V', "ims "}, {'H', 'T', "index.html "}, {'H', 'S', "index.html "}};
    REQUIRE(drive::activate(desk.bench.host.frame()));
    for (const auto& item : items) {
        desk.done.clear();
        choose(item.menu, item.item);
        CHECK(waitFor([&] { return desk.done.ends_with(item.done); }));
    }
    choose('P', 'E'); // a keyword of AOL's own
    CHECK(waitFor([&] { return desk.bench.host.document(L"hannels") != nullptr; }));

    frmToolbar::instance()->UnhookSubclasses();
    desk.done.clear();
    REQUIRE(drive::activate(desk.bench.host.frame()));
    drive::key('P', {VK_MENU});
    CHECK(waitFor(drive::menuIsOpen));
    drive::key('V');
    drive::key(VK_ESCAPE);
    drive::key(VK_ESCAPE);
    CHECK(waitFor([] { return !drive::menuIsOpen(); }));
    CHECK(desk.done.empty());
}

TEST_CASE("the panel shows the buttons that the user wants, and has a menu behind the right button")
{
    Desk desk;
    const HWND panel = frmToolbar::instance()->hwnd();
    const HWND hugs = drive::child(panel, L"Hugs");
    const int width = windowRect(panel).width();
    const auto pick = [&](HWND over, std::vector<std::wstring> items) {
        const drive::MenuPick picked(std::move(items));
        REQUIRE(drive::click(over, true));
        REQUIRE(drive::until([&] { return picked.done(); }));
    };
    pick(drive::child(panel, L"People"), {L"Toolbar", L"Buttons", L"Hugs"});
    CHECK(waitFor([&] { return !IsWindowVisible(hugs); }));
    CHECK(windowRect(panel).width() < width);
    pick(drive::child(panel, L"People"), {L"Toolbar", L"Buttons", L"Hugs"});
    CHECK(waitFor([&] { return IsWindowVisible(hugs) && windowRect(panel).width() == width; }));
    pick(drive::child(panel, L"Wav List"), {L"Play Sounds Said in the Room"});
    CHECK_FALSE(opt::General::WavDetect.get());
    pick(drive::child(panel, L"People"), {L"Toolbar", L"Upright"});
    CHECK(windowRect(panel).height() > windowRect(panel).width());
}

TEST_CASE("the editor takes over with Enter what was typed, and saves it")
{
    Desk desk;
    REQUIRE(frmEditor::openEditor(EditorList::Commands, {}));
    REQUIRE(drive::activate(Form::find<frmEditor>()->hwnd()));
    drive::type(L"nws");
    drive::key(VK_TAB);
    drive::type(L"news");
    drive::key(VK_RETURN); // adds
    drive::key(VK_RETURN); // OK
    CHECK(drive::until([] { return Form::find<frmEditor>() == nullptr; }));
    CHECK(commandTarget(L"nws") == L"news");
    CHECK(commandTarget(L"home") == L"http://www.example.com/");

    // What is typed and not taken over is not lost without a question.
    REQUIRE(frmEditor::openEditor(EditorList::Aliases, {}));
    REQUIRE(drive::activate(Form::find<frmEditor>()->hwnd()));
    drive::type(L"Rose 3");
    REQUIRE(waitFor([&] { return textOf(GetFocus()) == L"Rose 3"; }));
    PostMessageW(Form::find<frmEditor>()->hwnd(), WM_CLOSE, 0, 0);
    const drive::Script stay([] { CHECK(drive::press(GetForegroundWindow(), L"No")); });
    REQUIRE(drive::until([&] { return stay.done(); }));
    REQUIRE(drive::until([] {
        const frmEditor* const form = Form::find<frmEditor>();
        return form && IsWindowEnabled(form->hwnd());
    }));
    REQUIRE(drive::activate(Form::find<frmEditor>()->hwnd()));
    REQUIRE(drive::until([] { return textOf(GetFocus()) == L"Rose 3"; }));
    drive::key(VK_TAB);
    drive::type(L"Rosie");
    REQUIRE(drive::until([] { return textOf(GetFocus()) == L"Rosie"; }));
    drive::key(VK_RETURN);
    drive::key(VK_RETURN);
    CHECK(drive::until([] { return Form::find<frmEditor>() == nullptr; }));
    CHECK(CheckForAlias(L"rose3") == L"Rosie");
}

TEST_CASE("Ctrl+Enter in the multi-line window sends every line once")
{
    Desk desk;
    opt::ChatExtender::CharsInLine.set(20);
    opt::ChatExtender::MultilineBurst.set(L"0.10");
    frmMultiLine::showWindow();
    REQUIRE(drive::activate(Form::find<frmMultiLine>()->hwnd()));
    drive::type(L"one two three four five six");
    drive::key(VK_RETURN);
    drive::type(L"seven");
    drive::key(VK_RETURN, {VK_CONTROL});
    const std::vector<std::wstring> lines{L"one two three four", L"five six", L"seven"};
    CHECK(drive::until([&] { return desk.bench.host.sent() == lines; }));
    CHECK(Form::find<frmMultiLine>()->isOpen());
}
