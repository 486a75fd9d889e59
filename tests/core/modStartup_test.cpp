#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modStartup.h"
#include "settings/Options.h"
#include "support/memory_store.h"

#include <doctest/doctest.h>

#include <map>
#include <set>

using namespace velora;

namespace {

/// A machine on paper: files, processes and windows as sets, everything done as a list of words.
class PaperHost final : public StartupHost {
public:
    std::vector<std::string> done;
    std::vector<std::wstring> messages;
    std::vector<int> answers; ///< to the messages in turn; OK when there are none left
    std::set<std::wstring> files, folders, readOnly;
    std::map<std::wstring, std::wstring> processes;
    std::set<std::wstring> windows;
    std::wstring name = L"velora", folder, screenName = L"SteveCase";
    bool firstInstance = true, aolRuns = false, allows = true;
    std::wstring chosenFolder; ///< what the user answers when AOL's folder is asked for
    std::string refusing;      ///< the AOL step that answers false
    std::string cancelAfter;

    PaperHost()
    {
        for (const std::wstring& file : companionFiles())
            files.insert(L"C:\\sys\\" + file);
        folders = {L"C:\\Velora 10"};
    }

    bool did(const std::string& what) const
    {
        return std::find(done.begin(), done.end(), what) != done.end();
    }
    bool saw(std::wstring_view text) const
    {
        return std::any_of(messages.begin(), messages.end(),
                           [&](const auto& m) { return m.find(text) != m.npos; });
    }

    std::wstring programFolder() override { return L"C:\\Velora 10"; }
    std::wstring executableName() override { return name; }
    std::wstring systemFolder() override { return L"C:\\sys"; }
    void noteSystem() override { note("system"); }
    bool claimInstance() override { return note("instance"), firstInstance; }
    bool windowExists(const wchar_t* className) override { return windows.contains(className); }
    std::wstring processPath(std::wstring_view executable) override
    {
        const auto found = processes.find(std::wstring(executable));
        return found == processes.end() ? std::wstring() : found->second;
    }
    int message(const std::wstring& prompt, int) override
    {
        messages.push_back(prompt);
        note("message");
        if (answers.empty())
            return kAnswerOK;
        const int answer = answers.front();
        answers.erase(answers.begin());
        return answer;
    }
    void pause(unsigned long) override {}
    bool fileExists(const std::wstring& path) override { return files.contains(path); }
    bool folderExists(const std::wstring& path) override { return folders.contains(path); }
    std::vector<std::wstring> filesIn(const std::wstring& in) override
    {
        std::vector<std::wstring> names;
        for (const std::wstring& file : files)
            if (file.starts_with(in + L"\\") && file.find(L'\\', in.size() + 1) == file.npos)
                names.push_back(file.substr(in.size() + 1));
        return names;
    }
    void copy(const std::wstring& from, const std::wstring& to) override
    {
        if (readOnly.contains(to))
            throw Error("read-only", 5);
        note("copy " + toUtf8(from) + " > " + toUtf8(to));
        files.insert(to);
    }
    void makeFolder(const std::wstring& path) override
    {
        if (readOnly.contains(path))
            throw Error("read-only", 5);
        if (folders.insert(path).second)
            note("folder " + toUtf8(path));
    }
    void deleteFile(const std::wstring& path) override
    {
        files.erase(path);
        note("delete " + toUtf8(path));
    }
    bool canWriteTo(const std::wstring& path) override { return !readOnly.contains(path); }
    std::vector<std::wstring> protectedFolders() override { return {L"C:\\Windows"}; }

    std::wstring aolFolder() override { return folder; }
    void setAolFolder(const std::wstring& path) override { folder = path; }
    bool aolWindowExists() override { return aolRuns; }
    bool takeRunningAol() override { return step("take"); }
    void detectEdition() override { note("edition"); }
    bool startAol() override
    {
        if (!chosenFolder.empty())
            folder = chosenFolder;
        return step("start");
    }
    bool askAolFolder() override { return step("ask"); }
    bool readAolVersion() override { return step("version"); }
    int aolVersion() override { return 5; }
    bool readScreenNames() override { return step("names"); }
    std::wstring masterScreenName() override { return screenName; }

