// The wav list as a user works with it, beside a real AOL window: lists, finding, hearing, sending
// in every way, the sounds of others out of the whole library.
#include "sounds/frmWavs.h"

#include "base/files.h"
#include "base/text.h"
#include "core/modAOL.h"
#include "core/modMain.h"
#include "hook/aolSend.h"
#include "settings/Options.h"
#include "sounds/frmScan.h"
#include "sounds/frmWavCheck.h"
#include "sounds/modFavWavs.h"
#include "sounds/modPlayback.h"
#include "sounds/modSendSound.h"
#include "sounds/modSounds.h"
#include "sounds/modWavLibrary.h"
#include "support/answer_win.h"
#include "support/drive_win.h"
#include "support/imbench_win.h"
#include "support/steps_win.h"
#include "support/tempdir.h"
#include "support/toolbar_win.h"
#include "support/wavfile.h"
#include "ui/MessageLoop.h"

#include <doctest/doctest.h>
#include <shlobj.h>

using namespace velora;
using namespace velora::test;

namespace {

using Names = std::vector<std::wstring>;

/// A library of a user: AOL's sounds, a folder category "Zoo", a group "Mix", favourites.
struct Bench : ToolbarBench {
    ::TempDir zoo, other;
    std::wstring mix = groupFile(AppPath(), L"Mix Of The Test");
    HWND list = nullptr;

    Bench()
    {
        opt::General::AutoCloseMsgBox.set(false);
        opt::WavScan::MaxPerMinute.set(1000);
        addSound(L"hello.wav", 60000);
        addSound(L"zebra.wav", 60000);
        for (const wchar_t* name : {L"lion.wav", L"Tiger.wav"})
            replaceFile(zoo.file(name), wavFile(60000));
        replaceFile(other.file(L"roar.wav"), wavFile(60000));
        makeFolder(mix.substr(0, mix.rfind(L'\\')));
        deleteFile(favWavsFile());
        deleteFile(mix);
        addListEntries(mix, {other.file(L"roar.wav")});
        saveCategory({L"Zoo", zoo.path(), {}});
        saveCategory({L"Mix", {}, L"Mix Of The Test"});
        loadWavCategories();
        load();
    }
    ~Bench()
    {
        StopSound();
        wavDescriptions() = {};
        for (const std::wstring& file : {mix, favWavsFile()})
            for (const wchar_t* copy : {L"", L".1", L".2", L".3"})
                deleteFile(file + copy);
    }
    void openList()
    {
        frmWavs::openList();
        list = drive::window(L"Velora - Wav List");
        REQUIRE(list);
        REQUIRE(drive::activate(list));
    }
    bool shows(std::wstring_view text) const
    {
        return drive::until([&] { return drive::child(list, text) != nullptr; });
    }
    /// With the keyboard: Alt+L, then the first letter of the list's name.
    void chooseByKeys(std::wstring_view name)
    {
        REQUIRE(drive::activate(list));
        drive::key('L', {VK_MENU});
        drive::type(name.substr(0, 1));
        drive::key('F', {VK_MENU});
    }
    // After a message box the screen's focus is late at times: from here on without it.
    void choose(const std::wstring& name) const
    {
        const HWND combo = drive::child(list, L"ComboBox");
        const WPARAM index = static_cast<WPARAM>(
            SendMessageW(combo, CB_FINDSTRINGEXACT, 0, reinterpret_cast<LPARAM>(name.c_str())));
        SendMessageW(combo, CB_SETCURSEL, index, 0);
        SendMessageW(list, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(combo));
    }
    void find(const wchar_t* typed) const { SetWindowTextW(drive::child(list, L"Edit"), typed); }
    /// Opens one of the menus and types letters (and keys) into it.
    void menu(const wchar_t* button, std::initializer_list<WORD> keys) const
    {
        PostMessageW(drive::child(list, button), BM_CLICK, 0, 0);
        for (const WORD key : keys)
            PostMessageW(list, key >= 'A' ? WM_CHAR : WM_KEYDOWN, key, 0);
    }
    void drop(const Names& paths) const
    {
        std::wstring names;
        for (const std::wstring& path : paths)
            names.append(path).push_back(L'\0');
        names.push_back(L'\0');
        const HGLOBAL block = GlobalAlloc(GHND, sizeof(DROPFILES) + names.size() * sizeof(wchar_t));
        auto* const head = static_cast<DROPFILES*>(GlobalLock(block));
        head->pFiles = sizeof *head;
        head->fWide = TRUE;
        names.copy(reinterpret_cast<wchar_t*>(head + 1), names.size());
        GlobalUnlock(block);
        PostMessageW(list, WM_DROPFILES, reinterpret_cast<WPARAM>(block), 0);
    }
    bool sent(const Names& expected)
    {
        const bool came = drive::until([&] { return host.sent().size() >= expected.size(); });
        CHECK(host.sent() == expected);
        return came;
    }
    bool plays(std::wstring_view file)
    {
        return drive::until([&] { return playingSound().ends_with(file) && soundBusy(); });
    }
};

} // namespace

