// Every keyword of the table, typed into the room of a real AOL window or given to the processor.
#include "chat/modChatCommands.h"

#include "base/text.h"
#include "chat/ToolbarRoutes.h"
#include "chat/frmCommandPopup.h"
#include "chat/frmEditor.h"
#include "chat/frmFade.h"
#include "chat/frmMultiLine.h"
#include "chat/modRoomPeople.h"
#include "chat/modRoomText.h"
#include "chat/modShellOpen.h"
#include "core/frmOptions.h"
#include "core/modAOL.h"
#include "settings/Options.h"
#include "support/answer_win.h"
#include "support/toolbar_win.h"
#include "ui/MessageLoop.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

struct Opened {
    std::wstring file, arguments;
};

/// AOL with a room and the toolbar; what is opened outside the program is written down instead.
struct Desk {
    explicit Desk(const AolHost::Options& options = {}) : bench(options), formerOpen(shellOpen)
    {
        opt::General::AutoCloseMsgBox.set(false);
        // Out of the way of the room's controls.
        opt::Toolbar::Position.set(L"20,0");
        shellOpen = [this](const std::wstring& file, const std::wstring& arguments) {
            opened.push_back({file, arguments});
            return true;
        };
        bench.load();
        bench.enterRoom(L"Town Square");
        input = bench.host.inputWindow();
    }
    ~Desk() { shellOpen = formerOpen; }

    /// Types a text into the room and sends it, as the user does.
    void type(std::wstring_view text)
    {
        REQUIRE(waitFor([&] { return frmToolbar::instance()->hooksSend(); }));
        REQUIRE(drive::activate(bench.host.frame()));
        REQUIRE(drive::click(input));
        drive::type(text);
        REQUIRE(waitFor([&] { return textOf(input) == text; }));
        drive::key(VK_RETURN);
    }
    /// The same; goes on when AOL's box is empty. (Not by asking the stand-in, which answers
    /// nothing while it asks the toolbar about the key.)
    void enter(std::wstring_view text)
    {
        type(text);
        CHECK(waitFor([&] { return textOf(input).empty(); }));
    }
    /// Runs `ask` and answers the box that it brings up, which must hold all of `parts`.
    void box(const std::function<void()>& ask, const wchar_t* caption,
             std::initializer_list<const wchar_t*> parts)
    {
        const Answer answer(L"OK", caption);
        ask();
        REQUIRE(waitFor([&] { return answer.came(); }));
        for (const wchar_t* part : parts) {
            CAPTURE(to1252(part));
            CHECK(answer.said(part));
        }
    }
    void runs(const wchar_t* keyword, const wchar_t* caption,
              std::initializer_list<const wchar_t*> parts)
    {
        box([&] { postCall([keyword] { ActivateCommand(keyword); }); }, caption, parts);
    }
    /// What went to the room, a line each, as bytes, so that a failure shows them.
    std::string sent()
    {
        std::string all;
        for (const std::wstring& line : bench.host.sent())
            all += to1252(line) + "\n";
        return all;
    }

    ToolbarBench bench;
    HWND input = nullptr;
    std::vector<Opened> opened;
    std::function<bool(const std::wstring&, const std::wstring&)> formerOpen;
};

} // namespace

TEST_CASE("keywords typed with real keys are carried out and never sent, in every language")
{
    for (const int edition : {0, 4, 5}) {
        CAPTURE(edition);
        Desk desk({.edition = edition});
        int wavs = 0;
        toolbarRoutes().openWavs = [&] { ++wavs; };
        std::vector<std::wstring> notes;
        toolbarRoutes().logNote = [&](const std::wstring& note) { notes.push_back(note); };
        desk.enter(L"/Wav List");
        CHECK(waitFor([&] { return wavs == 1; }));
        desk.enter(L"/log:hello"); // rooms are not logged
        desk.enter(L"/fadeon");
        CHECK(waitFor([] { return opt::Fader::On.get(); }));
        desk.enter(L"/Fade Off");
        CHECK(waitFor([] { return !opt::Fader::On.get(); }));
        opt::General::ChatLog.set(true);
        desk.enter(L"/log:Hello There");
        CHECK(waitFor([&] { return !notes.empty(); }));
        CHECK(notes == std::vector<std::wstring>{L"Hello There"});

        desk.box([&] { desk.type(L"/profile:"); }, L"Velora - Chat Keywords",
                 {L"No screen name entered!",
                  L"A screen name must be given to use the Profile keyword",
                  L"Example: /profile:orvtester"});
        // The name can be typed behind it.
        CHECK(waitFor([&] { return textOf(desk.input) == L"/profile:"; }));
        typeInRoom(L"");
        CHECK(desk.sent() == "");
        desk.enter(L"/x/y");
        CHECK(waitFor([&] { return desk.sent() == "/x/y\n"; }));
        CHECK(wavs == 1);
    }
}

