// What leaves for the room when the user sends with real keys and the mouse.
#include "base/text.h"
#include "chat/frmSendLines.h"
#include "chat/modCurrentFade.h"
#include "chat/modFadeRuns.h"
#include "core/modAOL.h"
#include "settings/Options.h"
#include "support/drive_win.h"
#include "support/toolbar_win.h"
#include "ui/MessageLoop.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

/// AOL with the toolbar over it, in a room, its input box ready to be typed in.
struct Room {
    explicit Room(const AolHost::Options& options = {}) : bench(options)
    {
        opt::General::AutoCloseMsgBox.set(false);
        opt::Fader::NewFadeAfterUse.set(false);
        Fade fade;
        fade.FadeNumber = 2;
        fade.colours = {255, 0xFF0000};
        setCurrentFade(fade);
        // Out of the way of the room's box and buttons.
        opt::Toolbar::Position.set(L"20,0");
        opt::Fader::ShowFadePanelWithChat.set(false);
        bench.load();
        bench.enterRoom(L"Town Square");
        REQUIRE(drive::activate(bench.host.frame()));
        input = bench.host.inputWindow();
        send = chatSendIcon(bench.host.roomWindow());
        REQUIRE(input);
        REQUIRE(send);
        REQUIRE(waitFor([&] { return frmToolbar::instance()->hooksSend(); }));
    }

    void type(std::wstring_view text)
    {
        REQUIRE(drive::click(input));
        drive::type(text);
        REQUIRE(waitFor([&] { return textOf(input) == text; }));
    }
    /// The lines that have reached the room, once there are `count` of them.
    std::vector<std::wstring> sent(std::size_t count)
    {
        // Not by a command at once: AOL answers none while it asks the toolbar about a key, and
        // the toolbar answers only while this thread serves its messages.
        if (count > 0)
            waitFor([&] { return textOf(input).empty(); });
        waitFor([&] { return bench.host.sent().size() >= count; });
        // A line sent twice would come right behind.
        bench.host.command(L"say Joe Smith: done " + std::to_wstring(++marks_));
        bench.hears(L"Joe Smith|done " + std::to_wstring(marks_));
        return bench.host.sent();
    }

    ToolbarBench bench;
    HWND input = nullptr, send = nullptr;

private:
    int marks_ = 0;
};

enum class Way { enter, mouse, space };

void sendBy(Room& room, Way way)
{
    if (way == Way::enter)
        drive::key(VK_RETURN);
    else if (way == Way::mouse)
        REQUIRE(drive::click(room.send));
    else {
        // As with the Tab key: the focus goes to Send.
        REQUIRE(aolLink().setFocus(room.send));
        drive::key(VK_SPACE);
    }
}

std::wstring faded(std::wstring text)
{
    const SameFade same;
    FadeEngine(text);
    return text;
}

/// As bytes, so that a failure shows them.
std::string joined(const std::vector<std::wstring>& lines)
{
    std::string all;
    for (const std::wstring& line : lines)
        all += to1252(line) + "\n";
    return all;
}

bool isMarked(const std::wstring& text)
{
    return text.find(L"<FONT COLOR=#") != text.npos;
}

} // namespace

TEST_CASE("a faded line leaves once, whichever way it is sent")
{
    std::vector<std::pair<int, int>> kinds;
    for (int version = 3; version <= 7; ++version)
        for (const int edition : {0, 4, 5})
            kinds.emplace_back(edition, version);
    for (const auto& [edition, version] : kinds) {
        CAPTURE(version);
        CAPTURE(edition);
        Room room({.edition = edition, .version = version});
        opt::Fader::On.set(true);
        std::vector<std::wstring> expected;
        for (const Way way : {Way::enter, Way::mouse, Way::space}) {
            CAPTURE(static_cast<int>(way));
            room.type(L"hello you");
            expected.push_back(faded(L"hello you"));
            sendBy(room, way);
            const auto lines = room.sent(expected.size());
            CHECK(joined(lines) == joined(expected));
            CHECK(textOf(room.input).empty());
        }
        CHECK(isMarked(expected[0]));
    }
}

TEST_CASE("the Enter key sends once whichever of its messages AOL acts on")
{
    for (const wchar_t* habit : {L"--enter=char", L"--enter=keydown"}) {
        CAPTURE(habit);
        Room room({.more = {habit}});
        opt::Fader::On.set(true);
        room.type(L"one");
        drive::key(VK_RETURN);
        CHECK(room.sent(1) == std::vector<std::wstring>{faded(L"one")});
        opt::Fader::On.set(false);
        room.type(L"two");
        drive::key(VK_RETURN);
        CHECK(room.sent(2) == std::vector<std::wstring>{faded(L"one"), L"two"});
    }
}

