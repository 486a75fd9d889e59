// The descriptions' window, used with keyboard and mouse, over the engine beside the program.
#include "sounds/frmDescriptions.h"

#include "base/files.h"
#include "base/text.h"
#include "core/modAOL.h"
#include "core/modMain.h"
#include "settings/Options.h"
#include "sounds/WavDescriptions.h"
#include "sounds/clsMP3.h"
#include "sounds/modDescriptions.h"
#include "support/aolhost_win.h"
#include "support/drive_win.h"
#include "support/install_win.h"
#include "support/memory_store.h"
#include "support/tempdir.h"
#include "support/wavfile.h"
#include "ui/MessageLoop.h"
#include "ui/Timer.h"

#include <doctest/doctest.h>

#include <commctrl.h>

using namespace velora;
using namespace velora::test;

namespace {

constexpr wchar_t kCaption[] = L"Velora - Wav Descriptions";
constexpr wchar_t kEdit[] = L"Velora - Edit Wav Description";
constexpr wchar_t kNew[] = L"Velora - New Wav Description";
constexpr wchar_t kFill[] = L"Velora - Fill Descriptions Category";
constexpr wchar_t kProcessing[] = L"Velora - Processing";
constexpr wchar_t kMove[] = L"Velora - Move Description";

void clean()
{
    Form::unloadAll();
    doEvents();
    wavDatabase().forget();
    const std::wstring data = AppPath() + L"\\data";
    for (const FileEntry& entry : listFolder(data))
        if (startsWithNoCase(entry.name, L"wav desc") || startsWithNoCase(entry.name, L"desc"))
            deleteFile(joinPath(data, entry.name));
}

Description described(const wchar_t* name, const wchar_t* comments)
{
    return {.fileName = name, .comments = comments};
}

/// The window over a new database with two descriptions in "AOL Directory".
struct Window {
    Window() : former(setSettingsStore(std::make_unique<MemoryStore>()))
    {
        LoadSettings();
        opt::General::AutoCloseMsgBox.set(false);
        clean();
        REQUIRE(wavDatabase().Init());
        wavDatabase().SetTable(L"AOL Directory");
        wavDatabase().AddRecords(
            {described(L"hello.wav", L"Says hello"), described(L"bye.mp3", L"Says good bye")});
    }
    ~Window()
    {
        clean();
        setSettingsStore(std::move(former));
        LoadSettings();
    }
    void open()
    {
        frmDescriptions::openWindow();
        window = drive::window(kCaption);
        REQUIRE(window);
        REQUIRE(drive::activate(window));
        list = drive::child(window, WC_LISTVIEWW);
        REQUIRE(list);
    }
    /// File names and comments, in the order of the list.
    std::wstring shown() const
    {
        std::wstring all;
        for (int row = 0; row < ListView_GetItemCount(list); ++row) {
            wchar_t text[2][300] = {};
            ListView_GetItemText(list, row, 0, text[0], 300);
            ListView_GetItemText(list, row, 5, text[1], 300);
            all += std::wstring(text[0]) + L"=" + text[1] + L";";
        }
        return all;
    }
    bool shows(const std::wstring& wanted) const
    {
        const bool right = drive::until([&] { return shown() == wanted; });
        CHECK_MESSAGE(right, "shown: ", toUtf8(shown()));
        return right;
    }
    void select(int row) const
    {
        SetFocus(list);
        ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
        ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED,
                              LVIS_SELECTED | LVIS_FOCUSED);
        doEvents();
    }
    void choose(const wchar_t* category) const
    {
        const HWND combo = drive::child(window, WC_COMBOBOXW);
        const LRESULT index = SendMessageW(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                           reinterpret_cast<LPARAM>(category));
        REQUIRE(index >= 0);
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
        SendMessageW(window, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(combo));
    }
    /// Chooses from the menu bar, "Category" "New...". What it opens is for play().
    void menu(const wchar_t* title, const wchar_t* item) const
    {
        const HMENU bar = GetMenu(window);
        const auto find = [](HMENU menu, std::wstring_view caption) {
            for (int i = 0; i < GetMenuItemCount(menu); ++i) {
                wchar_t text[100] = L"";
                GetMenuStringW(menu, static_cast<UINT>(i), text, 100, MF_BYPOSITION);
                const std::wstring plain = without(text, L'&');
                if (plain.substr(0, plain.find(L'\t')) == caption)
                    return i;
            }
            return -1;
        };
        const int at = find(bar, title);
        REQUIRE(at >= 0);
        const HMENU popup = GetSubMenu(bar, at);
        const int entry = find(popup, item);
        REQUIRE(entry >= 0);
        PostMessageW(window, WM_COMMAND, GetMenuItemID(popup, entry), 0);
    }
    void pressLater(const wchar_t* button) const
    {
        const HWND found = drive::child(window, button);
        REQUIRE(drive::until([&] { return IsWindowEnabled(found) != 0; }));
        PostMessageW(found, BM_CLICK, 0, 0);
    }

