#include "core/frmOptions.h"

#include "base/files.h"
#include "core/frmMsg.h"
#include "core/modHotWordList.h"
#include "core/modMain.h"
#include "core/modSettingsFile.h"
#include "support/answer_win.h"
#include "support/memory_store.h"
#include "support/tempdir.h"
#include "ui/MessageLoop.h"

#include <doctest/doctest.h>

using namespace velora;
using velora::test::Answer;

namespace {

/// The window over settings of the test's own.
struct Window {
    explicit Window(const wchar_t* page = L"")
    {
        LoadSettings();
        opt::General::AutoCloseMsgBox.set(false);
        open(page);
    }
    ~Window()
    {
        Form::unloadAll();
        doEvents();
    }
    void open(const wchar_t* page)
    {
        frmOptions::showOptions(page);
        REQUIRE(Form::find<frmOptions>());
        hwnd = Form::find<frmOptions>()->hwnd();
        REQUIRE(drive::activate(hwnd));
    }
    /// A control on the page that is shown.
    HWND control(std::wstring_view textOrClass) const
    {
        for (const HWND child : drive::children(hwnd)) {
            wchar_t name[32] = L"";
            GetClassNameW(child, name, 32);
            if (IsWindowVisible(child)
                && (drive::text(child) == textOrClass || textOrClass == name))
                return child;
        }
        return nullptr;
    }
    bool shows(std::wstring_view text) const
    {
        return drive::until([&] { return control(text) != nullptr; });
    }
    bool enabled(std::wstring_view text) const { return IsWindowEnabled(control(text)) != 0; }
    bool checked(std::wstring_view text) const
    {
        return SendMessageW(control(text), BM_GETCHECK, 0, 0) == BST_CHECKED;
    }
    /// Presses a button that brings a box up, and answers that.
    void pressWith(std::wstring_view button, const wchar_t* answer, const wchar_t* part) const
    {
        PostMessageW(control(button), BM_CLICK, 0, 0);
        HWND box = nullptr;
        drive::Script script([&] {
            REQUIRE(drive::until([&] {
                const auto* const open = Form::find<frmMsg>();
                box = open ? open->hwnd() : nullptr;
                return box && drive::child(box, answer);
            }));
            CHECK(drive::text(box).size() > 0);
            bool said = false;
            for (const HWND child : drive::children(box))
                said = said || drive::text(child).find(part) != std::wstring::npos;
            CHECK(said);
            CHECK(drive::press(box, answer));
        });
        CHECK(drive::until([&] { return script.done() && !Form::find<frmMsg>(); }));
    }

    StoreScope scope;
    HWND hwnd = nullptr;
};

} // namespace

TEST_CASE("nothing is written before OK or Apply, and Esc leaves everything as it was")
{
    Window window(L"Fader");
    REQUIRE(window.shows(L"Fade what I send"));
    CHECK_FALSE(window.enabled(L"Apply"));
    CHECK_FALSE(window.enabled(L"New colours"));
    drive::key('F', {VK_MENU});
    CHECK(drive::until([&] { return window.checked(L"Fade what I send"); }));
    REQUIRE(drive::press(window.hwnd, L"Draw it at random"));
    CHECK(drive::until([&] { return window.enabled(L"New colours"); }));
    CHECK(window.enabled(L"Apply"));
    CHECK_FALSE(opt::Fader::On.get());
    drive::key(VK_ESCAPE);
    CHECK(drive::gone(window.hwnd));
    CHECK_FALSE(opt::Fader::On.get());

    // It opens again at the page that was the last.
    window.open(L"");
    REQUIRE(window.shows(L"Fade what I send"));
    CHECK_FALSE(window.checked(L"Fade what I send"));
    drive::key('F', {VK_MENU});
    CHECK(drive::until([&] { return window.enabled(L"Apply"); }));
    drive::key('A', {VK_MENU});
    CHECK(drive::until([] { return opt::Fader::On.get(); }));
    CHECK(textOf(window.scope.store->data[L"Fader"][L"On"]) == L"True");
    CHECK(IsWindow(window.hwnd));
    CHECK_FALSE(window.enabled(L"Apply"));
    opt::Fader::On.set(false); // as the keyword "/fadeoff" does
    CHECK(drive::until([&] { return !window.checked(L"Fade what I send"); }));
}