TEST_CASE("what is no business of ours goes out as typed")
{
    Room room;
    opt::Fader::On.set(true);
    std::vector<std::wstring> expected;
    const auto sends = [&](std::wstring_view text, std::wstring line) {
        CAPTURE(line);
        room.type(text);
        drive::key(VK_RETURN);
        expected.push_back(std::move(line));
        CHECK(joined(room.sent(expected.size())) == joined(expected));
    };
    sends(L"/x/y", L"/x/y");
    opt::Fader::FadeWavOnly.set(true);
    sends(L"plain", L"plain");
    opt::Fader::FadeWavOnly.set(false);
    opt::ChatKeywords::Enabled.set(false);
    sends(L"/wavlist", faded(L"/wavlist"));
    // AOL does what it does with a blank text; nothing of ours is added.
    room.type(L"   ");
    drive::key(VK_RETURN);
    for (const std::wstring& line : room.sent(0))
        CHECK((line == L"   "
               || std::find(expected.begin(), expected.end(), line) != expected.end()));
}

TEST_CASE("a press of Send that is drawn off the button sends nothing")
{
    Room room;
    opt::Fader::On.set(true);
    room.type(L"not yet");
    SendMessageW(room.send, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    SendMessageW(room.send, WM_LBUTTONUP, 0, MAKELPARAM(static_cast<WORD>(-50), 3));
    CHECK(room.sent(0).empty());
    CHECK(textOf(room.input) == L"not yet");
    REQUIRE(drive::click(room.send));
    CHECK(room.sent(1) == std::vector<std::wstring>{faded(L"not yet")});
}

TEST_CASE("a line that AOL does not take comes back as it was typed")
{
    Room room;
    opt::Fader::On.set(true);
    room.type(L"keep me");
    // AOL hangs while the line is handed over: nothing is lost, nothing sent twice.
    room.bench.host.command(L"hang 2500");
    drive::key(VK_RETURN);
    const auto settled = [&] {
        return !room.bench.host.sent().empty() || textOf(room.input) == L"keep me";
    };
    CHECK(waitFor(settled));
    const auto lines = room.sent(0);
    const bool sentOnce = lines == std::vector<std::wstring>{faded(L"keep me")};
    const bool kept = lines.empty() && textOf(room.input) == L"keep me";
    const bool plainOnce = lines == std::vector<std::wstring>{L"keep me"};
    CHECK((sentOnce || kept || plainOnce));
}

TEST_CASE("a line that the room does not take stays in the box as it was typed")
{
    Room room;
    opt::Fader::On.set(true);
    room.bench.host.command(L"closed on");
    room.type(L"not now");
    for (const Way way : {Way::enter, Way::mouse, Way::space}) {
        CAPTURE(static_cast<int>(way));
        sendBy(room, way);
        CHECK(room.sent(0).empty());
        CHECK(waitFor([&] { return textOf(room.input) == L"not now"; }));
    }
    room.bench.host.command(L"closed off");
    sendBy(room, Way::mouse);
    CHECK(room.sent(1) == std::vector<std::wstring>{faded(L"not now")});
}

TEST_CASE("a room that is built late is hooked when it is there")
{
    Room room;
    opt::Fader::On.set(true);
    room.bench.host.command(L"leave");
    room.bench.host.command(L"late 600000");
    room.bench.host.command(L"room Later");
    doEvents();
    room.bench.host.command(L"build");
    REQUIRE(waitFor([&] { return frmToolbar::instance()->hooksSend(); }));
    room.input = room.bench.host.inputWindow();
    room.type(L"late");
    drive::key(VK_RETURN);
    CHECK(room.sent(1) == std::vector<std::wstring>{faded(L"late")});
}

TEST_CASE("without the toolbar AOL is as it was")
{
    Room room;
    opt::Fader::On.set(true);
    frmToolbar::instance()->UnhookSubclasses();
    room.type(L"plain again");
    drive::key(VK_RETURN);
    CHECK(waitFor([&] { return !room.bench.host.sent().empty(); }));
    CHECK(room.bench.host.sent() == std::vector<std::wstring>{L"plain again"});
}

TEST_CASE("a long text goes out line by line, and Cancel gives the rest back")
{
    Room room;
    opt::ChatExtender::CharsInLine.set(20);
    opt::ChatExtender::MultilineBurst.set(L"0.10");
    const std::wstring text = L"one two three four five six seven eight nine";
    room.type(text);
    drive::key(VK_RETURN);
    CHECK(room.sent(3)
          == std::vector<std::wstring>{L"one two three four", L"five six seven eight", L"nine"});
    CHECK(waitFor([] { return Form::find<frmSendLines>() == nullptr; }));

    opt::ChatExtender::MultilineBurst.set(L"60");
    REQUIRE(drive::activate(room.bench.host.frame()));
    room.type(text);
    drive::key(VK_RETURN);
    const HWND progress = drive::window(L"Velora - Sending");
    REQUIRE(progress);
    CHECK(room.sent(4).back() == L"one two three four");
    CHECK(drive::press(progress, L"Cancel"));
    CHECK(waitFor([&] { return textOf(room.input) == L"five six seven eight nine"; }));
    CHECK(room.bench.host.sent().size() == 4);
}
