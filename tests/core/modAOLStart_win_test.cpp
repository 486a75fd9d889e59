// What start-up learns of AOL, and what it refuses.
#include "base/files.h"
#include "core/modAOL.h"
#include "core/modCaptions.h"
#include "support/answer_win.h"
#include "support/aolhost_win.h"
#include "support/memory_store.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

#include <string>

using namespace velora;
using namespace std::string_literals;
using velora::test::Answer;
using velora::test::AolHost;
using velora::test::waitFor;
using Names = std::vector<std::wstring>;

namespace {

struct Fresh {
    StoreScope settings;
    Fresh() { aol() = {}; }
    ~Fresh() { aol() = {}; }
};

AolHost::Options folderOnly(int edition = 0, int version = 5)
{
    return {.edition = edition, .version = version, .run = false};
}

constexpr wchar_t kFolderWindow[] = L"Browse for Folder";

/// Ends the AOL that start-up started.
void endAol()
{
    DWORD process = 0;
    GetWindowThreadProcessId(AOLWindow(), &process);
    const KernelHandle handle(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, process));
    REQUIRE(handle);
    TerminateProcess(handle.get(), 1);
    WaitForSingleObject(handle.get(), 10000);
    CHECK(waitFor([] { return AOLWindow() == nullptr; }));
}

} // namespace

TEST_CASE("an installation's names: the first is the master")
{
    Fresh fresh;
    TempDir folder;
    aol().folder = folder.path();
    const std::wstring index = folder.folder(L"idb") + L"\\main.idx";

    SUBCASE("read in order")
    {
        replaceFile(index, "\0Guest\0New User\0Joe Smith\0Mary99\0"s);
        CHECK(MSNCheck());
        CHECK(aol().masterScreenName == L"Joe Smith");
        CHECK(aol().screenNames == Names{L"Joe Smith", L"Mary99"});
    }
    SUBCASE("missing or garbled: nothing is known, and nothing refused")
    {
        CHECK(MSNCheck());
        CHECK(aol().screenNames.empty());
        replaceFile(index, std::string(3000, '\xF7') + "\0\1\2"s);
        CHECK(MSNCheck());
        CHECK(aol().masterScreenName.empty());
    }
    SUBCASE("AOL's folder gone")
    {
        aol().folder += L"\\gone";
        CHECK(MSNCheck());
        DetectAolEdition();
        CHECK(aol().edition == kUnitedStates);
    }
    SUBCASE("no account is refused")
    {
        replaceFile(index, "\0Guest\0New User\0"s);
        Answer answer;
        CHECK_FALSE(MSNCheck());
        CHECK(answer.said(L"Velora has detected that the version of AOL you wish to use does not "
                          L"have an account installed"));
        CHECK(answer.said(L"You must have an AOL account registered before attempting to load"));
    }
}

TEST_CASE("versions that are none of AOL's 3 to 7 are refused")
{
    Fresh fresh;
    TempDir folder;
    aol().folder = folder.path();
    SUBCASE("none")
    {
        Answer answer;
        CHECK_FALSE(GetAOLVersion());
        CHECK(answer.said(L"Cannot determine AOL version."));
        CHECK(answer.said(L"Aborting Startup."));
    }
    SUBCASE("another")
    {
        // A module of ours whose version begins with 1.
        copyFile(test::buildFolder() + L"\\mscomctl.ocx", folder.file(L"waol.exe"), true);
        Answer answer;
        CHECK_FALSE(GetAOLVersion());
        CHECK(answer.said(L"AOL1 Detected!"));
        CHECK(answer.said(L"This version of Velora is not compatible with this version of AOL."));
    }
    CHECK(aol().version == 0);
}

TEST_CASE("a running AOL tells its folder and is restored")
{
    Fresh fresh;
    {
        Answer answer;
        CHECK_FALSE(AOLIsRunning());
        CHECK(answer.said(L"America Online window not found!"));
    }
    AolHost host;
    ShowWindowAsync(host.frame(), SW_MINIMIZE);
    REQUIRE(waitFor([&] { return IsIconic(host.frame()) != 0; }));
    CHECK(AOLIsRunning());
    CHECK(aol().folder == host.folder());
    CHECK(waitFor([&] { return !IsIconic(host.frame()); }));
}

TEST_CASE("AOL is started from its folder")
{
    Fresh fresh;
    AolHost folder(folderOnly(kGermany, 6));
    aol().folder = folder.folder();
    CHECK(StartAOL());
    CHECK(AOLWindow() != nullptr);
    CHECK(aol().edition == kGermany);
    CHECK(GetAOLVersion());
    CHECK(aol().version == 6);
    CHECK(signedOnScreenName() == L"");
    endAol();
}

TEST_CASE("the user chooses AOL's folder, and it is remembered")
{
    Fresh fresh;
    AolHost folder(folderOnly());
    SUBCASE("chosen")
    {
        // The folder window begins at the folder that was known.
        aol().folder = folder.folder();
        Answer answer;
        Answer window(L"OK", kFolderWindow);
        CHECK(GetAOLPath());
        CHECK(answer.said(L"Velora needs to know the location of your current AOL folder so it can "
                          L"start AOL for you."));
        CHECK(aol().folder == folder.folder());
        CHECK(fresh.settings.store->data[L""][L"AOL Path"] == RegValue(folder.folder()));
    }
    SUBCASE("cancelled")
    {
        // A folder that holds no AOL is asked for as well.
        const std::wstring other = folder.folder() + L"\\sounds";
        aol().folder = other;
        Answer ask(L"OK", L"Velora", L"needs to know");
        Answer window(L"Cancel", kFolderWindow);
        Answer refusal(L"OK", L"Velora", L"requires a path to your AOL Directory to function");
        CHECK_FALSE(StartAOL());
        CHECK(ask.came());
        CHECK(refusal.said(L"Aborting Startup!"));
        CHECK(aol().folder == other);
        CHECK(fresh.settings.store->data[L""].empty());
    }
}
