#include "core/modStartup.h"

#include "base/product.h"
#include "base/text.h"
#include "base/trap.h"
#include "base/wildcard.h"
#include "core/MsgBoxEx.h"
#include "settings/Options.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "modMain";

const std::wstring kProduct = kProductName;

/// Runs something that a room above has given; what it throws does not end the start.
void callService(const std::function<void()>& service, const char* name)
{
    if (service)
        trap(kModule, service, name);
}

void refuse(StartupHost& host, const std::wstring& prompt)
{
    host.message(prompt, kMsgCritical);
}

// --- Step 1 -----------------------------------------------------------------------------------

struct MigratedFiles {
    const wchar_t* folder; ///< below the program folder
    const wchar_t* pattern;
};
constexpr MigratedFiles kMigrated[] = {
    {L"\\data", L"desc*.dat"},
    {L"", L"favwavs.dat"},
    {L"\\data\\email", L"*"},
    {L"\\data\\hotwords", L"*"},
};

/// False when a file could not be copied; the others are copied all the same.
bool copyFiles(StartupHost& host, const std::wstring& from, const MigratedFiles& files)
{
    bool all = true;
    const std::wstring source = from + files.folder;
    const std::wstring target = host.programFolder() + files.folder;
    for (const std::wstring& name : host.filesIn(source)) {
        if (!wildcardMatch(lower(files.pattern), lower(name)))
            continue;
        all = trap(
                  kModule,
                  [&] {
                      host.makeFolder(target);
                      host.copy(source + L"\\" + name, target + L"\\" + name);
                      return true;
                  },
                  false, "Migrate")
              && all;
    }
    return all;
}

void migrate(StartupHost& host)
{
    trap(kModule, [&] {
        if (opt::Product::Transfer.get())
            return;
        const std::wstring from =
            migrationSource(opt::Product::AppPath.get(), host.programFolder(), host);
        if (from.empty())
            return;
        bool all = true;
        for (const MigratedFiles& files : kMigrated)
            all = copyFiles(host, from, files) && all;
        if (all)
            opt::Product::Transfer.set(true);
    });
}

// --- Steps 3 to 5 -----------------------------------------------------------------------------

bool checkExecutableName(StartupHost& host)
{
    const std::wstring name = host.executableName();
    if (isOwnExecutableName(name))
        return true;
    refuse(host, L"~B~CRCannot start program!~B~CN~N ~NThe Velora executable has been renamed from "
                 L"~Bvelora.exe~B to ~B"
                     + literal(name)
                     + L".exe~B.~N ~NPlease reinstall Velora to correct this problem.");
    return false;
}

void installScheme(StartupHost& host, const StartupServices& services, const std::wstring& file)
{
    const bool installed = trap(
        kModule, [&] { return services.installFadeScheme && services.installFadeScheme(file); },
        false, "CommandLine");
    if (installed)
        host.message(L"~B Fade Scheme has been installed.~N ~NIf your Fader Control Panel is open, "
                     L"please click the ~BRefresh~B button to start using this Fade Scheme.",
                     kMsgInformation);
    else
        refuse(host, L"~B~CRInstall Failed~B~CN~N ~NAn error has occured and the Fade Scheme could "
                     L"not be installed.");
}

/// False when the verb ends the program.
bool CommandLine(const std::wstring& commandLine, StartupHost& host,
                 const StartupServices& services)
{
    using Kind = CommandLineVerb::Kind;
    return trap(
        kModule,
        [&] {
            const CommandLineVerb verb = parseCommandLine(commandLine);
            switch (verb.kind) {
            case Kind::none:
            case Kind::silent: return true;
            case Kind::changeAol: return host.askAolFolder();
            case Kind::liveUpdate: callService(services.liveUpdate, "LiveUpdate"); return false;
            case Kind::raiseError: throw Error("Orv Invoked Error");
            case Kind::installScheme: installScheme(host, services, verb.file); return false;
            }
            return true;
        },
        true);
}

bool claimInstance(StartupHost& host)
{
    if (host.claimInstance())
        return true;
    refuse(host, L"~B~CR" + kProduct
                     + L" is already running!~B~CN~N ~NNo more than one instance of " + kProduct
                     + L" may run at a time.~N ~NAborting startup!");
    return false;
}

// --- Step 6 -----------------------------------------------------------------------------------

constexpr std::wstring_view kDeconFile = L"\\decon.exe";

bool isProtected(StartupHost& host, const std::wstring& folder)
{
    const auto folders = host.protectedFolders();
    return folder.size() < 4 // the root of a drive
           || std::any_of(folders.begin(), folders.end(),
                          [&](const std::wstring& one) { return equalNoCase(one, folder); });
}