TEST_CASE("choose a category, find by typing, hear, and send in every way")
{
    Bench bench;
    bench.enterRoom(L"Town Square");
    bench.openList();
    bench.chooseByKeys(L"Zoo");
    CHECK(bench.shows(L"Count: 2"));
    // A new file shows by itself, one that goes goes.
    replaceFile(bench.zoo.file(L"bear.wav"), wavFile(100));
    CHECK(bench.shows(L"Count: 3"));
    deleteFile(bench.zoo.file(L"bear.wav"));
    CHECK(bench.shows(L"Count: 2"));

    // The arrows move in the list while the find has the focus.
    drive::key(VK_DOWN);
    CHECK(drive::until([] { return frmWavs::instance()->selectedPath().ends_with(L"lion.wav"); }));
    drive::key(VK_DOWN);
    CHECK(drive::until([] { return frmWavs::instance()->selectedPath().ends_with(L"Tiger.wav"); }));

    // Over all lists: it lies in the group.
    drive::type(L"roa");
    CHECK(bench.shows(L"Count: 1"));
    drive::key(VK_F2);
    CHECK(bench.plays(L"\\roar.wav"));
    drive::key(VK_F3);
    CHECK(drive::until([] { return playingSound().empty(); }));
    drive::key(VK_RETURN, {VK_CONTROL});
    Names sent = {L"{S roar}"};
    CHECK(bench.sent(sent));
    CHECK(bench.plays(L"\\roar.wav")); // the room shows it: it is heard, out of the group
    StopSound();

    opt::Glintune::Current.set(L"<<{%}>>");
    REQUIRE(drive::press(bench.list, L"Glintune"));
    REQUIRE(drive::press(bench.list, L"Send"));
    sent.push_back(L"<<{S roar}>>");
    CHECK(bench.sent(sent));
    // A style without a place for the sound gives way to the built-in one.
    opt::Glintune::Current.set(L"no place");
    REQUIRE(drive::press(bench.list, L"Send"));
    sent.push_back(L"- \u2013 \u2014\u2022\u00a4\u2022{S roar}\u2022\u00a4\u2022\u2014 \u2013 -");
    CHECK(bench.sent(sent));
    CHECK(opt::Glintune::Current.get() == kBuiltInGlintune);
    REQUIRE(drive::press(bench.list, L"Send Plain"));
    sent.push_back(L"{S roar}");
    CHECK(bench.sent(sent));

    // Faded, though only sounds fade; the description comes after it, not with it.
    opt::Fader::On.set(true);
    opt::Fader::FadeWavOnly.set(true);
    wavDescriptions().find = [](const std::wstring& file) -> std::optional<WavDescription> {
        CHECK(file == L"roar.wav");
        WavDescription description;
        description.comments = L"a lion";
        return description;
    };
    opt::Descriptions::SendToRoom.set(true);
    REQUIRE(drive::press(bench.list, L"Send"));
    REQUIRE(drive::until([&] { return bench.host.sent().size() == sent.size() + 1; }));
    const std::wstring faded = bench.host.sent().back();
    CHECK(faded.find(L"<FONT COLOR=#") != faded.npos);
    CHECK(faded.find(L"{S roar}") != faded.npos);
    REQUIRE(drive::until([&] { return bench.host.sent().size() == sent.size() + 2; }));
    CHECK(bench.host.sent().back().find(L"<FONT COLOR=#") != faded.npos);
    opt::Fader::On.set(false);
    opt::Fader::FadeWavOnly.set(false);
    // What the user has begun to type stays.
    const HWND input = bench.host.inputWindow();
    REQUIRE(setAolText(input, L"begun"));
    REQUIRE(drive::press(bench.list, L"Glintune"));
    REQUIRE(drive::press(bench.list, L"Send"));
    REQUIRE(drive::until([&] { return bench.host.sent().size() == sent.size() + 4; }));
    CHECK(bench.host.sent().back() == L"Descrip: a lion");
    CHECK(drive::until([&] { return aolText(input) == std::wstring(L"begun"); }));
    opt::Descriptions::SendToRoom.set(false);

    // With an instant message in front of AOL the sound goes there.
    const std::size_t before = bench.host.sent().size();
    bench.host.command(L"sendim Rose3");
    HWND im = nullptr;
    REQUIRE(waitFor([&] {
        return (im = childOfClass(bench.host.document(L"Send Instant Message"), L"RICHCNTL"))
               != nullptr;
    }));
    REQUIRE(drive::press(bench.list, L"Send Plain"));
    CHECK(drive::until([&] { return aolText(im) == std::wstring(L"{S roar}"); }));
    CHECK(bench.host.sent().size() == before);
}