    std::unique_ptr<SettingsStore> former;
    HWND window = nullptr, list = nullptr;
};

/// A step looks whether it can act yet, acts, and says so; it never pumps.
using Steps = std::vector<std::function<bool()>>;

/// Runs the steps one after the other from whatever loop runs: what they close can close.
void play(const Steps& steps)
{
    std::size_t at = 0;
    Timer timer;
    timer.start(20, [&] {
        if (at < steps.size() && steps[at]())
            ++at;
    });
    const bool done = drive::until([&] { return at == steps.size(); }, 30000);
    CHECK_MESSAGE(done, "stands at step ", at);
    if (!done)
        Form::unloadAll();
    timer.stop();
    doEvents();
}

HWND shownWindow(const wchar_t* caption)
{
    const HWND window = FindWindowW(nullptr, caption);
    return window && IsWindowVisible(window) && IsWindowEnabled(window) ? window : nullptr;
}

void post(HWND window, const wchar_t* button)
{
    PostMessageW(drive::child(window, button), BM_CLICK, 0, 0);
}

/// In a dialog: for keys, once it has the focus.
std::function<bool()> dialog(const wchar_t* caption, const std::function<void(HWND)>& act,
                             bool keys = false)
{
    return [=] {
        const HWND window = shownWindow(caption);
        if (!window)
            return false;
        if (keys && (GetForegroundWindow() != window || !IsChild(window, GetFocus()))) {
            SetForegroundWindow(window);
            return false;
        }
        act(window);
        return true;
    };
}

/// Answers the box that says `part`.
std::function<bool()> box(std::wstring part, const wchar_t* button)
{
    return [=] {
        for (HWND at = nullptr; (at = FindWindowExW(nullptr, at, nullptr, kCaption));)
            for (const HWND child : drive::children(at))
                if (IsWindowVisible(at) && IsWindowEnabled(at) && drive::child(at, button)
                    && drive::text(child).find(part) != std::wstring::npos) {
                    post(at, button);
                    return true;
                }
        return false;
    };
}

HWND field(HWND dialog, int which)
{
    for (const HWND child : drive::children(dialog)) {
        wchar_t name[32] = L"";
        GetClassNameW(child, name, 32);
        if (lstrcmpiW(name, L"Edit") == 0 && GetParent(child) == dialog && which-- == 0)
            return child;
    }
    return nullptr;
}

} // namespace

TEST_CASE_FIXTURE(Window, "by keyboard alone: new, edit, search, delete; Esc closes; remembered")
{
    open();
    shows(L"bye.mp3=Says good bye;hello.wav=Says hello;");
    drive::key('N', {VK_CONTROL});
    play({dialog(
              kNew, [](HWND) { drive::key(VK_RETURN); }, true),
          box(L"Please enter the name of the sound file", L"OK"),
          dialog(
              kNew,
              [](HWND) {
                  drive::type(L"new.wav");
                  for (int tab = 0; tab < 5; ++tab)
                      drive::key(VK_TAB);
                  drive::type(L"Brand new");
                  drive::key(VK_RETURN);
              },
              true)});
    shows(L"bye.mp3=Says good bye;hello.wav=Says hello;new.wav=Brand new;");

    drive::key(VK_HOME); // the new one is selected; the list has the focus
    drive::key(VK_RETURN);
    play({dialog(
        kEdit,
        [](HWND) {
            drive::key('T', {VK_MENU});
            drive::type(L"Farewell");
            drive::key('C', {VK_MENU});
            drive::type(L"Bye");
            drive::key(VK_RETURN);
        },
        true)});
    shows(L"bye.mp3=Bye;hello.wav=Says hello;new.wav=Brand new;");
    REQUIRE(wavDatabase().IsMatch(L"BYE.mp3"));
    CHECK(wavDatabase().Title() == L"Farewell");

    drive::key('F', {VK_CONTROL});
    drive::type(L"HELLO");
    shows(L"hello.wav=Says hello;");
    drive::key(VK_TAB);
    drive::key(VK_TAB); // over "In all categories" into the list
    drive::key(VK_SPACE);
    drive::key(VK_DELETE);
    play({box(L"delete the record for hello.wav?", L"No")});
    shows(L"hello.wav=Says hello;");
    drive::key(VK_DELETE);
    play({box(L"delete the record for hello.wav?", L"Yes")});
    shows(L"");
    CHECK_FALSE(wavDatabase().IsMatch(L"hello.wav"));

    drive::key(VK_ESCAPE);
    CHECK(drive::gone(window));
    CHECK(readSetting(L"Descriptions", L"Position", L"") != L"");
}