    void showStart() override { note("show"); }
    void moveStatusBar(std::wstring_view text, int percent) override
    {
        note(std::to_string(percent) + " " + toUtf8(text));
    }
    void closeStart() override { note("close"); }
    bool cancelled() override { return !cancelAfter.empty() && did(cancelAfter); }
    void initProgram() override { note("init"); }

private:
    void note(const std::string& what) { done.push_back(what); }
    bool step(const std::string& what) { return note(what), what != refusing; }
};

struct Machine : StoreScope {
    PaperHost host;
    StartupServices services;

    Machine()
    {
        services.openDatabase = [this] { host.done.push_back("database"); };
        services.liveUpdate = [this] { host.done.push_back("update"); };
    }
    bool run(const std::wstring& commandLine = {})
    {
        return runStartup(commandLine, host, services);
    }
    void put(const wchar_t* name, const RegValue& value) { store->data[L""][name] = value; }
};

} // namespace

TEST_CASE_FIXTURE(Machine, "the steps of a start without AOL, in their order")
{
    for (const std::wstring& folder : programFolders())
        host.folders.insert(L"C:\\Velora 10" + folder);
    put(L"AOL Path", std::wstring(L"C:\\AOL\\"));
    CHECK(run());
    CHECK(host.done
          == std::vector<std::string>{"system",
                                      "instance",
                                      "edition",
                                      "show",
                                      "5 ",
                                      "10 ",
                                      "15 ",
                                      "20 Starting America Online",
                                      "start",
                                      "30 Determining AOL Version",
                                      "version",
                                      "40 AOL Version 5 Determined",
                                      "43 Initializing Jet Database Engine",
                                      "database",
                                      "45 Retrieving Screen Names",
                                      "names",
                                      "50 Master Screen Name: SteveCase",
                                      "90 Loading Velora",
                                      "100 Loading Velora",
                                      "close",
                                      "init"});
    CHECK(host.folder == L"C:\\AOL");
    CHECK(host.messages.empty());
}

TEST_CASE_FIXTURE(Machine, "the edition is that of the folder that AOL was started from")
{
    host.chosenFolder = L"C:\\AOL";
    CHECK(run());
    CHECK(std::count(host.done.begin(), host.done.end(), "edition") == 1);
    host.done.clear();
    put(L"AOL Path", std::wstring(L"C:\\AOL"));
    CHECK(run());
    CHECK(std::count(host.done.begin(), host.done.end(), "edition") == 1);
}

TEST_CASE_FIXTURE(Machine, "AOL that runs is taken, not started")
{
    host.aolRuns = true;
    CHECK(run());
    CHECK(host.did("take"));
    CHECK(host.did("25 America Online Loaded"));
    CHECK_FALSE(host.did("start"));
}

TEST_CASE_FIXTURE(Machine, "an AOL step that refuses ends the start, and its window closes")
{
    for (const char* refusing : {"start", "version", "names"}) {
        host.done.clear();
        host.refusing = refusing;
        CAPTURE(refusing);
        CHECK_FALSE(run());
        CHECK(host.did(refusing));
        CHECK(host.done.back() == "close");
        CHECK_FALSE(host.did("init"));
    }
    host.done.clear();
    host.aolRuns = true;
    host.refusing = "take";
    CHECK_FALSE(run());
    CHECK_FALSE(host.did("show"));
    host.done.clear();
    host.refusing.clear();
    host.cancelAfter = "25 America Online Loaded";
    CHECK_FALSE(run());
    CHECK_FALSE(host.did("version"));
}

TEST_CASE_FIXTURE(Machine, "a service that fails does not end the start")
{
    services.openDatabase = [] { throw Error("no engine"); };
    CHECK(run());
}

TEST_CASE_FIXTURE(Machine, "the program only runs under its own name, in any case")
{
    for (const wchar_t* good : {L"velora", L"Velora", L"VELORA"})
        CHECK(isOwnExecutableName(good));
    for (const wchar_t* bad : {L"", L"velora2", L" velora", L"copy of velora"})
        CHECK_FALSE(isOwnExecutableName(bad));
    host.name = L"my~Bprog";
    CHECK_FALSE(run());
    REQUIRE(host.messages.size() == 1);
    CHECK(
        plainText(host.messages[0])
        == L"Cannot start program!\r\n \r\nThe Velora executable has been renamed from "
           L"velora.exe to my~Bprog.exe.\r\n \r\nPlease reinstall Velora to correct this problem.");
    CHECK_FALSE(host.did("instance"));
}