TEST_CASE("sounds that others say come from every list; hostile entries open nothing")
{
    Bench bench;
    bench.addSound(L"..\\outside.wav", 60000);
    const std::wstring outside = bench.host.folder() + L"\\sounds\\..\\outside.wav";
    replaceFile(favWavsFile(), toUtf8(L"evil\t" + outside
                                      + L"\r\nevil\t\\\\localhost\\x\\evil.wav\r\n"
                                        L"evil\tC:\\CON.wav\r\nevil\t"
                                      + bench.zoo.file(L"lion.wav")
                                      + L":x.wav\r\nno tab\r\n\t\r\nevil.wav\t\r\n"));
    bench.enterRoom(L"Town Square");
    const auto hears = [&](const wchar_t* line, const wchar_t* file) {
        StopSound();
        bench.host.command(std::wstring(L"say Joe Smith: ") + line);
        CHECK(bench.plays(file));
    };
    hears(L"listen {S LION} all", L"\\LION.wav");
    hears(L"{s roar}", L"\\roar.wav");
    StopSound();
    bench.host.command(L"say Mallory: {S evil}");
    bench.host.command(L"say Mallory: {S ..\\outside}");
    hears(L"{S hello}", L"\\hello.wav");
    CHECK(bench.played == Names{L"LION.wav", L"roar.wav", L"hello.wav"});
    StopSound();

    // They are listed, but not played: the user is asked whether the entry is to go.
    bench.openList();
    bench.choose(L"FavWavs");
    CHECK(bench.shows(L"Count: 4"));
    const std::string before = readFile(favWavsFile()).value_or("");
    bench.find(L"evil");
    {
        Answer keeps(L"No", L"Velora - Wav List", L"is no longer valid.");
        bench.menu(L"Sound", {'P'});
        CHECK(drive::until([&] { return keeps.came(); }));
        CHECK(keeps.said(L"Would you like to remove this wav reference from this wav group?"));
    }
    CHECK(readFile(favWavsFile()) == before);
    CHECK(playingSound().empty());
}