TEST_CASE("what a keyword opens")
{
    Desk desk;
    const AolHost& host = desk.bench.host;

    {
        INFO("a window that is not there: a message, and the keyword stays in the chat box");
        desk.box([&] { desk.type(L"/imoff"); }, L"Velora", {L"cannot be opened!"});
        CHECK(waitFor([&] { return textOf(desk.input) == L"/imoff"; }));
        typeInRoom(L"");
        toolbarRoutes().showOptions = [] { frmOptions::showOptions(L"Chat Room"); };
        desk.enter(L"/Opt");
        CHECK(waitFor([] { return Form::find<frmOptions>() != nullptr; }));
        Form::find<frmOptions>()->close();
        bool off = false;
        toolbarRoutes().imSwitch = [&](bool on) { off = !on; };
        CHECK(ActivateCommand(L"IM Off"));
        CHECK(off);
        CHECK(ActivateCommand(L"imon"));
        CHECK_FALSE(off);
        CHECK(desk.sent() == "");
    }
    {
        INFO("AOL's windows: profile, mail, instant message");
        CHECK(ActivateCommand(L"profile:Rose3"));
        CHECK(desk.bench.host.document(L"Member Profile"));
        CHECK(ActivateCommand(L"email:Rose3"));
        const HWND mail = desk.bench.host.document(L"Write Mail");
        REQUIRE(mail);
        CHECK(textOf(mailFields(mail).to) == L"Rose3");
        CHECK(ActivateCommand(L"im:Joe Smith"));
        HWND im = nullptr;
        REQUIRE(waitFor([&] { return (im = desk.bench.host.document(L"Send Instant Message")); }));
        CHECK(waitFor([&] { return textOf(childOfClass(im, L"_AOL_Edit")) == L"Joe Smith"; }));
        desk.runs(L"im:no/name", L"Velora - Chat Keywords", {L"no screen name"});
    }
    {
        INFO("the user's commands, web addresses and keywords of AOL");
        writeSetting(L"Commands", L"home", L"http://www.example.com/a b");
        writeSetting(L"Commands", L"nws", L"news");
        CHECK(ActivateCommand(L" ho me"));
        CHECK(ActivateCommand(L"nws"));
        CHECK(ActivateCommand(L"www.example.org"));
        CHECK(ActivateCommand(L"stocks\" --evil=1"));
        REQUIRE(desk.opened.size() == 4);
        CHECK(desk.opened[0].file == L"http://www.example.com/ab");
        CHECK(desk.opened[1].file == host.folder() + L"\\waol.exe");
        CHECK(desk.opened[1].arguments == L"-snews");
        CHECK(desk.opened[2].file == L"http://www.example.org");
        CHECK(desk.opened[3].arguments == L"-sstocks--evil=1");
        // For once with the real AOL.
        const auto written = std::exchange(shellOpen, desk.formerOpen);
        CHECK(ActivateCommand(L"gardening"));
        CHECK(waitFor([&] { return desk.bench.host.document(L"gardening") != nullptr; }));
        shellOpen = written;
        desk.opened.clear();
    }
    {
        INFO("hushkit hushes, and lets sounds be heard again");
        int stopped = 0;
        toolbarRoutes().stopSounds = [&] { ++stopped; };
        REQUIRE(opt::General::WavDetect.get());
        desk.runs(L"hushkit", L"Velora - Hushkit", {L"Hushkit is on."});
        CHECK(stopped == 1);
        CHECK_FALSE(opt::General::WavDetect.get());
        desk.runs(L"Hush Kit", L"Velora - Hushkit", {L"Hushkit is off."});
        CHECK(opt::General::WavDetect.get());
        CHECK(stopped == 1);
    }
    {
        INFO("one editor at a time, with the refusal of each");
        CHECK(ActivateCommand(L"edit"));
        REQUIRE(Form::find<frmEditor>());
        CHECK(Form::find<frmEditor>()->list() == EditorList::Commands);
        desk.runs(L"fwedit", L"Velora",
                  {L"The Glintune Editor may not be opened while the Hug Editor is open."});
        desk.runs(L"edit", L"Velora",
                  {L"Cannot open the Chat Room Keyword Editor.",
                   L"Please close the Alias Editor before attempting to perform this function."});
        Form::find<frmEditor>()->close();
        doEvents();
        CHECK(ActivateCommand(L"fw edit"));
        CHECK(Form::find<frmEditor>()->list() == EditorList::Glintunes);
        Form::find<frmEditor>()->close();
    }
    {
        INFO("the next hug style, the fade panel, the multi-line window, the help");
        const std::wstring before = opt::Hugs::Current.get();
        desk.runs(L"change hug", L"Velora - Hugs", {L"Orv Tester"});
        CHECK(opt::Hugs::Current.get() != before);
        CHECK(ActivateCommand(L"show"));
        CHECK(Form::find<frmFade>());
        CHECK(ActivateCommand(L"hide"));
        CHECK_FALSE(Form::find<frmFade>());
        CHECK(ActivateCommand(L"multiline"));
        CHECK(Form::find<frmMultiLine>());
        CHECK(ActivateCommand(L"help"));
        REQUIRE(desk.opened.size() == 1);
    }
    {
        INFO("the advertisement, once a minute and in a room only");
        REQUIRE(typeInRoom(L"half a line"));
        CHECK(ActivateCommand(L"adv"));
        CHECK(waitFor([&] { return !desk.sent().empty(); }));
        const std::string said = desk.sent();
        CHECK(said.find("Velora") != said.npos);
        CHECK(textOf(desk.input) == L"half a line"); // the user's own stays
        desk.runs(L"advertise", L"Velora - Advertise", {L"minute"});
        CHECK(desk.sent() == said);
        desk.bench.host.command(L"leave");
        desk.runs(L"adv", L"Velora", {L"No valid chat room found!"});
    }
}

