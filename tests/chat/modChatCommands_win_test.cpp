// Every keyword of the table, typed into the room of a real AOL window or given to the processor.
#include "chat/modChatCommands.h"

#include "base/files.h"
#include "base/text.h"
#include "chat/ToolbarRoutes.h"
#include "chat/frmCommandPopup.h"
#include "chat/frmEditor.h"
#include "chat/frmFade.h"
#include "chat/frmMultiLine.h"
#include "chat/modRoomPeople.h"
#include "chat/modRoomText.h"
#include "chat/modShellOpen.h"
#include "core/modAOL.h"
#include "settings/Options.h"
#include "support/drive_win.h"
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
    Desk() : formerOpen(shellOpen)
    {
        opt::General::AutoCloseMsgBox.set(false);
        shellOpen = [this](const std::wstring& file, const std::wstring& arguments) {
            opened.push_back({file, arguments});
            return true;
        };
        bench.load();
        bench.enterRoom(L"Town Square");
    }
    ~Desk() { shellOpen = formerOpen; }

    /// Types a keyword into the room and sends it, as the user does.
    void type(std::wstring_view text)
    {
        REQUIRE(waitFor([&] { return frmToolbar::instance()->hooksSend(); }));
        REQUIRE(drive::activate(bench.host.frame()));
        const HWND input = bench.host.inputWindow();
        // Beside the toolbar, which may lie over the middle.
        REQUIRE(drive::click(input));
        drive::type(text);
        REQUIRE(waitFor([&] { return textOf(input) == text; }));
        drive::key(VK_RETURN);
    }
    /// Answers the box that comes up, and gives its text.
    std::wstring answer(const wchar_t* caption, const wchar_t* button = L"OK")
    {
        const HWND box = drive::window(caption);
        REQUIRE(box);
        std::wstring said;
        for (const HWND child : drive::children(box))
            if (const std::wstring text = drive::text(child); text.size() > said.size())
                said = text;
        CHECK(drive::press(box, button));
        CHECK(drive::gone(box));
        return said;
    }
    bool hasSentNothing() { return bench.host.sent().empty(); }

    ToolbarBench bench;
    std::vector<Opened> opened;
    std::function<bool(const std::wstring&, const std::wstring&)> formerOpen;
};

bool says(const std::wstring& text, const wchar_t* part)
{
    const bool found = text.find(part) != text.npos;
    if (!found)
        MESSAGE(to1252(text));
    return found;
}

} // namespace

TEST_CASE("a keyword typed in the room is carried out and never sent")
{
    Desk desk;
    int wavs = 0;
    toolbarRoutes().openWavs = [&] { ++wavs; };
    desk.type(L"/Wav List");
    CHECK(waitFor([&] { return wavs == 1; }));
    desk.type(L"/fadeon");
    CHECK(waitFor([] { return opt::Fader::On.get(); }));
    desk.type(L"/Fade Off");
    CHECK(waitFor([] { return !opt::Fader::On.get(); }));

    std::vector<std::wstring> notes;
    toolbarRoutes().logNote = [&](const std::wstring& note) { notes.push_back(note); };
    desk.type(L"/log:hello");
    opt::General::ChatLog.set(true);
    desk.type(L"/log:Hello There");
    CHECK(waitFor([&] { return !notes.empty(); }));
    CHECK(notes == std::vector<std::wstring>{L"Hello There"});

    desk.type(L"/multiline");
    CHECK(waitFor([] { return Form::find<frmMultiLine>() != nullptr; }));
    CHECK(desk.hasSentNothing());
}

TEST_CASE("the profile keyword asks for a name, and opens what it is given")
{
    Desk desk;
    desk.type(L"/profile:");
    const std::wstring said = desk.answer(L"Velora - Chat Keywords");
    CHECK(says(said, L"No screen name entered!"));
    CHECK(says(said, L"A screen name must be given to use the Profile keyword"));
    CHECK(says(said, L"Example: /profile:orvtester"));
    CHECK(desk.hasSentNothing());
    CHECK(ActivateCommand(L"profile:Rose3"));
    CHECK(desk.bench.host.document(L"Member Profile"));
}