TEST_CASE("categories are made, filled, renamed and deleted")
{
    Bench bench;
    bench.openList();
    constexpr wchar_t kList[] = L"Velora - Wav List", kCategory[] = L"Velora - Category";
    // A group, by keys: its name must be its own.
    Steps({{L"Velora - New Category",
            L"custom group",
            L"OK",
            {},
            L"I want to create a new custom group that I can add sound files to."},
           {kCategory, L"Enter a name for this new Category", L"OK", L"zoo"},
           {kCategory, L"Category name already exists!"},
           {kCategory, L"Enter a name for this new Category", L"OK", L"Birds"}},
          [&] { bench.menu(L"Category", {'N'}); });
    CHECK(bench.shows(L"Count: 0"));
    const std::wstring birds = groupFile(AppPath(), L"Birds");
    CHECK(readFile(birds) == std::string());

    // Files and folders that are dropped become entries, each once.
    replaceFile(bench.other.file(L"notes.txt"), "x");
    bench.drop({bench.other.path(), bench.zoo.file(L"lion.wav"), bench.zoo.file(L"lion.wav")});
    CHECK(bench.shows(L"Count: 2"));
    CHECK(bench.shows(L"2 sounds added to Birds"));
    Steps({{kList, L"There are no files in this directory to add!"}},
          [&] { bench.drop({bench.other.file(L"notes.txt")}); });

    // A file that has gone: the entry is grey, the question removes it.
    deleteFile(bench.other.file(L"roar.wav"));
    bench.find(L"roar");
    Steps({{kList, L"is no longer valid.", L"Yes"}}, [&] { bench.menu(L"Sound", {'P'}); });
    CHECK(readListFile(birds, true).size() == 1);

    // By its menu: renamed, then deleted, which leaves the files.
    bench.find(L"");
    Steps({{kCategory, L"Below is the currently selected Category.", L"OK", L"Raptors"}},
          [&] { bench.menu(L"Category", {'E'}); });
    CHECK(drive::until([] { return wavCategories()[1].name == L"Raptors"; }));
    CHECK(bench.shows(L"Count: 1"));
    Steps({{kList, L"This action will not delete actual files.", L"Yes"}},
          [&] { bench.menu(L"Category", {'D'}); });
    CHECK(drive::until([] { return wavCategories().size() == 2; }));
    CHECK(readListFile(birds, true).size() == 1);
    Steps({{kList, L"No Category has been selected for deletion."}},
          [&] { bench.menu(L"Category", {'D'}); });
    for (const wchar_t* copy : {L"", L".1", L".2", L".3"})
        deleteFile(birds + copy);
}

TEST_CASE("a file is attached, deleted and copied, the list saved and written into a mail")
{
    Bench bench;
    bench.openList();
    constexpr wchar_t kList[] = L"Velora - Wav List";
    Steps({{kList, L"No file selected to attach to an E-Mail."}},
          [] { drive::key('M', {VK_CONTROL}); });
    // Without a mail there is nowhere to write to.
    Steps({{kList, L"Velora was unable to open an E-Mail window."}},
          [&] { bench.menu(L"List", {'W'}); });
    bench.choose(L"Zoo");
    CHECK(bench.shows(L"Count: 2"));
    bench.find(L"tiger");
    bench.menu(L"Sound", {'M'});
    CHECK(bench.shows(L"tiger is attached to a new mail"));
    const HWND mail = bench.host.document(L"Write Mail");
    REQUIRE(mail);
    bench.find(L"");
    // What is written in it stays.
    REQUIRE(setAolText(childOfClass(mail, L"RICHCNTL"), L"Dear Joe,"));
    bench.menu(L"List", {'W'});
    CHECK(bench.shows(L"The list is in your mail"));
    const std::wstring body = aolText(childOfClass(mail, L"RICHCNTL")).value_or(L"");
    CHECK(body.starts_with(L"Dear Joe,<HTML>"));
    CHECK(body.find(L"Zoo</FONT>") != body.npos);
    CHECK(body.find(L"<B>tiger</B>") != body.npos);

    Steps({{kList, L"Please enter a filename", L"OK", L"..\\my list"}},
          [&] { bench.menu(L"List", {'S'}); });
    const std::wstring text = bench.host.folder() + L"\\%2E.%5Cmy list.txt";
    CHECK(drive::until([&] { return fileExists(text); }));
    CHECK(readFile(text).value_or("").find("lion") != std::string::npos);

    // Copied by the menu: "FavWavs" is the first of the targets.
    bench.find(L"tiger");
    bench.menu(L"Sound", {'C', VK_DOWN, VK_RETURN});
    CHECK(bench.shows(L"1 sound added to Mix"));
    // Into the Recycle Bin, not before the user says so.
    bench.find(L"tiger");
    Steps({{kList, L"Do you wish to send the above file to the Windows Recycle Bin?", L"Preview"},
           {kList, L"Delete Tiger.wav ?", L"Cancel"}},
          [&] { bench.menu(L"Sound", {'D'}); });
    CHECK(fileExists(bench.zoo.file(L"Tiger.wav")));
    CHECK(bench.plays(L"\\Tiger.wav"));
    Steps({{kList, L"Delete Tiger.wav ?", L"Delete"}}, [&] { bench.menu(L"Sound", {'D'}); });
    CHECK(drive::until([&] { return !fileExists(bench.zoo.file(L"Tiger.wav")); }));
}