TEST_CASE("the keyword list puts a keyword into the chat box, and follows what is typed")
{
    Desk desk;
    writeSetting(L"Commands", L"fads", L"news");
    CHECK(keywordList(L"").size() == 10);
    CHECK(keywordList(L"FA D") == std::vector<std::wstring>{L"fade on", L"fade off", L"fads"});

    frmCommandPopup::showList(false);
    HWND list = drive::window(L"Velora - Keywords");
    REQUIRE(list);
    REQUIRE(drive::activate(list));
    drive::key(VK_DOWN);
    drive::key(VK_RETURN);
    CHECK(drive::until([&] { return textOf(desk.input) == L"/advertise"; }));
    CHECK(drive::gone(list));
    // The user goes on in AOL.
    CHECK(waitFor([&] { return GetForegroundWindow() == desk.bench.host.frame(); }));
    typeInRoom(L"");

    opt::ChatKeywords::KeywordPopup.set(true);
    REQUIRE(drive::activate(desk.bench.host.frame()));
    REQUIRE(drive::click(desk.input));
    drive::type(L"/");
    list = drive::window(L"Velora - Keywords");
    REQUIRE(list);
    drive::type(L"fad"); // still goes into AOL's box
    const HWND box = drive::child(list, L"ListBox");
    CHECK(waitFor([&] { return SendMessageW(box, LB_GETCOUNT, 0, 0) == 3; }));
    CHECK(textOf(desk.input) == L"/fad");
    REQUIRE(drive::clickAt(box, 10, 5));
    CHECK(waitFor([&] { return textOf(desk.input) == L"/fade on"; }));
    CHECK(drive::gone(list));
    CHECK(desk.sent() == "");
}