TEST_CASE("what follows the program's name")
{
    CHECK(argumentsOf(L"\"C:\\Program Files\\Velora 10\\velora.exe\"") == L"");
    CHECK(argumentsOf(L"\"C:\\Program Files\\Velora 10\\velora.exe\" ") == L"");
    CHECK(argumentsOf(L"\"C:\\a b\\velora.exe\" CHANGEAOL") == L"CHANGEAOL");
    CHECK(argumentsOf(L"velora.exe  -silent") == L"-silent");
    CHECK(argumentsOf(L"velora.exe\t\"a b.fde\" ") == L"\"a b.fde\" ");
    CHECK(argumentsOf(L"velora.exe") == L"");
    CHECK(argumentsOf(L"\"velora.exe") == L"");
    CHECK(argumentsOf(L"") == L"");
}

TEST_CASE("command-line verbs are exact; anything else is a scheme file")
{
    using Kind = CommandLineVerb::Kind;
    const auto file = [](const wchar_t* name) {
        return CommandLineVerb{Kind::installScheme, name};
    };
    CHECK(parseCommandLine(L"") == CommandLineVerb{Kind::none, L""});
    CHECK(parseCommandLine(L"CHANGEAOL") == CommandLineVerb{Kind::changeAol, L""});
    CHECK(parseCommandLine(L"LIVEUPDATE") == CommandLineVerb{Kind::liveUpdate, L""});
    CHECK(parseCommandLine(L"-raiseerr") == CommandLineVerb{Kind::raiseError, L""});
    CHECK(parseCommandLine(L"-silent") == CommandLineVerb{Kind::silent, L""});
    CHECK(parseCommandLine(L" -silent") == file(L" -silent"));
    CHECK(parseCommandLine(L"changeaol") == file(L"changeaol"));
    CHECK(parseCommandLine(L"-raiseerr ") == file(L"-raiseerr "));
    CHECK(parseCommandLine(L"C:\\My Fades\\a b.fde") == file(L"C:\\My Fades\\a b.fde"));
    CHECK(parseCommandLine(L"\"C:\\My Fades\\a b.fde\" ") == file(L"C:\\My Fades\\a b.fde"));
    CHECK(parseCommandLine(L"\"") == file(L"\""));
}

TEST_CASE_FIXTURE(Machine, "each verb does its work and ends or goes on")
{
    SUBCASE("no action")
    {
        CHECK(run(L"-silent"));
    }
    SUBCASE("a raised error is reported and the start goes on")
    {
        static std::string reported;
        const auto former = setErrorSink([](const ErrorRecord& record) noexcept {
            reported = std::string(record.module) + "/" + record.procedure + "/" + record.reason;
        });
        CHECK(run(L"-raiseerr"));
        setErrorSink(former);
        CHECK(reported == "modMain/CommandLine/Orv Invoked Error");
    }
    SUBCASE("another AOL folder")
    {
        CHECK(run(L"CHANGEAOL"));
        CHECK(host.did("ask"));
        host.done.clear();
        host.refusing = "ask";
        CHECK_FALSE(run(L"CHANGEAOL"));
        CHECK_FALSE(host.did("instance"));
        CHECK_FALSE(host.did("start"));
    }
    SUBCASE("update check")
    {
        CHECK_FALSE(run(L"LIVEUPDATE"));
        CHECK(host.did("update"));
        CHECK_FALSE(host.did("instance"));
    }
    SUBCASE("a scheme file")
    {
        std::wstring installed;
        services.installFadeScheme = [&](const std::wstring& file) {
            installed = file;
            return file != L"bad.fde";
        };
        host.firstInstance = false;
        CHECK_FALSE(run(L"\"C:\\a b.fde\""));
        CHECK(installed == L"C:\\a b.fde");
        CHECK(host.saw(L"~B Fade Scheme has been installed."));
        host.messages.clear();
        CHECK_FALSE(run(L"bad.fde"));
        CHECK(host.saw(L"~B~CRInstall Failed~B~CN"));
        host.messages.clear();
        services.installFadeScheme = [](const std::wstring&) -> bool { throw Error("x"); };
        CHECK_FALSE(run(L"x.fde"));
        CHECK(host.saw(L"~B~CRInstall Failed~B~CN"));
        CHECK_FALSE(host.did("instance"));
    }
}

