// AOL access, tried on the stand-in in several editions and versions.
#include "core/modAOL.h"

#include "base/text.h"
#include "core/modCaptions.h"
#include "core/modFindChild.h"
#include "hook/AgentLink.h"
#include "support/answer_win.h"
#include "support/aolhost_win.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <string>

using namespace velora;
using velora::test::Answer;
using velora::test::AolHost;
using velora::test::waitFor;

namespace {

/// AOL, and the program as start-up leaves it: knowing AOL, with code inside it.
struct Running {
    AolHost host;

    explicit Running(const AolHost::Options& options) : host(options)
    {
        aol() = {};
        REQUIRE(AOLIsRunning());
        DetectAolEdition();
        REQUIRE(GetAOLVersion());
        REQUIRE(connectAol());
    }
    Running(int edition, int version) : Running({.edition = edition, .version = version}) {}
    ~Running()
    {
        aolLink().disconnect();
        aol() = {};
    }
};

constexpr struct {
    int edition, version;
} kSorts[] = {{kUnitedStates, 3}, {kUnitedStates, 5}, {kUnitedKingdom, 6},
              {kCanada, 7},       {kAustralia, 4},    {kGermany, 6},
              {kFrance, 5},       {kGermany, 5},      {kFrance, 7}};

} // namespace

namespace {

void checkWindows(Running& running, int edition, int version)
{
    CHECK(aol().folder == running.host.folder());
    CHECK(aol().edition == edition);
    CHECK(aol().version == version);
    CHECK(AOLWindow() == running.host.frame());
    CHECK(windowCaption(AOLWindow()).starts_with(frameCaption(edition)));
    CHECK(AOLMDI() == running.host.mdi());
    CHECK(isAolWindow(AOLToolbar()));
    CHECK(IsAOLOnline());
    CHECK(signedOnScreenName() == L"Orv Tester");
    CHECK(waitForSignOn(1000) == L"Orv Tester");
    REQUIRE(MSNCheck());
    CHECK(aol().masterScreenName == L"Orv Tester");
    CHECK(aol().screenNames == std::vector<std::wstring>{L"Orv Tester", L"SecondName"});
}

void checkChat(Running& running)
{
    CHECK(AOL_FindChat() == nullptr);
    const HWND room = running.host.enterRoom();
    CHECK(AOL_FindChat() == room);
    CHECK(chatDisplay(room) == running.host.displayWindow());
    CHECK(chatInput(room) == running.host.inputWindow());
    CHECK(hasClass(chatSendIcon(room), L"_AOL_Icon"));

    const std::wstring text = L"{S hello} \u00E4\u00F6 <b>bold</b>  two blanks";
    CHECK(TextToChat(text, kPutOnly));
    CHECK(GetAPITextEx(chatInput(room)) == text);
    CHECK(running.host.sent().empty());
    CHECK(TextToChat(text, kSendNow));
    CHECK(waitFor([&] { return running.host.sent().size() == 1; }));
    const std::wstring longText(800, L'x');
    CHECK(TextToChat(longText, kSendAfterPause));
    CHECK(waitFor([&] { return running.host.sent().size() == 2; }));
    CHECK(running.host.sent() == std::vector<std::wstring>{text, longText});

    // The Send button takes a press in the version's way.
    CHECK(TextToChat(L"by the button", kPutOnly));
    CHECK(clickAolIcon(chatSendIcon(room)));
    CHECK(waitFor([&] { return running.host.sent().size() == 3; }));

    running.host.command(L"leave");
    CHECK(waitFor([&] { return AOL_FindChat() == nullptr; }));
}

void checkCursor(Running& running)
{
    CHECK(AOL_KillCursor());
    CHECK(IsWindowEnabled(running.host.frame()));
    CHECK_FALSE(RunMenuByString(L"&No such item"));
}

void checkMail(int edition)
{
    const MailWindow first = AOL_OpenEMail();
    REQUIRE(first);
    CHECK(windowCaption(first.window) == writeMailCaption(edition));
    for (const HWND field : {first.to, first.copy, first.subject, first.body})
        CHECK(GetParent(field) == first.window);
    const MailWindow second = AOL_OpenEMail();
    REQUIRE(second);
    CHECK(second.window != first.window);

    const HWND attachments = AOL_OpenAttachments(second.window);
    REQUIRE(attachments);
    CHECK(windowCaption(attachments) == attachmentsCaption(edition));
    CHECK(postToAol(attachments, WM_CLOSE, 0, 0));
    CHECK(waitFor([&] { return !IsWindow(attachments); }));
}

void checkProfile(Running& running, int edition)
{
    const HWND profile = AOL_GetProfile(L"Joe Smith");
    REQUIRE(profile);
    CHECK(windowCaption(profile) == profileCaption(edition));
    CHECK(GetParent(profile) == running.host.mdi());
    CHECK(AOL_GetProfile(L"aol://bad") == nullptr);
}

void checkFindWindow(Running& running)
{
    const auto before = running.host.status()[L"documents"];
    CHECK(AOL_OpenFindWindow());
    CHECK(waitFor([&] { return running.host.status()[L"documents"] != before; }));
}

} // namespace

