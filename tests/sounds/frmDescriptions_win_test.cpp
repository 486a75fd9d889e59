// The descriptions' window, used with keyboard and mouse, over the engine beside the program.
#include "sounds/frmDescriptions.h"

#include "base/files.h"
#include "base/text.h"
#include "core/modAOL.h"
#include "core/modMain.h"
#include "sounds/WavDescriptions.h"
#include "sounds/clsMP3.h"
#include "sounds/modDescriptions.h"
#include "support/aolhost_win.h"
#include "support/drive_win.h"
#include "support/form_scope_win.h"
#include "support/install_win.h"
#include "support/steps_win.h"
#include "support/tempdir.h"
#include "support/wavfile.h"
#include "ui/MessageLoop.h"

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
struct Window : FormScope {
    Window()
    {
        clean();
        REQUIRE(wavDatabase().Init());
        wavDatabase().SetTable(L"AOL Directory");
        wavDatabase().AddRecords(
            {described(L"hello.wav", L"Says hello"), described(L"bye.mp3", L"Says good bye")});
    }
    ~Window() { clean(); }
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
    void press(const wchar_t* button) const
    {
        const HWND found = drive::child(window, button);
        REQUIRE(drive::until([&] { return IsWindowEnabled(found) != 0; }));
        PostMessageW(found, BM_CLICK, 0, 0);
    }

    HWND window = nullptr, list = nullptr;
};

/// Answers the box that says `part`.
Step box(std::wstring part, const wchar_t* button = L"OK")
{
    return {kCaption, std::move(part), button};
}

} // namespace

TEST_CASE_FIXTURE(Window, "by keyboard alone: new, edit, search, delete; Esc closes; remembered")
{
    open();
    shows(L"bye.mp3=Says good bye;hello.wav=Says hello;");
    Steps({byKeys(kNew, [] { drive::key(VK_RETURN); }),
           box(L"Please enter the name of the sound file"),
           byKeys(kNew,
                  [] {
                      drive::type(L"new.wav");
                      for (int tab = 0; tab < 5; ++tab)
                          drive::key(VK_TAB);
                      drive::type(L"Brand new");
                      drive::key(VK_RETURN);
                  })},
          [] { drive::key('N', {VK_CONTROL}); });
    shows(L"bye.mp3=Says good bye;hello.wav=Says hello;new.wav=Brand new;");

    drive::key(VK_HOME); // the new one is selected; the list has the focus
    Steps({byKeys(kEdit,
                  [] {
                      drive::key('T', {VK_MENU});
                      drive::type(L"Farewell");
                      drive::key('C', {VK_MENU});
                      drive::type(L"Bye");
                      drive::key(VK_RETURN);
                  })},
          [] { drive::key(VK_RETURN); });
    shows(L"bye.mp3=Bye;hello.wav=Says hello;new.wav=Brand new;");
    REQUIRE(wavDatabase().IsMatch(L"BYE.mp3"));
    CHECK(wavDatabase().Title() == L"Farewell");

    drive::key('F', {VK_CONTROL});
    drive::type(L"HELLO");
    shows(L"hello.wav=Says hello;");
    drive::key(VK_TAB);
    drive::key(VK_TAB); // over "In all categories" into the list
    drive::key(VK_SPACE);
    const auto deletes = [] { drive::key(VK_DELETE); };
    Steps({box(L"delete the record for hello.wav?", L"No")}, deletes);
    shows(L"hello.wav=Says hello;");
    Steps({box(L"delete the record for hello.wav?", L"Yes")}, deletes);
    shows(L"");
    CHECK_FALSE(wavDatabase().IsMatch(L"hello.wav"));

    drive::key(VK_ESCAPE);
    CHECK(drive::gone(window));
    CHECK(readSetting(L"Descriptions", L"Position", L"") != L"");
}

