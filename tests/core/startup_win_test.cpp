// The real velora.exe, installed, started and answered as a user would, beside the stand-in for
// AOL.
#include "base/files.h"
#include "base/text.h"
#include "core/clsProcesses.h"
#include "core/modStartup.h"
#include "settings/SettingsStore.h"
#include "settings/clsRegistry.h"
#include "support/aolhost_win.h"
#include "support/denied_win.h"
#include "support/drive_win.h"
#include "support/install_win.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

/// Every box must be answered by the test, not by its own clock.
void keepBoxesOpen()
{
    Installation::putSetting(L"General", L"AutoCloseMsgBox", false);
}

bool answer(const Process& velora, std::wstring_view text, std::wstring_view button = L"OK")
{
    const HWND box = windowShowing(velora.id(), text);
    CHECK_MESSAGE(box != nullptr, "no box shows ", toUtf8(text));
    // A box that the window manager still moves may be missed; a user clicks again, too.
    for (int tries = 0; box && tries < 5; ++tries)
        if (drive::press(box, button) && drive::gone(box, 3000))
            return true;
    return box && drive::gone(box, 0);
}

/// Start-up is over when its last step has shown the toolbar.
bool started(const Installation& installed, const Process& velora)
{
    return windowShowing(velora.id(), L"Velora Toolbar") && velora.running()
           && Installation::setting(L"", L"AppPath") == RegValue(installed.folder());
}

/// Ends the AOL that Velora has started.
void endAol()
{
    clsProcesses processes;
    processes.GetProcessInformation();
    for (const wchar_t* name : {L"waol.exe", L"aol.exe"})
        if (const auto found = processes.find(name)) {
            const KernelHandle process(
                OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, found->id));
            TerminateProcess(process.get(), 0);
            WaitForSingleObject(process.get(), 10000);
        }
}

struct Scene {
    Installation installed;
    Scene() { keepBoxesOpen(); }
};

/// A process of another name: the test program, waiting to be ended.
struct Decoy {
    TempDir temp;
    std::wstring folder = temp.folder(L"decoy");
    Process process;

    explicit Decoy(const std::wstring& name)
    {
        const std::wstring path = folder + L"\\" + name;
        copyFile(buildFolder() + L"\\velora_tests.exe", path, true);
        process = Process(path, L"--no-skip --test-case=\"child: waits to be ended\"");
    }
};

} // namespace

TEST_CASE("child: waits to be ended" * doctest::skip())
{
    Sleep(60000);
}

TEST_CASE_FIXTURE(Scene, "a renamed program refuses to start; another case of its name does not")
{
    copyFile(installed.file(L"velora.exe"), installed.file(L"my~Ivelora.exe"), true);
    const Process renamed(installed.file(L"my~Ivelora.exe"), L"");
    CHECK(answer(renamed, L"renamed from velora.exe to my~Ivelora.exe."));
    CHECK(renamed.ended());

    MoveFileW(installed.file(L"velora.exe").c_str(), installed.file(L"x.exe").c_str());
    MoveFileW(installed.file(L"x.exe").c_str(), installed.file(L"VELORA.EXE").c_str());
    const Process upper(installed.file(L"VELORA.EXE"), L"LIVEUPDATE");
    CHECK(answer(upper, L"is installed."));
    CHECK(upper.ended());
}

TEST_CASE_FIXTURE(Scene, "opening a scheme file installs it, with and without quotes")
{
    const std::wstring file = installed.file(L"My nice fade.fde");
    replaceFile(file, "FadeNumber=2\r\ncolor0=255\r\ncolor1=65280\r\n");
    for (const std::wstring& arguments : {file, L"\"" + file + L"\""}) {
        const Process velora = installed.start(arguments);
        CHECK(answer(velora, L"Fade Scheme has been installed."));
        CHECK(velora.ended());
        CHECK(velora.exitCode() == 0);
    }
    CHECK(Installation::setting(L"Fader\\Schemes\\My nice fade", L"One")
          == RegValue(std::int32_t{255}));
    CHECK(fileExists(installed.file(L"Fader\\Schemes\\My nice fade.fde")));

    const Process bad = installed.start(L"\" -silent\"");
    CHECK(answer(bad, L"An error has occured and the Fade Scheme could not be installed."));
    CHECK(bad.ended());
}