TEST_CASE_FIXTURE(Window, "a description moves to another category, not to its own")
{
    open();
    const auto moveTo = [&](const wchar_t* category, Steps then) {
        select(0);
        pressLater(L"Move...");
        then.insert(then.begin(), dialog(kMove, [=](HWND shown) {
                        const HWND choice = drive::child(shown, L"ListBox");
                        SendMessageW(choice, LB_SELECTSTRING, static_cast<WPARAM>(-1),
                                     reinterpret_cast<LPARAM>(category));
                        post(shown, L"OK");
                    }));
        play(then);
    };
    moveTo(L"AOL Directory",
           {box(L"You cannot move a description to the category it already", L"OK")});
    moveTo(L"AOL Sounds", {});
    shows(L"hello.wav=Says hello;");
    choose(L"AOL Sounds");
    shows(L"bye.mp3=Says good bye;");
    // The other category has one of that name: both stay.
    wavDatabase().SetTable(L"AOL Directory");
    wavDatabase().AddRecords({described(L"BYE.mp3", L"another")});
    moveTo(L"AOL Directory", {box(L"already holds a description", L"OK")});
    shows(L"bye.mp3=Says good bye;");

    SendMessageW(drive::child(window, L"In all categories"), BM_CLICK, 0, 0);
    shows(L"BYE.mp3=another;bye.mp3=Says good bye;hello.wav=Says hello;");
}

TEST_CASE_FIXTURE(Window, "categories are made, renamed and deleted")
{
    open();
    const auto named = [&](const wchar_t* item, const wchar_t* name, Steps then) {
        menu(L"Category", item);
        then.insert(then.begin(), [=, this] {
            HWND input = nullptr;
            while ((input = FindWindowExW(nullptr, input, nullptr, kCaption)))
                if (input != window && IsWindowVisible(input) && field(input, 0))
                    break;
            if (!input)
                return false;
            SetWindowTextW(field(input, 0), name);
            post(input, L"OK");
            return true;
        });
        play(then);
    };
    named(L"New...", L"My Sounds", {});
    CHECK(wavDatabase().GetTables().size() == 4);
    shows(L"");
    named(L"New...", L"MSysMine", {box(L"cannot be made", L"OK")});
    named(L"Rename...", L"AOL Sounds", {box(L"cannot be made", L"OK")});
    named(L"Rename...", L"Our Sounds", {});
    CHECK(drive::text(drive::child(window, WC_COMBOBOXW)) == L"Our Sounds");
    choose(L"AOL Directory");
    menu(L"Category", L"Delete...");
    play({box(L"delete the Descriptions Category AOL Directory?", L"Yes")});
    std::wstring names;
    for (const std::wstring& name : wavDatabase().GetTables())
        names += name + L";";
    CHECK(toUtf8(names) == "AOL Sounds;Our Sounds;Windows Directory;");
    CHECK_FALSE(wavDatabase().IsMatch(L"hello.wav"));
}

TEST_CASE_FIXTURE(Window, "a category is filled from a folder; Cancel keeps what was done")
{
    TempDir sounds;
    for (int i = 0; i < 600; ++i)
        replaceFile(sounds.file(L"s" + std::to_wstring(i) + L".wav"), std::string(200, 's'));
    clsMP3 tag;
    tag.SetComments(L"From the tag");
    tag.SaveTag(sounds.file(L"s0.wav"));
    open();
    choose(L"AOL Sounds");
    const auto from = [&](const std::wstring& folder) {
        return dialog(kFill, [=](HWND shown) {
            SetWindowTextW(field(shown, 0), folder.c_str());
            post(shown, L"OK");
        });
    };
    const auto fill = [&](Steps then) {
        menu(L"Category", L"Fill from Folder...");
        then.insert(then.begin(), from(sounds.path()));
        play(then);
    };
    menu(L"Category", L"Fill from Folder...");
    play({from(L"C:\\no such folder"), box(L"does not exist", L"OK"), from(sounds.path()),
          dialog(kProcessing, [](HWND shown) { post(shown, L"Cancel"); }),
          box(L"What was done until then stays", L"OK")});
    CHECK(wavDatabase().GetRecordCount(L"AOL Sounds") < 600);
    fill({box(L"Added:", L"OK")});
    CHECK(wavDatabase().GetRecordCount(L"AOL Sounds") == 600);
    CHECK(ListView_GetItemCount(list) == 600);
    REQUIRE(wavDatabase().IsMatch(L"s0.wav"));
    CHECK(wavDatabase().Comments() == L"From the tag");
}

