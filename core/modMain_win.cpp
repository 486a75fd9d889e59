#include "core/modMain.h"

#include "base/clock.h"
#include "base/files.h"
#include "base/handles.h"
#include "base/product.h"
#include "base/text.h"
#include "base/win_error.h"
#include "core/MsgBoxEx.h"
#include "core/clsProcesses.h"
#include "core/frmMain.h"
#include "core/modAOL.h"
#include "core/modStartup.h"
#include "hook/aolSend.h"
#include "settings/Options.h"
#include "settings/clsRegistry.h"
#include "ui/MessageLoop.h"

#include <shlobj.h>
#include <utility>

namespace velora {
namespace {

constexpr char kModule[] = "modMain";

StartupServices g_services;
bool g_windowsNT = false;

std::wstring executablePath()
{
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

std::wstring systemFolder()
{
    wchar_t folder[MAX_PATH];
    return std::wstring(folder, GetSystemDirectoryW(folder, MAX_PATH));
}

std::wstring shellFolder(int which)
{
    wchar_t folder[MAX_PATH];
    return SHGetFolderPathW(nullptr, which, nullptr, SHGFP_TYPE_CURRENT, folder) == S_OK ? folder
                                                                                         : L"";
}

// --- The working state ------------------------------------------------------------------------

/// One key with a default value, below HKEY_CLASSES_ROOT or, where the user may not write there,
/// below the user's own classes, which show through it. True when something changed.
bool registerClass(const std::wstring& path, const std::wstring& value)
{
    clsRegistry key;
    key.ClassKey(HKEY_CLASSES_ROOT);
    key.SectionKey(path);
    if (key.Value() == RegValue(value))
        return false;
    try {
        key.Value(value);
    } catch (const Error&) {
        key.ClassKey(HKEY_CURRENT_USER);
        key.SectionKey(L"Software\\Classes\\" + path);
        key.Value(value);
    }
    return true;
}

void registerSchemeFiles()
{
    bool changed = false;
    const std::wstring path = executablePath();
    std::wstring name = path.substr(path.rfind(L'\\') + 1);
    name.resize(std::min(name.rfind(L'.'), name.size()));
    for (const auto& [key, value] : schemeFileType(AppPath(), name))
        changed = registerClass(key, value) || changed;
    if (changed)
        SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
}

void makeLogFolders()
{
    makeFolder(AppPath() + L"\\im logs");
    makeFolder(AppPath() + L"\\chat logs");
}

void noteAolSounds()
{
    if (!aol().folder.empty())
        writeSetting(L"AOL Directory", L"AOL Sounds", aol().folder + L"\\sounds");
}

/// Each step by itself: one that fails must not keep the toolbar away.
void InitProgram()
{
    const auto step = [](const char* name, const std::function<void()>& body) {
        if (body)
            trap(kModule, body, name);
    };
    step("MakeLogFolders", makeLogFolders);
    step("LoadChatKeywords", g_services.loadChatKeywords);
    step("LoadCategories", g_services.loadCategories);
    step("NoteAolSounds", noteAolSounds);
    step("WriteAppPath", [] { opt::Product::AppPath.set(AppPath()); });
    step("RegisterSchemeFiles", registerSchemeFiles);
    step("MakeDefaultTemplates", g_services.makeDefaultTemplates);
    step("LoadToolbar", g_services.loadToolbar);
}

// --- What start-up runs over ------------------------------------------------------------------

class WindowsHost final : public StartupHost {
public:
    std::wstring programFolder() override { return AppPath(); }
    std::wstring executableName() override
    {
        const std::wstring path = executablePath();
        const std::wstring file = path.substr(path.rfind(L'\\') + 1);
        return file.substr(0, file.rfind(L'.'));
    }
    std::wstring systemFolder() override { return velora::systemFolder(); }
    void noteSystem() override
    {
        OSVERSIONINFOW version = {};
        version.dwOSVersionInfoSize = sizeof version;
        g_windowsNT = GetVersionExW(&version) && version.dwPlatformId == VER_PLATFORM_WIN32_NT;
    }
    bool claimInstance() override
    {
        // Kept until the process ends, however it ends.
        static KernelHandle mutex;
        mutex.reset(CreateMutexW(nullptr, FALSE, L"Local\\Orv Software Velora"));
        return mutex ? GetLastError() != ERROR_ALREADY_EXISTS
                     : GetLastError() != ERROR_ACCESS_DENIED;
    }
    bool windowExists(const wchar_t* className) override
    {
        return FindWindowW(className, nullptr) != nullptr;
    }
    std::wstring processPath(std::wstring_view executable) override
    {
        clsProcesses processes;
        processes.GetProcessInformation();
        const auto process = processes.find(executable);
        if (!process)
            return {};
        const std::wstring path = clsProcesses::FilePath(process->id);
        return path.empty() ? process->name : path;
    }

    int message(const std::wstring& prompt, int style) override
    {
        loadBoxOptions();
        return MsgBoxEx(prompt, style);
    }
    void pause(unsigned long milliseconds) override { velora::pause(milliseconds); }

    bool fileExists(const std::wstring& path) override { return velora::fileExists(path); }
    bool folderExists(const std::wstring& path) override { return velora::folderExists(path); }
    std::vector<std::wstring> filesIn(const std::wstring& folder) override
    {
        std::vector<std::wstring> names;
        for (const FileEntry& entry : listFolder(folder))
            if (!entry.folder)
                names.push_back(entry.name);
        return names;
    }
    void copy(const std::wstring& from, const std::wstring& to) override
    {
        const auto bytes = readFile(from);
        if (bytes && velora::fileExists(to))
            replaceFileKeepingCopies(to, *bytes);
        else
            copyFile(from, to, false);
    }
    void makeFolder(const std::wstring& path) override { velora::makeFolder(path); }
    void deleteFile(const std::wstring& path) override
    {
        // A file in use goes with the restart that the user is asked for.
        if (!DeleteFileW(path.c_str()))
            MoveFileExW(path.c_str(), nullptr, MOVEFILE_DELAY_UNTIL_REBOOT);
        if (velora::fileExists(path))
            throwLastError("cannot delete the file");
    }
    bool canWriteTo(const std::wstring& folder) override
    {
        const std::wstring probe = folder + L"\\velora.tmp";
        const FileHandle file(
            CreateFileW(probe.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_ALWAYS,
                        FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
        return static_cast<bool>(file);
    }
    std::vector<std::wstring> protectedFolders() override
    {
        std::vector<std::wstring> folders = {velora::systemFolder(), AppPath(), aol().folder};
        for (const int which :
             {CSIDL_WINDOWS, CSIDL_PROGRAM_FILES, CSIDL_PROFILE, CSIDL_DESKTOPDIRECTORY,
              CSIDL_COMMON_DESKTOPDIRECTORY, CSIDL_PERSONAL, CSIDL_APPDATA, CSIDL_LOCAL_APPDATA,
              CSIDL_STARTUP, CSIDL_COMMON_STARTUP, CSIDL_MYMUSIC, CSIDL_MYPICTURES})
            folders.push_back(shellFolder(which));
        return folders;
    }

    std::wstring aolFolder() override { return aol().folder; }
    void setAolFolder(const std::wstring& folder) override { aol().folder = folder; }
    bool aolWindowExists() override { return AOLWindow() != nullptr; }
    bool takeRunningAol() override { return AOLIsRunning(); }
    void detectEdition() override { DetectAolEdition(); }
    bool startAol() override { return StartAOL(); }
    bool askAolFolder() override
    {
        loadBoxOptions();
        return GetAOLPath();
    }
    bool readAolVersion() override { return GetAOLVersion(); }
    int aolVersion() override { return aol().version; }
    bool readScreenNames() override { return MSNCheck(); }
    std::wstring masterScreenName() override { return aol().masterScreenName; }

    void showStart() override
    {
        Form::open<frmMain>().show();
        doEvents();
    }
    void moveStatusBar(std::wstring_view text, int percent) override
    {
        if (auto* form = Form::find<frmMain>())
            form->MoveStatusBar(text, percent);
    }
    void closeStart() override
    {
        if (auto* form = Form::find<frmMain>())
            form->close();
        waitUntil([] { return !Form::find<frmMain>(); }, 2000);
    }
    bool cancelled() override { return messageLoopQuits(); }

    void initProgram() override { InitProgram(); }

private:
    /// Boxes close by themselves or not as the user has chosen, also those that come before the
    /// settings are loaded.
    void loadBoxOptions()
    {
        if (!std::exchange(boxOptionsLoaded_, true))
            LoadSettings();
    }
    bool boxOptionsLoaded_ = false;
};

// --- Shutdown ---------------------------------------------------------------------------------

bool confirmExit()
{
    return MsgBoxEx(std::wstring(L"~B~CRAre you sure you wish to exit ") + kProductName
                        + L"?~B~CN~N ~NDoing so will restore your AOL workspace background to it's "
                          L"default color.",
                    kMsgYesNo + kMsgQuestion)
           == kAnswerYes;
}

void closeJukebox()
{
    const HWND jukebox = FindWindowW(nullptr, L"Velora Jukebox");
    if (!jukebox)
        return;
    const int answer = MsgBoxEx(L"~B~CRClose Jukebox?~B~CN~N ~NVelora is attmepting to close you "
                                L"open Jukebox program.~N ~NDo you want to close the Velora "
                                L"Jukebox now?",
                                kMsgYesNo + kMsgQuestion);
    if (answer != kAnswerNo) {
        DWORD_PTR ignored;
        SendMessageTimeoutW(jukebox, WM_CLOSE, 0, 0, SMTO_ABORTIFHUNG, 2000, &ignored);
    }
}

} // namespace

bool Main(const std::wstring& commandLine, StartupServices services)
{
    return trap(
        kModule,
        [&] {
            g_services = std::move(services);
            WindowsHost host;
            return runStartup(commandLine, host, g_services);
        },
        false);
}

bool UnloadAllForms(bool askFirst)
{
    return trap(
        kModule,
        [&] {
            // The questions pump: while the first is open, a second wish to end asks nothing, and
            // one that does not ask (AOL has ended) overtakes it.
            static bool asking = false, closing = false;
            if (closing || (askFirst && std::exchange(asking, true)))
                return false;
            if (askFirst) {
                const bool exit = confirmExit();
                asking = false;
                if (!exit || closing)
                    return false;
            }
            closing = true;
            if (g_services.releaseAol)
                trap(kModule, g_services.releaseAol, "UnhookSubclasses");
            trap(kModule, closeJukebox, "CloseJukebox");
            Form::unloadAll();
            quitMessageLoop();
            return true;
        },
        true);
}

std::wstring AppPath()
{
    const std::wstring path = executablePath();
    return path.substr(0, path.rfind(L'\\'));
}

bool runningOnNT()
{
    return g_windowsNT;
}

std::wstring logDate()
{
    return fileDate(now());
}

} // namespace velora