TEST_CASE("each sort of AOL is recognised, found and driven")
{
    for (const auto& sort : kSorts) {
        CAPTURE(sort.edition);
        CAPTURE(sort.version);
        Running running({.edition = sort.edition,
                         .version = sort.version,
                         .lateMs = sort.version > 4 ? 100 : 0});
        checkWindows(running, sort.edition, sort.version);
        checkChat(running);
        checkCursor(running);
        checkMail(sort.edition);
        checkProfile(running, sort.edition);
        checkFindWindow(running);
    }
}

TEST_CASE("rooms that AOL makes in other ways are found, too")
{
    for (const wchar_t* way : {L"create", L"ex", L"plain"}) {
        Running running({.version = 6,
                         .lateMs = 150,
                         .unicodeEdits = true,
                         .mdiCreation = way,
                         .more = {L"--chatform=1"}});
        const HWND room = running.host.enterRoom();
        CHECK(AOL_FindChat() == room);
        CHECK(TextToChat(L"hello", kSendNow));
        CHECK(waitFor([&] { return running.host.sent() == std::vector<std::wstring>{L"hello"}; }));
    }
}

TEST_CASE("without a chat room nothing is sent and the user is told")
{
    Running running(kUnitedStates, 5);
    Answer answer;
    CHECK_FALSE(TextToChat(L"hello", kSendNow));
    CHECK(answer.said(L"No AOL Chat Room visible!"));
    CHECK(running.host.sent().empty());
}

TEST_CASE("online is where the keyword box is")
{
    Running running(kCanada, 6);
    CHECK(IsAOLOnline());
    CHECK(RequireAOLOnline());
    running.host.command(L"signoff");
    CHECK(waitFor([] { return !IsAOLOnline(); }));
    CHECK(signedOnScreenName() == L"");
    CHECK(waitForSignOn(50) == L"");
    const auto choice = signOnChoice();
    REQUIRE(choice);
    CHECK(choice->count == 3);
    CHECK(choice->chosen == 0);
    Answer answer;
    CHECK_FALSE(RequireAOLOnline());
    CHECK(answer.said(L"You are not currently signed on!"));
}

TEST_CASE("AOL that hangs is not waited for")
{
    Running running(kUnitedStates, 5);
    const HWND room = running.host.enterRoom();
    REQUIRE(AOL_FindChat() == room);
    running.host.command(L"hang 5000");
    // AOL would take the text when it wakes: "not taken" is known before that.
    CHECK_FALSE(TextToChat(L"too late", kSendNow));
    CHECK(AOL_FindChat() == room);
    CHECK(GetAPITextEx(chatInput(room)) == L"");
    CHECK_FALSE(AOL_KillCursor());
    CHECK(waitFor([&] { return TextToChat(L"awake", kSendNow); }));
    CHECK(waitFor([&] {
        const auto sent = running.host.sent();
        return std::find(sent.begin(), sent.end(), L"awake") != sent.end();
    }));
}

TEST_CASE("a window without an Attach button is told")
{
    Running running(kUnitedStates, 6);
    const HWND room = running.host.enterRoom();
    Answer answer;
    CHECK(AOL_OpenAttachments(room) == nullptr);
    CHECK(answer.said(L"was unable to click the"));
}

TEST_CASE("windows of other programs are never AOL's")
{
    aol() = {};
    WNDCLASSW frameClass{};
    frameClass.lpfnWndProc = DefWindowProcW;
    frameClass.lpszClassName = L"AOL Frame25";
    frameClass.hInstance = GetModuleHandleW(nullptr);
    RegisterClassW(&frameClass);
    const HWND impostor =
        CreateWindowExW(0, L"AOL Frame25", L"America  Online", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200,
                        nullptr, nullptr, frameClass.hInstance, nullptr);
    REQUIRE(impostor);
    CHECK(AOLWindow() == nullptr);
    CHECK_FALSE(isAolWindow(impostor));
    CHECK_FALSE(clickAolIcon(impostor));
    CHECK_FALSE(pressEnter(impostor));
    {
        AolHost host;
        CHECK(AOLWindow() == host.frame());
        CHECK_FALSE(isAolWindow(impostor));
    }
    CHECK(waitFor([] { return AOLWindow() == nullptr; }));
    DestroyWindow(impostor);
    UnregisterClassW(L"AOL Frame25", frameClass.hInstance);
}

TEST_CASE("children are found by class and caption wherever they stand")
{
    const HWND parent = CreateWindowExW(0, L"Static", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                        nullptr, nullptr);
    const auto add = [&](const wchar_t* className, const wchar_t* caption) {
        return CreateWindowExW(0, className, caption, WS_CHILD, 0, 0, 1, 1, parent, nullptr,
                               nullptr, nullptr);
    };
    const HWND edit = add(L"Edit", L"first"), button = add(L"Button", L"Read me"),
               second = add(L"Edit", L"second");
    CHECK(FindChildByClass(parent, L"EDIT") == edit);
    CHECK(FindChildByClass(parent, L"edit", 2) == second);
    CHECK(FindChildByClass(parent, L"Edit", 3) == nullptr);
    // The search goes on after a window of another class, too.
    CHECK(FindNextByClass(button, L"Edit") == second);
    CHECK(FindNextByClass(second, L"Edit") == nullptr);
    CHECK(FindChildByTitle(parent, L"Read") == button);
    CHECK(FindChildByTitle(parent, L"read") == nullptr);
    CHECK(FindChildByClass(nullptr, L"Edit") == nullptr);
    CHECK(FindNextByClass(nullptr, L"Edit") == nullptr);
    CHECK(GetAPIText(nullptr) == L"");
    DestroyWindow(parent);
}