TEST_CASE_FIXTURE(Machine, "a second instance is told so and does nothing more")
{
    host.firstInstance = false;
    CHECK_FALSE(run());
    REQUIRE(host.messages.size() == 1);
    CHECK(
        host.messages[0]
        == L"~B~CRVelora is already running!~B~CN~N ~NNo more than one instance of Velora may run "
           L"at a time.~N ~NAborting startup!");
    CHECK(host.done == std::vector<std::string>{"system", "instance", "message"});
}

TEST_CASE_FIXTURE(Machine, "programs that it does not run beside")
{
    host.processes[L"tintwave.exe"] = L"C:\\Tint\\tintwave.exe";
    CHECK_FALSE(run());
    CHECK(
        host.saw(L"~B~CRVelora has detected that Tintwave is currently running!~B~CN~N ~NVelora is "
                 L"~Bnot compatible with Tintwave~B.  Running both"));
    host.processes.clear();
    host.processes[L"chatterly.exe"] = L"chatterly.exe";
    CHECK_FALSE(run());
    CHECK(host.saw(L"feature of the Chatterly program!  :)~N ~NVelora will now end."));
    CHECK_FALSE(host.did("show"));
}

TEST_CASE_FIXTURE(Machine,
                  "the DECON patch is removed only on Yes, and only from a folder of its own")
{
    host.windows = {L"DECONMAINWINDOW"};
    host.processes[L"decon.exe"] = L"C:\\Decon\\DECON.EXE";
    host.files.insert({L"C:\\Decon\\DECON.EXE", L"C:\\Decon\\a.dll", L"C:\\Decon\\sub\\b.dll"});
    SUBCASE("No")
    {
        host.answers = {kAnswerNo};
        CHECK_FALSE(run());
        CHECK(host.messages.size() == 2);
        CHECK(host.saw(L"Velora will not be able to run properly until the DECON patch is "
                       L"uninstalled.~N ~NVelora will now end."));
        CHECK(host.files.contains(L"C:\\Decon\\a.dll"));
    }
    SUBCASE("Yes")
    {
        host.answers = {kAnswerYes};
        CHECK_FALSE(run());
        CHECK(host.messages.size() == 3);
        CHECK(host.saw(L"~B~CRUninstall DECON~B~CN"));
        CHECK(host.saw(L"~B~CRDECON Uninstall Complete~B~CN"));
        CHECK(host.did("delete C:\\Decon\\a.dll"));
        CHECK(host.did("delete C:\\Decon\\DECON.EXE"));
        CHECK(host.files.contains(L"C:\\Decon\\sub\\b.dll"));
    }
    SUBCASE("Yes, but it lies where other things are")
    {
        host.files.insert(L"C:\\Windows\\notepad.exe");
        host.files.insert(L"C:\\x");
        for (const wchar_t* path :
             {L"C:\\WINDOWS\\decon.exe", L"C:\\decon.exe", L"decon.exe", L""}) {
            host.messages.clear();
            host.answers = {kAnswerYes};
            host.processes[L"decon.exe"] = path;
            CHECK_FALSE(run());
            CHECK_FALSE(host.saw(L"Complete"));
        }
        CHECK(host.files.contains(L"C:\\Windows\\notepad.exe"));
        CHECK(host.files.contains(L"C:\\x"));
    }
    CHECK_FALSE(host.did("show"));
}

TEST_CASE_FIXTURE(Machine, "each missing companion file is named, the first one only")
{
    for (const std::wstring& file : companionFiles()) {
        host.files.erase(L"C:\\sys\\" + file);
        host.messages.clear();
        CHECK_FALSE(run());
        REQUIRE(host.messages.size() == 1);
        CHECK(host.messages[0]
              == L"Velora has detected that one of its critical runtime files, ~B" + file
                     + L"~B is missing.~N ~NPlease perform a full reinstallation of Velora to "
                       L"correct this problem.");
        host.files.insert(L"C:\\sys\\" + file);
    }
    host.files.erase(L"C:\\sys\\dwspy36.dll");
    host.files.erase(L"C:\\sys\\launch32.dll");
    host.messages.clear();
    CHECK_FALSE(run());
    CHECK(host.messages.size() == 1);
    CHECK(host.saw(L"dwspy36.dll"));
    CHECK_FALSE(host.did("folder C:\\Velora 10\\data"));
}