TEST_CASE("mail and instant message keywords open AOL's windows for the name")
{
    Desk desk;
    CHECK(ActivateCommand(L"email:Rose3"));
    const HWND mail = desk.bench.host.document(L"Write Mail");
    REQUIRE(mail);
    CHECK(textOf(mailFields(mail).to) == L"Rose3");
    CHECK(ActivateCommand(L"im:Joe Smith"));
    const HWND im = [&] {
        HWND found = nullptr;
        waitFor(
            [&] { return (found = desk.bench.host.document(L"Send Instant Message")) != nullptr; });
        return found;
    }();
    REQUIRE(im);
    CHECK(waitFor([&] { return textOf(childOfClass(im, L"_AOL_Edit")) == L"Joe Smith"; }));
    // What is no name gets no further.
    PostMessageW(nullptr, WM_NULL, 0, 0);
    postCall([] { ActivateCommand(L"im:no/name"); });
    CHECK(says(desk.answer(L"Velora - Chat Keywords"), L"no screen name"));
}

TEST_CASE("other words are the user's commands, web addresses or keywords of AOL")
{
    Desk desk;
    writeSetting(L"Commands", L"home", L"http://www.example.com/a b");
    writeSetting(L"Commands", L"nws", L"news");
    CHECK(ActivateCommand(L"Home"));
    CHECK(ActivateCommand(L"nws"));
    CHECK(ActivateCommand(L"www.example.org"));
    CHECK(ActivateCommand(L"stocks\" --evil=1"));
    REQUIRE(desk.opened.size() == 4);
    CHECK(desk.opened[0].file == L"http://www.example.com/ab");
    CHECK(desk.opened[1].file == desk.bench.host.folder() + L"\\waol.exe");
    CHECK(desk.opened[1].arguments == L"-snews");
    CHECK(desk.opened[2].file == L"http://www.example.org");
    CHECK(desk.opened[3].arguments == L"-sstocks--evil=1");
    // For once with the real AOL.
    shellOpen = desk.formerOpen;
    CHECK(ActivateCommand(L"gardening"));
    CHECK(waitFor([&] { return desk.bench.host.document(L"gardening") != nullptr; }));
}

TEST_CASE("hushkit hushes and lets sounds be heard again")
{
    Desk desk;
    int stopped = 0;
    toolbarRoutes().stopSounds = [&] { ++stopped; };
    REQUIRE(opt::General::WavDetect.get());
    postCall([] { ActivateCommand(L"hushkit"); });
    CHECK(says(desk.answer(L"Velora - Hushkit"), L"Hushkit is on."));
    CHECK(stopped == 1);
    CHECK_FALSE(opt::General::WavDetect.get());
    postCall([] { ActivateCommand(L"Hush Kit"); });
    CHECK(says(desk.answer(L"Velora - Hushkit"), L"Hushkit is off."));
    CHECK(opt::General::WavDetect.get());
    CHECK(stopped == 1);
}

TEST_CASE("the advertisement goes out once a minute, and needs a room")
{
    Desk desk;
    REQUIRE(typeInRoom(L"half a line"));
    CHECK(ActivateCommand(L"adv"));
    CHECK(waitFor([&] { return desk.bench.host.sent().size() == 1; }));
    CHECK(says(desk.bench.host.sent()[0], L"Velora"));
    CHECK(textOf(desk.bench.host.inputWindow()) == L"half a line"); // the user's own stays
    postCall([] { ActivateCommand(L"advertise"); });
    CHECK(says(desk.answer(L"Velora - Advertise"), L"minute"));
    CHECK(desk.bench.host.sent().size() == 1);
    desk.bench.host.command(L"leave");
    postCall([] { ActivateCommand(L"adv"); });
    CHECK(says(desk.answer(L"Velora"), L"No valid chat room found!"));
}