TEST_CASE("the wav check answers for a known and an unknown sound")
{
    Bench bench;
    static constexpr wchar_t kCheck[] = L"WavCheck";
    wavDescriptions().find = [](const std::wstring&) -> std::optional<WavDescription> {
        WavDescription description;
        description.title = L"The King";
        description.comments = L"it roars";
        return description;
    };
    opt::Descriptions::IncludeTitle.set(true);
    const auto answer = [] {
        const HWND window = FindWindowW(nullptr, kCheck);
        std::wstring texts;
        for (const HWND child : drive::children(window))
            texts += drive::text(child) + L"\n";
        return texts;
    };
    const auto says = [&](std::wstring_view part) {
        return drive::until([&] { return answer().find(part) != std::wstring::npos; });
    };
    frmWavCheck::check(L"LION", true);
    CHECK(says(L"LION is in your list Zoo."));
    CHECK(says(L"Title: The King"));
    CHECK(says(L"Comments: it roars"));
    REQUIRE(drive::press(drive::window(kCheck), L"Preview"));
    CHECK(bench.plays(L"\\LION.wav"));
    StopSound();

    // An unknown one, with a name that is markup: a message says so, unless it is not wanted.
    Steps({{L"Velora - WavCheck", L"~CRnope not found!"}},
          [] { postCall([] { frmWavCheck::check(L"~CRnope", true); }); });
    CHECK(says(L"Velora did not find this wav in any of your wav categories."));
    opt::WavScan::NoPrompt.set(true);
    frmWavCheck::check(L"..\\..\\boot", true);
    CHECK(says(L"..\\..\\boot not found!"));
    const HWND window = drive::window(kCheck);
    REQUIRE(drive::press(window, L"Close"));
    REQUIRE(drive::gone(window));

    // What members say, when that is wanted: known sounds bring no window up.
    opt::WavScan::Active.set(true);
    bench.enterRoom(L"Town Square");
    bench.host.command(L"say Ann: {S lion}");
    bench.host.command(L"say Ann: {S ..\\\\..\\\\evil}");
    CHECK(bench.hears(L"Ann|{S ..\\..\\evil}"));
    CHECK(FindWindowW(nullptr, kCheck) == nullptr);
    bench.host.command(L"say Ann: {S never heard}");
    CHECK(says(L"never heard not found!"));
}

TEST_CASE(
    "descriptions stand in columns or under the list, and are edited once their table is there")
{
    Bench bench;
    std::vector<std::wstring> tables = {L"AOL Sounds"}, edited;
    WavDescriptions& descriptions = wavDescriptions();
    descriptions.find = [&](const std::wstring& file) -> std::optional<WavDescription> {
        if (file != L"Tiger.wav")
            return std::nullopt;
        WavDescription description;
        description.comments = edited.empty() ? L"striped & wild" : L"edited";
        return description;
    };
    descriptions.categories = [&] { return tables; };
    descriptions.createCategory = [&](const std::wstring& name) {
        tables.push_back(name);
        return true;
    };
    descriptions.edit = [&](const std::wstring& path, const std::wstring& table) {
        edited.push_back(table + L"|" + path);
        return true;
    };
    bool open = true;
    descriptions.editorOpen = [&] { return open; };
    opt::Descriptions::ShowAs.set(L"Columns");
    bench.openList();
    bench.choose(L"Zoo");
    const auto cell = [&](int row, int column) {
        wchar_t text[100] = L"";
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = 100;
        SendMessageW(drive::child(bench.list, WC_LISTVIEWW), LVM_GETITEMTEXTW,
                     static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return std::wstring(text);
    };
    CHECK(cell(0, 2).empty());
    CHECK(cell(1, 0) == L"tiger");
    CHECK(cell(1, 2) == L"striped & wild");
    opt::Descriptions::ShowAs.set(L"Line");
    bench.find(L"tig");
    CHECK(bench.shows(L"Comments: striped & wild"));

    // Under the mouse, in a balloon of its own.
    opt::Descriptions::ShowAs.set(L"ToolTip");
    bench.find(L"");
    RECT row{LVIR_BOUNDS, 0, 0, 0};
    const HWND rows = drive::child(bench.list, WC_LISTVIEWW);
    SendMessageW(rows, LVM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&row));
    POINT at{row.left + 30, row.top + 5};
    ClientToScreen(rows, &at);
    SetCursorPos(at.x, at.y);
    SendMessageW(rows, WM_MOUSEHOVER, 0, 0);
    const auto tip = [] {
        for (HWND window = nullptr;
             (window = FindWindowExW(nullptr, window, TOOLTIPS_CLASSW, nullptr)) != nullptr;) {
            DWORD process = 0;
            GetWindowThreadProcessId(window, &process);
            if (process == GetCurrentProcessId() && IsWindowVisible(window))
                return true;
        }
        return false;
    };
    CHECK(drive::until(tip));
    SendMessageW(rows, WM_MOUSELEAVE, 0, 0);
    CHECK_FALSE(tip());
    opt::Descriptions::ShowAs.set(L"Line");
    wavDescriptionsChanged();
    bench.find(L"tig");

    constexpr wchar_t kList[] = L"Velora - Wav List";
    const auto edit = [&](const wchar_t* says, const wchar_t* answer) {
        Steps({{kList, says, answer}}, [&] { bench.menu(L"Sound", {'E'}); });
    };
    edit(L"The Descriptions Editor is already open.", L"OK");
    open = false;
    edit(L"The category Zoo does not exist in your Wav Descriptions database.", L"No");
    CHECK(edited.empty());
    edit(L"Would you like to create this category now?", L"Yes");
    CHECK(drive::until([&] { return edited == Names{L"Zoo|" + bench.zoo.file(L"Tiger.wav")}; }));
    CHECK(bench.shows(L"Comments: edited"));
}