/// Deletes the files of the folder that decon.exe runs from. False when it does not run, or from a
/// folder that holds more than the patch.
bool deleteDecon(StartupHost& host)
{
    const std::wstring path = host.processPath(kDeconFile.substr(1));
    if (path.size() <= kDeconFile.size()
        || !equalNoCase(path.substr(path.size() - kDeconFile.size()), kDeconFile))
        return false;
    const std::wstring folder = path.substr(0, path.size() - kDeconFile.size());
    if (isProtected(host, folder))
        return false;
    for (const std::wstring& name : host.filesIn(folder))
        trap(
            kModule, [&] { host.deleteFile(folder + L"\\" + name); }, "UninstallDecon");
    host.pause(500);
    return true;
}

void offerToRemoveDecon(StartupHost& host)
{
    // The box may close itself and answer its default button: that one may not delete files.
    const int answer = host.message(
        L"~B~CRDECON Blue Screen Patch Detected!~B~CN~N ~NVelora will not run properly while this "
        L"patch is installed.~N ~NWould you like to uninstall the DECON patch now?",
        kMsgYesNo + kMsgQuestion + kMsgSecondDefault);
    if (answer == kAnswerYes) {
        host.message(L"~B~CRUninstall DECON~B~CN~N ~NVelora will now uninstall the DECON Blue "
                     L"Screen Patch.",
                     kMsgInformation);
        if (deleteDecon(host)) {
            host.message(L"~B~CRDECON Uninstall Complete~B~CN~N ~NYour computer will need to be "
                         L"restarted to complete this process.",
                         kMsgInformation);
            return;
        }
    }
    refuse(host, L"Velora will not be able to run properly until the DECON patch is uninstalled.~N "
                 L"~NVelora will now end.");
}

bool checkCompatibility(StartupHost& host)
{
    if (host.windowExists(L"DECONMAINWINDOW")) {
        offerToRemoveDecon(host);
        return false;
    }
    for (const wchar_t* name : {L"Tintwave", L"Chatterly"}) {
        if (host.processPath(lower(name) + L".exe").empty())
            continue;
        const std::wstring program = name;
        refuse(host, L"~B~CRVelora has detected that " + program
                         + L" is currently running!~B~CN~N ~NVelora is ~Bnot compatible with "
                         + program
                         + L"~B.  Running both together can cause errors.~N ~NIt should also be "
                           L"noted that Velora already has every feature of the "
                         + program + L" program!  :)~N ~NVelora will now end.");
        return false;
    }
    return true;
}

// --- Step 8 -----------------------------------------------------------------------------------

/// Without these folders the program runs, but keeps nothing: the user is told.
void makeFolders(StartupHost& host)
{
    const std::wstring root = host.programFolder();
    bool made = true;
    for (const std::wstring& folder : programFolders())
        made = trap(
                   kModule, [&] { return host.makeFolder(root + folder), true; }, false,
                   "IntegrityCheck")
               && made;
    if (made && host.canWriteTo(root + L"\\data"))
        return;
    host.message(L"~B~CR" + kProduct
                     + L" cannot write to its program folder!~B~CN~N ~NThe folder ~B"
                     + literal(root)
                     + L"~B is read-only for you, so logs, lists and sound descriptions cannot be "
                       L"saved.~N ~NPlease reinstall "
                     + kProduct + L", or ask for the right to write to this folder.",
                 kMsgExclamation);
}

bool IntegrityCheck(StartupHost& host)
{
    return trap(
        kModule,
        [&] {
            for (const std::wstring& file : companionFiles()) {
                if (host.fileExists(host.systemFolder() + L"\\" + file))
                    continue;
                refuse(host, kProduct + L" has detected that one of its critical runtime files, ~B"
                                 + literal(file)
                                 + L"~B is missing.~N ~NPlease perform a full reinstallation of "
                                 + kProduct + L" to correct this problem.");
                return false;
            }
            makeFolders(host);
            return true;
        },
        true);
}

// --- Steps 9 to 15 ----------------------------------------------------------------------------

bool findAol(StartupHost& host, bool& running)
{
    std::wstring folder = opt::Product::AOLPath.get();
    while (folder.ends_with(L'\\'))
        folder.pop_back();
    host.setAolFolder(folder);
    running = host.aolWindowExists();
    if (running && !host.takeRunningAol())
        return false;
    if (!host.aolFolder().empty())
        host.detectEdition();
    return true;
}

bool loadAol(StartupHost& host, bool running)
{
    for (const int percent : {5, 10, 15})
        host.moveStatusBar(L"", percent);
    if (running) {
        host.moveStatusBar(L"America Online Loaded", 25);
        return true;
    }
    host.moveStatusBar(L"Starting America Online", 20);
    const std::wstring before = host.aolFolder();
    if (!host.startAol())
        return false;
    if (host.aolFolder() != before)
        host.detectEdition();
    return true;
}