TEST_CASE("the pages are reached by keys, and what is typed is kept by Enter")
{
    Window window(L"General");
    drive::key('P', {VK_MENU});
    REQUIRE(drive::until([&] { return GetFocus() == window.control(L"ListBox"); }));
    drive::key(VK_DOWN);
    REQUIRE(window.shows(L"Longest line:"));
    drive::key(VK_TAB, {VK_CONTROL});
    REQUIRE(window.shows(L"Look for hot words"));
    drive::key(VK_TAB, {VK_CONTROL, VK_SHIFT});
    REQUIRE(window.shows(L"Longest line:"));
    drive::key('L', {VK_MENU});
    const HWND edit = window.control(L"Edit");
    REQUIRE(drive::until([&] { return GetFocus() == edit; }));
    drive::key('A', {VK_CONTROL});
    SendMessageW(edit, EM_SETSEL, 0, -1);
    drive::type(L"5");
    REQUIRE(drive::until([&] { return drive::text(edit) == L"5"; }));

    INFO("a number out of range: a message, and its field");
    drive::key(VK_TAB, {VK_CONTROL}); // from another page
    REQUIRE(window.shows(L"Look for hot words"));
    window.pressWith(L"OK", L"OK", L"from 10 to 1000");
    REQUIRE(window.shows(L"Longest line:"));
    CHECK(drive::until([&] { return GetFocus() == edit; }));
    CHECK(opt::ChatExtender::CharsInLine.get() == 60);
    drive::type(L"75"); // the wrong text is selected
    REQUIRE(drive::until([&] { return drive::text(edit) == L"75"; }));
    drive::key(VK_RETURN);
    CHECK(drive::gone(window.hwnd));
    CHECK(opt::ChatExtender::CharsInLine.get() == 75);
}

TEST_CASE("the defaults of a page come back after a question")
{
    Window window(L"Alerts");
    opt::IM::AlertSeconds.set(40);
    opt::Fader::On.set(true);
    REQUIRE(window.shows(L"Alert window"));
    window.pressWith(L"Restore Defaults...", L"No", L"Alerts");
    CHECK(drive::text(window.control(L"Edit")) == L"40");
    window.pressWith(L"Restore Defaults...", L"Yes", L"Alerts");
    CHECK(drive::until([&] { return drive::text(window.control(L"Edit")) == L"5"; }));
    CHECK(opt::IM::AlertSeconds.get() == 40);
    REQUIRE(drive::press(window.hwnd, L"OK"));
    CHECK(drive::gone(window.hwnd));
    CHECK(opt::IM::AlertSeconds.get() == 5);
    CHECK(opt::Fader::On.get());
}

TEST_CASE("hot words are added, changed and removed")
{
    Window window(L"Hot Words");
    drive::key('W', {VK_MENU});
    const HWND edit = window.control(L"Edit");
    REQUIRE(drive::until([&] { return GetFocus() == edit; }));
    for (const wchar_t* word : {L"cat", L"dog", L"cow"}) {
        drive::type(word);
        REQUIRE(drive::until([&] { return drive::text(edit) == word; }));
        drive::key(VK_RETURN); // adds, and does not close the window
        REQUIRE(drive::until([&] { return drive::text(edit).empty(); }));
    }
    HWND list = nullptr; // the second one: the first holds the pages
    for (const HWND child : drive::children(window.hwnd)) {
        wchar_t name[32] = L"";
        GetClassNameW(child, name, 32);
        if (IsWindowVisible(child) && std::wstring(name) == L"ListBox")
            list = child;
    }
    CHECK(SendMessageW(list, LB_GETCOUNT, 0, 0) == 3);
    CHECK(hotWords().empty());
    SetFocus(list);
    drive::key(VK_HOME);
    drive::key(VK_DELETE);
    CHECK(drive::until([&] { return SendMessageW(list, LB_GETCOUNT, 0, 0) == 2; }));
    drive::key('W', {VK_MENU});
    REQUIRE(drive::until([&] { return GetFocus() == edit; }));
    drive::type(L"hen");
    REQUIRE(drive::until([&] { return drive::text(edit) == L"hen"; }));
    REQUIRE(drive::press(window.hwnd, L"OK")); // what is typed counts
    CHECK(drive::gone(window.hwnd));
    CHECK(hotWords() == std::vector<std::wstring>{L"cow", L"dog", L"hen"});

    window.open(L"Hot Words");
    window.pressWith(L"Restore Defaults...", L"Yes", L"Hot Words");
    CHECK(hotWords().size() == 3);
}

TEST_CASE("all settings are taken from a file after a question, and the former ones are kept")
{
    Window window(L"General");
    opt::Fader::On.set(true);
    const TempDir dir;
    const std::wstring file = joinPath(dir.path(), L"mine.txt");
    replaceFile(file, "Velora settings 1\r\n"
                      "General\tAutoCloseTime\tnumber\t42\r\n"
                      "General\tAutoCloseMsgBox\ttext\tFalse\r\n");
    REQUIRE(window.shows(L"Load Settings..."));
    {
        constexpr wchar_t kCaption[] = L"Velora - Options";
        const Answer choice(L"Open", L"Load Settings", L"", file);
        const Answer question(L"Yes", kCaption, L"the 2 settings of mine.txt");
        const Answer done(L"OK", kCaption, L"have been loaded");
        PostMessageW(window.control(L"Load Settings..."), BM_CLICK, 0, 0);
        REQUIRE(drive::until([&] { return done.came() && !Form::find<frmMsg>(); }, 30000));
    }
    CHECK(opt::General::AutoCloseTime.get() == 42);
    CHECK_FALSE(opt::Fader::On.get());
    CHECK(drive::text(window.control(L"Edit")) == L"42");
    const auto kept =
        readFile(joinPath(AppPath(), L"data\\settings before loading.txt")).value_or("");
    const ReadSettings former = readSettingsFile(kept);
    CHECK_FALSE(former.badLine);
    CHECK(kept.find("Fader\tOn\ttext\tTrue") != kept.npos);
}