TEST_CASE_FIXTURE(Window, "description files of an older version are offered, imported, put aside")
{
    const std::wstring file = AppPath() + L"\\data\\desc1.dat";
    replaceFile(file, "old.wav\tFrom of old\r\nhello.wav\tAlso here\r\nnothing\r\n");
    int told = 0;
    wavDescriptions().changed = [&] { ++told; };
    open();
    constexpr wchar_t kOffer[] = L"has detected Wav Description files from an older version";
    play({box(kOffer, L"No")});
    CHECK(fileExists(file));
    menu(L"Database", L"Import Older Descriptions...");
    play({box(kOffer, L"Yes"), box(L"Added: 2 descriptions", L"OK")});
    wavDescriptions().changed = nullptr;
    shows(L"hello.wav=Also here;old.wav=From of old;");
    CHECK_FALSE(fileExists(file));
    CHECK(fileExists(file + L".imported"));
    CHECK(told > 0);
    // The first category still answers for the name that both hold.
    REQUIRE(wavDatabase().IsMatch(L"hello.wav"));
    CHECK(wavDatabase().Comments() == L"Says hello");

    menu(L"Database", L"Compact");
    play({box(L"was successfully compacted.", L"OK")});
    menu(L"Database", L"Repair");
    play({box(L"was successfully repaired.", L"OK")});
    shows(L"hello.wav=Also here;old.wav=From of old;");
}

TEST_CASE_FIXTURE(Window, "the list goes into the open mail; without one the user is told")
{
    AolHost host;
    aol() = {};
    aol().folder = host.folder();
    aol().version = 5;
    REQUIRE(connectAol());
    open();
    menu(L"Category", L"Print to E-Mail");
    play({box(L"unable to open an E-Mail window", L"OK")});
    const MailWindow mail = AOL_OpenEMail();
    REQUIRE(mail);
    menu(L"Category", L"Print to E-Mail");
    CHECK(waitFor(
        [&] { return textOf(mail.body).find(L"Print Wav Descriptions") != std::wstring::npos; }));
    CHECK(textOf(mail.body).find(L"Comments: Says hello") != std::wstring::npos);
    menu(L"Category", L"Print to E-Mail");
    play({box(L"already holds a text", L"No")});
}

TEST_CASE_FIXTURE(Window, "what the wav list asks of the descriptions")
{
    routeDescriptions();
    const WavDescriptions& routes = wavDescriptions();
    CHECK(routes.categories().size() == 3);
    REQUIRE(routes.find(L"HELLO.WAV"));
    CHECK(routes.find(L"HELLO.WAV")->comments == L"Says hello");
    CHECK_FALSE(routes.find(L"..\\hello.wav"));
    CHECK_FALSE(routes.editorOpen());
    CHECK(routes.createCategory(L"Mine"));
    TempDir sounds;
    replaceFile(sounds.file(L"x.wav"), std::string(200, 'x'));
    clsMP3 tag;
    tag.SetTitle(L"Tagged");
    tag.SaveTag(sounds.file(L"x.wav"));
    bool saved = false;
    postCall([&] { saved = routes.edit(sounds.file(L"x.wav"), L"Mine"); });
    play({dialog(kEdit, [](HWND shown) {
        CHECK(drive::text(field(shown, 1)) == L"Tagged");
        post(shown, L"OK");
    })});
    CHECK(saved);
    REQUIRE(routes.find(L"x.wav"));
    CHECK(routes.find(L"x.wav")->title == L"Tagged");
    open();
    CHECK(routes.editorOpen());
    wavDescriptions() = {};
}

TEST_CASE("the real program sends a described sound with its description")
{
    const Installation installed;
    Installation::putSetting(L"General", L"AutoCloseMsgBox", false);
    Installation::putSetting(L"Descriptions", L"SendToRoom", true);
    {
        clsDatabase db(installed.file(L"data"), {.message = [](const std::wstring&, int) {}});
        REQUIRE(db.Init());
        db.SetTable(L"AOL Sounds");
        REQUIRE(db.AddRecords({described(L"lion.wav", L"a lion")}).added == 1);
    }
    AolHost host;
    makeFolder(host.folder() + L"\\sounds");
    replaceFile(host.folder() + L"\\sounds\\lion.wav", wavFile(100));
    const Process velora = installed.start();
    const HWND panel = windowShowing(velora.id(), L"Velora Toolbar");
    REQUIRE(panel);
    host.enterRoom();
    REQUIRE(drive::press(panel, L"Wav List"));
    const HWND list = drive::window(L"Velora - Wav List");
    REQUIRE(drive::activate(list));
    drive::type(L"lion");
    REQUIRE(drive::until([&] { return drive::child(list, L"Count: 1") != nullptr; }));
    REQUIRE(drive::press(list, L"Send"));
    CHECK(drive::until([&] {
        return host.sent() == std::vector<std::wstring>{L"{S lion}", L"Descrip: a lion"};
    }));
}