TEST_CASE("a scan of a directory finds sounds and makes a category of them")
{
    Bench bench;
    const std::wstring deep = bench.zoo.folder(L"deep\\er");
    replaceFile(deep + L"\\owl.mp3", "x");
    frmScan::openScan();
    const HWND scan = drive::window(L"Velora - Scan Hard Drive for Sounds");
    REQUIRE(scan);
    Form::find<frmScan>()->addRoot(bench.zoo.path());
    REQUIRE(drive::press(scan, L"Search Hard Drive for Sound Files"));
    CHECK(
        drive::until([&] { return drive::child(scan, L"3 sounds in 2 directories.") != nullptr; }));
    // The first of them is a category already, the other becomes one by its name.
    const HWND found = drive::child(scan, WC_LISTVIEWW);
    LVITEMW all{};
    all.state = all.stateMask = LVIS_SELECTED;
    SendMessageW(found, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&all));
    REQUIRE(drive::press(scan, L"Make Categories"));
    CHECK(drive::until([] { return wavCategories().size() == 3; }));
    CHECK(wavCategories()[0] == WavCategory{L"er", deep, {}});

    // The whole disk takes longer: Cancel ends it.
    Form::find<frmScan>()->addRoot(L"Z:\\usr");
    REQUIRE(drive::press(scan, L"Search Hard Drive for Sound Files"));
    REQUIRE(drive::press(scan, L"Cancel"));
    CHECK(drive::until([&] { return drive::child(scan, L"Close") != nullptr; }));
    CHECK(IsWindow(scan));
}

TEST_CASE("with the IM manager before AOL a sound goes into the IM that it shows")
{
    IMBench im;
    im.host.enterRoom(L"Town Square");
    REQUIRE(im.arrive(L"Rose3", L"hi"));
    im.type(L"Rose3", L"listen: ");
    frmTabIM* const manager = frmTabIM::instance();
    REQUIRE(manager);
    manager->bringToFront();
    CHECK(drive::until([] { return soundEditInFront() != nullptr; }));
    REQUIRE(sendSound({L"{S lion}", {}, true}));
    CHECK(drive::until([] {
        const auto text = aolText(IMBench::session(L"Rose3")->parts().reply).value_or(L"");
        return text.find(L"{S lion}") != text.npos && text.find(L"listen: ") != text.npos;
    }));
    CHECK(im.host.sent().empty());
    manager->hideQuietly();
    REQUIRE(AOL_FindChat());
    REQUIRE(sendSound({L"{S lion}", {}, true}));
    CHECK(drive::until([&] { return im.host.sent() == Names{L"{S lion}"}; }));
}