TEST_CASE("a keyword whose window is not there says so, and stays in the chat box")
{
    Desk desk;
    toolbarRoutes().showOptions = nullptr;
    for (const wchar_t* keyword : {L"/options", L"/imoff"}) {
        desk.type(keyword);
        CHECK(says(desk.answer(L"Velora"), L"cannot be opened!"));
        CHECK(waitFor([&] { return textOf(desk.bench.host.inputWindow()) == keyword; }));
        SendMessageW(desk.bench.host.inputWindow(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L""));
    }
    bool off = false;
    toolbarRoutes().imSwitch = [&](bool on) { off = !on; };
    CHECK(ActivateCommand(L"IM Off"));
    CHECK(off);
    CHECK(ActivateCommand(L"imon"));
    CHECK_FALSE(off);
    CHECK(desk.hasSentNothing());
}

TEST_CASE("one editor at a time, with the refusal of each")
{
    Desk desk;
    CHECK(ActivateCommand(L"edit"));
    REQUIRE(Form::find<frmEditor>());
    CHECK(Form::find<frmEditor>()->list() == EditorList::Commands);
    postCall([] { ActivateCommand(L"fwedit"); });
    CHECK(says(desk.answer(L"Velora"),
               L"The Glintune Editor may not be opened while the Hug Editor is open."));
    postCall([] { ActivateCommand(L"edit"); });
    const std::wstring said = desk.answer(L"Velora");
    CHECK(says(said, L"Cannot open the Chat Room Keyword Editor."));
    CHECK(says(said, L"Please close the Alias Editor before attempting to perform this function."));
    Form::find<frmEditor>()->close();
    doEvents();
    CHECK(ActivateCommand(L"fw edit"));
    CHECK(Form::find<frmEditor>()->list() == EditorList::Glintunes);
}

TEST_CASE("the next hug style, the fade panel, the people")
{
    Desk desk;
    const std::wstring before = opt::Hugs::Current.get();
    postCall([] { ActivateCommand(L"change hug"); });
    CHECK(says(desk.answer(L"Velora - Hugs"), L"Orv Tester"));
    CHECK(opt::Hugs::Current.get() != before);
    CHECK(ActivateCommand(L"show"));
    CHECK(Form::find<frmFade>());
    CHECK(ActivateCommand(L"hide"));
    CHECK_FALSE(Form::find<frmFade>());
    desk.bench.host.command(L"people +Some Body");
    const auto people = peopleInRoom(AOL_FindChat());
    CHECK(std::find(people.begin(), people.end(), L"Some Body") != people.end());
    CHECK(std::find(people.begin(), people.end(), L"Orv Tester") != people.end());
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
    drive::key(VK_DOWN);
    drive::key(VK_RETURN);
    CHECK(waitFor([&] { return textOf(desk.bench.host.inputWindow()) == L"/advertise"; }));
    CHECK(drive::gone(list));
    SendMessageW(desk.bench.host.inputWindow(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L""));

    opt::ChatKeywords::KeywordPopup.set(true);
    REQUIRE(waitFor([&] { return frmToolbar::instance()->hooksSend(); }));
    REQUIRE(drive::activate(desk.bench.host.frame()));
    REQUIRE(drive::click(desk.bench.host.inputWindow()));
    drive::type(L"/");
    list = drive::window(L"Velora - Keywords");
    REQUIRE(list);
    drive::type(L"fad"); // still goes into AOL's box
    const HWND box = drive::child(list, L"ListBox");
    CHECK(waitFor([&] { return SendMessageW(box, LB_GETCOUNT, 0, 0) == 3; }));
    CHECK(textOf(desk.bench.host.inputWindow()) == L"/fad");
    REQUIRE(drive::clickAt(box, 10, 5));
    CHECK(waitFor([&] { return textOf(desk.bench.host.inputWindow()) == L"/fade on"; }));
    CHECK(drive::gone(list));
    CHECK(desk.hasSentNothing());
}
