// AOL at start-up: its folder, edition, version and screen names, and starting it.
#include "base/files.h"
#include "base/handles.h"
#include "base/product.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/clsProcesses.h"
#include "core/modAOL.h"
#include "core/modAOLRules.h"
#include "core/modCaptions.h"
#include "core/modFindChild.h"
#include "core/modMain.h"
#include "core/modScreenNames.h"
#include "settings/Options.h"
#include "ui/FolderDialog.h"
#include "ui/MessageLoop.h"

#include <shellapi.h>

#include <algorithm>

namespace velora {

namespace {

constexpr char kModule[] = "modAOL";
constexpr DWORD kFrameLimit = 60000;
constexpr DWORD kSignOnLimit = 60000;
constexpr std::uint64_t kLongestIndex = 16u << 20;

bool refuse(const std::wstring& message)
{
    MsgBoxEx(message, kMsgCritical);
    return false;
}

bool refuseNoWindow()
{
    return refuse(L"~B~CRAmerica Online window not found!~B~CN~N ~NAborting startup.");
}

bool holdsAol(const std::wstring& folder)
{
    return !folder.empty() && fileExists(folder + L"\\aol.exe");
}

bool runAol(const std::wstring& folder)
{
    // The shell asks for more rights where AOL wants them, as a double click would.
    SHELLEXECUTEINFOW run{};
    run.cbSize = sizeof run;
    const std::wstring program = folder + L"\\aol.exe";
    run.fMask = SEE_MASK_FLAG_NO_UI;
    run.lpFile = program.c_str();
    run.lpDirectory = folder.c_str();
    run.nShow = SW_SHOWNORMAL;
    return ShellExecuteExW(&run) != 0;
}

/// AOL asks for a name, or somebody is signed on already.
bool signOnShown()
{
    const HWND mdi = AOLMDI();
    return FindChildByTitle(mdi, signOnCaption(aol().edition))
           || FindChildByTitle(mdi, welcomePrefix(aol().edition)) || IsAOLOnline();
}

/// A folder as launch32.dll takes it: in the system's code page, by its short name where that page
/// lacks a character.
std::string ansiPath(const std::wstring& path)
{
    const auto convert = [](const std::wstring& from, BOOL& lossy) {
        std::string to(from.size() * 2 + 1, '\0');
        lossy = FALSE;
        const int length =
            WideCharToMultiByte(CP_ACP, 0, from.c_str(), static_cast<int>(from.size()), to.data(),
                                static_cast<int>(to.size()), nullptr, &lossy);
        to.resize(static_cast<std::size_t>(std::max(length, 0)));
        return to;
    };
    BOOL lossy = FALSE;
    const std::string direct = convert(path, lossy);
    wchar_t shorter[MAX_PATH];
    const DWORD length = lossy ? GetShortPathNameW(path.c_str(), shorter, MAX_PATH) : 0;
    if (length == 0 || length >= MAX_PATH)
        return direct;
    return convert(std::wstring(shorter, length), lossy);
}

Library loadLaunch32()
{
    wchar_t system[MAX_PATH];
    const UINT length = GetSystemDirectoryW(system, MAX_PATH);
    Library library(LoadLibraryW((AppPath() + L"\\launch32.dll").c_str()));
    if (!library && length && length < MAX_PATH)
        library.reset(LoadLibraryW((std::wstring(system, length) + L"\\launch32.dll").c_str()));
    return library;
}

std::wstring askVersion(const std::wstring& folder)
{
    using AOLGetVersion = int(__stdcall*)(const char* folder, char* buffer);
    const Library library = loadLaunch32();
    if (!library)
        return {};
    const auto ask = reinterpret_cast<AOLGetVersion>(
        reinterpret_cast<void*>(GetProcAddress(library.get(), "AOLGetVersion")));
    if (!ask)
        return {};
    // The answer has three characters and no end of its own.
    char answer[4] = {};
    ask(ansiPath(folder).c_str(), answer);
    answer[3] = 0;
    return from1252(answer);
}

} // namespace

bool AOLIsRunning()
{
    return trap(
        kModule,
        [] {
            const HWND frame = AOLWindow();
            if (!frame)
                return refuseNoWindow();
            DWORD process = 0;
            GetWindowThreadProcessId(frame, &process);
            const std::wstring folder = folderOfAol(clsProcesses::FilePath(process));
            if (!folder.empty())
                aol().folder = folder;
            if (IsIconic(frame))
                ShowWindowAsync(frame, SW_RESTORE);
            return true;
        },
        false);
}

bool GetAOLPath()
{
    return trap(
        kModule,
        [] {
            const std::wstring name = kProductName;
            std::wstring folder = aol().folder;
            do {
                const int answer =
                    MsgBoxEx(name
                                 + L" needs to know the location of your current AOL folder so it "
                                   L"can start AOL for you.~N ~NPlease click ~BOK~B to choose your "
                                   L"AOL folder now!",
                             kMsgOKCancel | kMsgInformation);
                folder =
                    answer == kAnswerOK
                        ? chooseFolder(GetActiveWindow(), L"The folder of your AOL:", folder, false)
                        : std::wstring();
                if (folder.empty())
                    return refuse(name
                                  + L" requires a path to your AOL Directory to function "
                                    L"properly.~N ~NAborting Startup!");
            } while (!holdsAol(folder) && !messageLoopQuits());
            aol().folder = folder;
            writeSetting(L"", L"AOL Path", folder);
            return true;
        },
        false);
}

bool StartAOL()
{
    return trap(
        kModule,
        [] {
            // A folder that was remembered may be gone by now.
            if (!holdsAol(aol().folder) && !GetAOLPath())
                return false;
            DetectAolEdition();
            if (!AOLWindow()) {
                if (!runAol(aol().folder)
                    || !waitUntil([] { return AOLWindow() != nullptr; }, kFrameLimit))
                    return refuseNoWindow();
            }
            if (waitUntil(signOnShown, kSignOnLimit))
                return true;
            const std::wstring name = kProductName;
            return refuse(name
                          + L" timed out waiting for America Online to load.~N ~NPlease start "
                            L"America Online first and then start "
                          + name + L".");
        },
        false);
}

bool GetAOLVersion()
{
    return trap(
        kModule,
        [] {
            const int version = majorVersion(askVersion(aol().folder));
            if (isSupportedVersion(version)) {
                aol().version = version;
                return true;
            }
            if (version == 0)
                return refuse(L"~B~CRCannot determine AOL version.~B~CN~N ~NAborting Startup.");
            return refuse(L"~B~CRAOL" + std::to_wstring(version)
                          + L" Detected!~B~CN~N ~NThis version of " + kProductName
                          + L" is not compatible with this version of AOL.");
        },
        false);
}

void DetectAolEdition()
{
    trap(kModule, [] {
        aol().edition = DetectEdition([](std::wstring_view marker) {
            return fileExists(aol().folder + L"\\" + std::wstring(marker));
        });
    });
}

bool MSNCheck()
{
    return trap(
        kModule,
        [] {
            const auto index = readFile(aol().folder + L"\\idb\\main.idx", kLongestIndex);
            std::vector<std::wstring> names =
                index ? screenNamesInIndex(*index, aol().edition) : std::vector<std::wstring>();
            if (onlyNewUser(names))
                return refuse(std::wstring(kProductName)
                              + L" has detected that the version of AOL you wish to use does not "
                                L"have an account installed (e.g. - ~B~CBNew User~B~CN)~N ~NYou "
                                L"must have an AOL account registered before attempting to load "
                              + kProductName + L".");
            std::erase_if(names, [](const std::wstring& entry) { return onlyNewUser({entry}); });
            aol().masterScreenName = names.empty() ? signedOnScreenName() : names.front();
            aol().screenNames = std::move(names);
            return true;
        },
        // An unreadable installation is no reason not to start.
        true);
}

std::wstring waitForSignOn(DWORD limitMs)
{
    return trap(
        kModule,
        [&] {
            std::wstring name;
            waitUntil(
                [&] {
                    name = signedOnScreenName();
                    return !name.empty() || !AOLWindow();
                },
                limitMs);
            return name;
        },
        std::wstring());
}

} // namespace velora