TEST_CASE_FIXTURE(Window, "a description moves to another category, not to its own")
{
    open();
    const auto moveTo = [&](const wchar_t* category, std::vector<Step> then) {
        select(0);
        then.insert(then.begin(), {.caption = kMove, .act = [=](HWND shown) {
                                       SendMessageW(drive::child(shown, L"ListBox"),
                                                    LB_SELECTSTRING, static_cast<WPARAM>(-1),
                                                    reinterpret_cast<LPARAM>(category));
                                       PostMessageW(drive::child(shown, L"OK"), BM_CLICK, 0, 0);
                                   }});
        Steps(then, [&] { press(L"Move..."); });
    };
    moveTo(L"AOL Directory", {box(L"You cannot move a description to the category it already")});
    moveTo(L"AOL Sounds", {});
    shows(L"hello.wav=Says hello;");
    choose(L"AOL Sounds");
    shows(L"bye.mp3=Says good bye;");
    // The other category has one of that name: both stay.
    wavDatabase().SetTable(L"AOL Directory");
    wavDatabase().AddRecords({described(L"BYE.mp3", L"another")});
    moveTo(L"AOL Directory", {box(L"already holds a description")});
    shows(L"bye.mp3=Says good bye;");

    SendMessageW(drive::child(window, L"In all categories"), BM_CLICK, 0, 0);
    shows(L"BYE.mp3=another;bye.mp3=Says good bye;hello.wav=Says hello;");
}

TEST_CASE_FIXTURE(Window, "categories are made, renamed and deleted")
{
    open();
    const auto named = [&](const wchar_t* item, const wchar_t* name, std::vector<Step> then) {
        then.insert(then.begin(), {.caption = kCaption, .part = L"ategory", .type = name});
        Steps(then, [&] { menu(L"Category", item); });
    };
    named(L"New...", L"My Sounds", {});
    CHECK(wavDatabase().GetTables().size() == 4);
    shows(L"");
    named(L"New...", L"MSysMine", {box(L"cannot be made")});
    named(L"Rename...", L"AOL Sounds", {box(L"cannot be made")});
    named(L"Rename...", L"Our Sounds", {});
    CHECK(drive::text(drive::child(window, WC_COMBOBOXW)) == L"Our Sounds");
    choose(L"AOL Directory");
    Steps({box(L"delete the Descriptions Category AOL Directory?", L"Yes")},
          [&] { menu(L"Category", L"Delete..."); });
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
    const auto from = [](const std::wstring& folder) {
        return Step{.caption = kFill, .type = folder};
    };
    const auto fill = [&] { menu(L"Category", L"Fill from Folder..."); };
    Steps({from(L"C:\\no such folder"), box(L"does not exist"), from(sounds.path()),
           Step{.caption = kProcessing, .press = L"Cancel"},
           box(L"What was done until then stays")},
          fill);
    CHECK(wavDatabase().GetRecordCount(L"AOL Sounds") < 600);
    Steps({from(sounds.path()), box(L"Added:")}, fill);
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
    constexpr wchar_t kOffer[] = L"has detected Wav Description files from an older version";
    Steps({box(kOffer, L"No")}, [&] { open(); });
    CHECK(fileExists(file));
    Steps({box(kOffer, L"Yes"), box(L"Added: 2 descriptions")},
          [&] { menu(L"Database", L"Import Older Descriptions..."); });
    wavDescriptions().changed = nullptr;
    shows(L"hello.wav=Also here;old.wav=From of old;");
    CHECK_FALSE(fileExists(file));
    CHECK(fileExists(file + L".imported"));
    CHECK(told > 0);
    // The first category still answers for the name that both hold.
    REQUIRE(wavDatabase().IsMatch(L"hello.wav"));
    CHECK(wavDatabase().Comments() == L"Says hello");

    Steps({box(L"was successfully compacted.")}, [&] { menu(L"Database", L"Compact"); });
    Steps({box(L"was successfully repaired.")}, [&] { menu(L"Database", L"Repair"); });
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
    const auto print = [&] { menu(L"Category", L"Print to E-Mail"); };
    Steps({box(L"unable to open an E-Mail window")}, print);
    const MailWindow mail = AOL_OpenEMail();
    REQUIRE(mail);
    print();
    CHECK(waitFor(
        [&] { return textOf(mail.body).find(L"Print Wav Descriptions") != std::wstring::npos; }));
    CHECK(textOf(mail.body).find(L"Comments: Says hello") != std::wstring::npos);
    Steps({box(L"already holds a text", L"No")}, print);
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
    Steps({{.caption = kEdit,
            .act =
                [](HWND shown) {
                    CHECK(drive::child(shown, L"Tagged"));
                    PostMessageW(drive::child(shown, L"OK"), BM_CLICK, 0, 0);
                }}},
          [&] { postCall([&] { saved = routes.edit(sounds.file(L"x.wav"), L"Mine"); }); });
    CHECK(drive::until([&] { return saved; }));
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