TEST_CASE_FIXTURE(Machine, "a read-only program folder is said once and the start goes on")
{
    SUBCASE("a folder cannot be made")
    {
        host.readOnly = {L"C:\\Velora 10\\data\\im", L"C:\\Velora 10\\styles"};
    }
    SUBCASE("the folders are there but nothing can be written")
    {
        host.readOnly = {L"C:\\Velora 10\\data"};
        host.folders.insert(L"C:\\Velora 10\\data");
    }
    CHECK(run());
    REQUIRE(host.messages.size() == 1);
    CHECK(host.saw(L"cannot write to its program folder"));
    CHECK(host.saw(L"C:\\Velora 10"));
    CHECK(host.did("init"));
}

TEST_CASE_FIXTURE(Machine, "the data of an earlier installation is copied once")
{
    host.folders.insert(L"C:\\Old");
    host.files.insert({L"C:\\Old\\favwavs.dat", L"C:\\Old\\data\\Desc1.DAT",
                       L"C:\\Old\\data\\desc.txt", L"C:\\Old\\data\\email\\a",
                       L"C:\\Old\\data\\hotwords\\b.dat", L"C:\\Old\\data\\im\\c.dat",
                       L"C:\\Old\\velora.exe"});
    std::set<std::wstring> expected = {
        L"C:\\Velora 10\\favwavs.dat", L"C:\\Velora 10\\data\\Desc1.DAT",
        L"C:\\Velora 10\\data\\email\\a", L"C:\\Velora 10\\data\\hotwords\\b.dat"};
    const auto migrated = [&] {
        std::set<std::wstring> files;
        for (const std::wstring& file : host.files)
            if (file.starts_with(L"C:\\Velora 10\\"))
                files.insert(file);
        return files;
    };
    put(L"AppPath", std::wstring(L"C:\\Old"));
    SUBCASE("and remembered")
    {
        CHECK(run());
        CHECK(migrated() == expected);
        CHECK(store->data[L""][L"Transfer"] == RegValue(true));
        host.done.clear();
        CHECK(run());
        for (const std::string& what : host.done)
            CHECK_FALSE(what.starts_with("copy"));
    }
    SUBCASE("whether the path ends in a backslash or names the program")
    {
        put(L"AppPath", std::wstring(L"C:\\Old\\"));
        CHECK(run());
        CHECK(migrated() == expected);
        put(L"Transfer", false);
        host.files.erase(L"C:\\Velora 10\\favwavs.dat");
        put(L"AppPath", std::wstring(L"C:\\Old\\velora.exe"));
        CHECK(run());
        CHECK(migrated() == expected);
    }
    SUBCASE("but one that failed is tried again, and the other files come over")
    {
        host.readOnly = {L"C:\\Velora 10\\favwavs.dat"};
        CHECK(run());
        expected.erase(L"C:\\Velora 10\\favwavs.dat");
        CHECK(migrated() == expected);
        CHECK_FALSE(store->data[L""].contains(L"Transfer"));
    }
    SUBCASE("never once it was done")
    {
        put(L"Transfer", true);
        CHECK(run());
        CHECK(migrated().empty());
    }
    SUBCASE("never from an installation of this generation, from itself or from nowhere")
    {
        host.folders.insert({L"D:\\my VELORA 10 copy", L"C:\\velora 10"});
        host.files.insert(L"D:\\my VELORA 10 copy\\favwavs.dat");
        for (const wchar_t* path :
             {L"D:\\my VELORA 10 copy", L"C:\\Velora 10", L"C:\\Gone", L"", L"\\"}) {
            put(L"AppPath", std::wstring(path));
            CHECK(run());
        }
        CHECK(migrated().empty());
        CHECK_FALSE(store->data[L""].contains(L"Transfer"));
    }
}