bool learnAboutAol(StartupHost& host, const StartupServices& services)
{
    host.moveStatusBar(L"Determining AOL Version", 30);
    if (!host.readAolVersion())
        return false;
    host.moveStatusBar(L"AOL Version " + std::to_wstring(host.aolVersion()) + L" Determined", 40);
    host.moveStatusBar(L"Initializing Jet Database Engine", 43);
    callService(services.openDatabase, "OpenDatabase");
    host.moveStatusBar(L"Retrieving Screen Names", 45);
    if (!host.readScreenNames())
        return false;
    host.moveStatusBar(L"Master Screen Name: " + host.masterScreenName(), 50);
    return true;
}

bool showStartUp(StartupHost& host, const StartupServices& services, bool running)
{
    host.showStart();
    const bool goOn = loadAol(host, running) && !host.cancelled() && learnAboutAol(host, services)
                      && !host.cancelled();
    if (goOn) {
        host.moveStatusBar(L"Loading " + kProduct, 90);
        host.moveStatusBar(L"Loading " + kProduct, 100);
        host.pause(200);
    }
    host.closeStart();
    return goOn;
}

} // namespace

bool runStartup(const std::wstring& commandLine, StartupHost& host, const StartupServices& services)
{
    migrate(host);
    host.noteSystem();
    if (!checkExecutableName(host) || !CommandLine(commandLine, host, services)
        || !claimInstance(host) || !checkCompatibility(host))
        return false;
    LoadSettings();
    bool running = false;
    if (!IntegrityCheck(host) || !findAol(host, running) || !showStartUp(host, services, running))
        return false;
    host.initProgram();
    return true;
}

std::wstring argumentsOf(std::wstring_view whole)
{
    const wchar_t* ends = whole.starts_with(L'"') ? L"\"" : L" \t";
    auto at = whole.find_first_of(ends, 1);
    if (at != whole.npos && whole[at] == L'"')
        ++at;
    // Some shells put two blanks behind the name, so those at the beginning mean nothing.
    at = whole.find_first_not_of(L" \t", at);
    return std::wstring(at == whole.npos ? std::wstring_view() : whole.substr(at));
}

CommandLineVerb parseCommandLine(std::wstring_view commandLine)
{
    using Kind = CommandLineVerb::Kind;
    if (commandLine.empty())
        return {Kind::none, {}};
    if (commandLine == L"CHANGEAOL")
        return {Kind::changeAol, {}};
    if (commandLine == L"LIVEUPDATE")
        return {Kind::liveUpdate, {}};
    if (commandLine == L"-raiseerr")
        return {Kind::raiseError, {}};
    if (commandLine == L"-silent")
        return {Kind::silent, {}};
    // Opened from the desktop, a file's name comes without quotes, blanks and all.
    std::wstring_view file = commandLine;
    if (const auto inner = trimView(file);
        inner.size() >= 2 && inner.front() == L'"' && inner.back() == L'"')
        file = inner.substr(1, inner.size() - 2);
    return {Kind::installScheme, std::wstring(file)};
}

bool isOwnExecutableName(std::wstring_view name)
{
    return lower(name) == L"velora";
}

std::wstring migrationSource(std::wstring_view appPath, const std::wstring& programFolder,
                             StartupHost& host)
{
    std::wstring folder(appPath);
    while (folder.ends_with(L'\\'))
        folder.pop_back();
    // The value may also name a file in the folder.
    if (!host.folderExists(folder) && host.fileExists(folder))
        folder.resize(std::min(folder.rfind(L'\\'), folder.size()));
    if (!host.folderExists(folder) || equalNoCase(folder, programFolder)
        || lower(folder).find(lower(kProgramFolderName)) != std::wstring::npos)
        return {};
    return folder;
}

const std::vector<std::wstring>& companionFiles()
{
    static const std::vector<std::wstring> files = {
        L"dworvspy.dll", L"dwspy5.dll",  L"orvproxy.dll", L"orverr.dll",  L"orvbtnx2.ocx",
        L"orvbarx2.ocx", L"dwsbc36.ocx", L"mscomctl.ocx", L"dwspy36.dll", L"launch32.dll"};
    return files;
}

const std::vector<std::wstring>& programFolders()
{
    static const std::vector<std::wstring> folders = {L"\\data",
                                                      L"\\data\\chat",
                                                      L"\\data\\email",
                                                      L"\\data\\im",
                                                      L"\\data\\im\\general",
                                                      L"\\data\\im\\personalized",
                                                      L"\\data\\quickfind",
                                                      L"\\data\\wav groups",
                                                      L"\\incoming",
                                                      L"\\outgoing",
                                                      L"\\styles",
                                                      L"\\im logs",
                                                      L"\\chat logs"};
    return folders;
}

std::vector<std::pair<std::wstring, std::wstring>>
schemeFileType(const std::wstring& programFolder, const std::wstring& executableName)
{
    const std::wstring type = L"Velora.InstallScheme";
    return {
        {L".fde", type},
        {type, L"Velora Install Scheme"},
        {type + L"\\shell\\open\\command", programFolder + L"\\" + executableName + L".exe %1"},
        {type + L"\\DefaultIcon", programFolder + L"\\fade.ico"},
    };
}

} // namespace velora