TEST_CASE_FIXTURE(Scene, "the DECON patch is removed when the user says so")
{
    const Decoy decoy(L"decon.exe");
    replaceFile(decoy.folder + L"\\patch.dat", "x");
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.lpszClassName = L"DECONMAINWINDOW";
    RegisterClassW(&windowClass);
    const HWND window =
        CreateWindowW(L"DECONMAINWINDOW", L"", 0, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    {
        const Process velora = installed.start();
        CHECK(answer(velora, L"Would you like to uninstall the DECON patch now?", L"No"));
        CHECK(answer(velora, L"until the DECON patch is uninstalled."));
        CHECK(velora.ended());
        CHECK(fileExists(decoy.folder + L"\\patch.dat"));
    }
    {
        const Process velora = installed.start();
        CHECK(answer(velora, L"Would you like to uninstall the DECON patch now?", L"Yes"));
        CHECK(answer(velora, L"Velora will now uninstall the DECON Blue Screen Patch."));
        CHECK(answer(velora, L"Your computer will need to be restarted"));
        CHECK(velora.ended());
        CHECK_FALSE(fileExists(decoy.folder + L"\\patch.dat"));
    }
    DestroyWindow(window);
    UnregisterClassW(L"DECONMAINWINDOW", nullptr);
}

TEST_CASE_FIXTURE(Scene, "beside a running AOL everything is made ready, and AOL's end ends it")
{
    AolHost aol;
    Process velora = installed.start(L"-raiseerr");
    REQUIRE(started(installed, velora));
    for (const std::wstring& folder : programFolders())
        CHECK_MESSAGE(folderExists(installed.folder() + folder), toUtf8(folder));
    CHECK(installed.log().find("\tmodMain\tCommandLine\t0\tOrv Invoked Error\r\n")
          != std::string::npos);
    CHECK(Installation::setting(L"AOL Directory", L"AOL Sounds")
          == RegValue(aol.folder() + L"\\sounds"));
    clsRegistry type;
    type.ClassKey(HKEY_CLASSES_ROOT);
    type.SectionKey(L"Velora.InstallScheme\\shell\\open\\command");
    CHECK(type.Value() == RegValue(installed.file(L"velora.exe %1")));

    SUBCASE("closed by the user")
    {
        PostMessageW(aol.frame(), WM_CLOSE, 0, 0);
    }
    SUBCASE("killed")
    {
        aol.kill();
    }
    REQUIRE(aol.ended());
    CHECK(velora.ended());
    CHECK(velora.exitCode() == 0);
    CHECK_FALSE(fileExists(installed.file(L"velora-crash.txt")));
}

TEST_CASE_FIXTURE(Scene, "a second start shows the message and leaves the first alone")
{
    AolHost aol;
    const Process first = installed.start();
    REQUIRE(started(installed, first));
    const Process second = installed.start();
    CHECK(answer(second, L"Velora is already running!"));
    CHECK(second.ended());
    CHECK(first.running());
}

TEST_CASE_FIXTURE(Scene, "without AOL it starts AOL and waits for it")
{
    const AolHost aol({.run = false});
    Installation::putSetting(L"", L"AOL Path", aol.folder());
    Process velora = installed.start();
    CHECK(started(installed, velora));
    CHECK(FindWindowW(L"AOL Frame25", nullptr) != nullptr);
    endAol();
    CHECK(velora.ended());
    CHECK(velora.exitCode() == 0);
}

TEST_CASE_FIXTURE(Scene, "an AOL folder that is gone is asked for; Cancel ends the start")
{
    Installation::putSetting(L"", L"AOL Path", std::wstring(L"C:\\no such folder"));
    const Process velora = installed.start();
    CHECK(answer(velora, L"needs to know the location of your current AOL folder"));
    const HWND browse = windowShowing(velora.id(), L"Cancel");
    REQUIRE(browse);
    PostMessageW(browse, WM_COMMAND, IDCANCEL, 0);
    CHECK(answer(velora, L"requires a path to your AOL Directory to function properly."));
    CHECK(velora.ended());
}

TEST_CASE_FIXTURE(Scene, "bad files and settings do not keep it from starting")
{
    AolHost aol;
    SUBCASE("no main.idx")
    {
        deleteFile(aol.folder() + L"\\idb\\main.idx");
    }
    SUBCASE("a garbled main.idx with a name of 5,000 characters")
    {
        std::string garbage("\0\xFF\xFE", 3);
        garbage += std::string(1, '\0') + std::string(5000, 'A') + std::string(1, '\0');
        replaceFile(aol.folder() + L"\\idb\\main.idx", garbage);
    }
    SUBCASE("junk in the registry")
    {
        Installation::putSetting(L"", L"AppPath", std::int32_t{7});
        Installation::putSetting(L"", L"Transfer", std::wstring(5000, L'x'));
        Installation::putSetting(L"", L"AOL Path", std::int32_t{7});
        Installation::putSetting(L"Fader", L"Default", std::wstring(5000, L'\\'));
        Installation::putSetting(L"General", L"WavDetect", std::int32_t{-1});
    }
    SUBCASE("an AOL that hangs")
    {
        aol.command(L"hang 5000");
    }
    SUBCASE("a companion library that is none")
    {
        replaceFile(installed.file(L"dwspy36.dll"), "not a library");
    }
    const Process velora = installed.start();
    CHECK(started(installed, velora));
    CHECK_FALSE(fileExists(installed.file(L"velora-crash.txt")));
}

TEST_CASE_FIXTURE(Scene, "a program folder that takes no folders is told, and the start goes on")
{
    AolHost aol;
    // Whatever the rights of the user who runs the tests: no folder can be made where a file is.
    replaceFile(installed.file(L"data"), "in the way");
    const Process velora = installed.start();
    CHECK(answer(velora, L"cannot write to its program folder!"));
    CHECK(answer(velora, L"Database engine error!"));
    CHECK(started(installed, velora));
}

TEST_CASE_FIXTURE(Scene,
                  "a registry that may be neither read nor written gives a start with defaults")
{
    AolHost aol;
    const Denied denied(kProductKey, KEY_READ | KEY_SET_VALUE | KEY_CREATE_SUB_KEY);
    const Process velora = installed.start();
    CHECK(windowShowing(velora.id(), L"Velora Toolbar"));
    CHECK(velora.running());
    CHECK(installed.log().find("',Section: '',Key: 'AppPath' to value: '") != std::string::npos);
}

TEST_CASE_FIXTURE(Scene, "the end of the program is asked for, and takes the jukebox along on Yes")
{
    AolHost aol;
    const Process velora = installed.start();
    REQUIRE(started(installed, velora));
    const HWND toolbar = windowShowing(velora.id(), L"Velora Toolbar");
    const HWND jukebox = CreateWindowW(L"STATIC", L"Velora Jukebox", WS_OVERLAPPED, 0, 0, 10, 10,
                                       nullptr, nullptr, nullptr, nullptr);

    PostMessageW(toolbar, WM_CLOSE, 0, 0);
    CHECK(answer(velora, L"Are you sure you wish to exit Velora?", L"No"));
    PostMessageW(toolbar, WM_CLOSE, 0, 0);
    CHECK(answer(velora, L"Are you sure you wish to exit Velora?", L"Yes"));
    CHECK(answer(velora, L"Do you want to close the Velora Jukebox now?", L"Yes"));
    CHECK(velora.ended());
    CHECK(velora.exitCode() == 0);
    CHECK_FALSE(IsWindow(jukebox));
    // AOL is as it was.
    CHECK_FALSE(aol.ended(0));
    aol.enterRoom();
    aol.command(L"say SomeOne: still here");
    CHECK(aol.display().find(L"still here") != std::wstring::npos);
}
