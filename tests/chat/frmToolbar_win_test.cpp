#include "chat/frmToolbar.h"

#include "base/files.h"
#include "base/text.h"
#include "chat/ToolbarRoutes.h"
#include "chat/clsChatLogger.h"
#include "chat/frmFade.h"
#include "core/modAOL.h"
#include "settings/Options.h"
#include "support/drive_win.h"
#include "support/tempdir.h"
#include "support/toolbar_win.h"
#include "ui/WinGeometry.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

/// The panel's upper right corner as seen from the frame's.
Point corner(const ToolbarBench& bench)
{
    const Rect frame = windowRect(bench.host.frame());
    const Rect panel = windowRect(frmToolbar::instance()->hwnd());
    return {frame.right - panel.right, panel.top - frame.top};
}

void moveFrame(const ToolbarBench& bench, int x, int y, int width, int height)
{
    SetWindowPos(bench.host.frame(), nullptr, x, y, width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
    REQUIRE(waitFor([&] {
        return windowRect(bench.host.frame()) == Rect{x, y, x + width, y + height};
    }));
}

} // namespace

TEST_CASE("the panel lies over AOL's frame, follows it and hides with it")
{
    ToolbarBench bench;
    const HWND panel = bench.load().hwnd();
    CHECK(GetWindow(panel, GW_OWNER) == bench.host.frame());
    const LONG style = GetWindowLongW(panel, GWL_EXSTYLE);
    CHECK((style & WS_EX_TOOLWINDOW) != 0);
    CHECK((style & WS_EX_NOACTIVATE) != 0);
    for (const wchar_t* name : {L"Wav List", L"Menu"})
        CHECK(drive::child(panel, name) != nullptr);

    moveFrame(bench, 40, 60, 800, 600);
    const auto settled = [&] { return corner(bench).x > 0 && corner(bench).y > 0; };
    REQUIRE(waitFor(settled));
    const Point place = corner(bench);
    for (const Rect& next : {Rect{200, 120, 1000, 720}, Rect{10, 30, 1110, 830}}) {
        moveFrame(bench, next.left, next.top, next.width(), next.height());
        CHECK(waitFor([&] { return corner(bench) == place; }));
    }

    ShowWindowAsync(bench.host.frame(), SW_MINIMIZE);
    CHECK(waitFor([&] { return !IsWindowVisible(panel); }));
    ShowWindowAsync(bench.host.frame(), SW_RESTORE);
    CHECK(waitFor([&] { return IsWindowVisible(panel) && corner(bench) == place; }));
}

TEST_CASE("using the panel leaves AOL in front, with its focus")
{
    ToolbarBench bench;
    frmToolbar& toolbar = bench.load();
    moveFrame(bench, 40, 60, 800, 600);
    bench.enterRoom(L"Town Square");
    REQUIRE(drive::activate(bench.host.frame()));
    const HWND input = bench.host.inputWindow();
    REQUIRE(drive::click(input));
    drive::type(L"half a ");
    REQUIRE(waitFor([&] { return corner(bench).x > 0 && corner(bench).y > 0; }));
    CHECK(drive::clickAt(toolbar.hwnd(), 5, windowRect(toolbar.hwnd()).height() / 2));
    CHECK(GetForegroundWindow() == bench.host.frame());
    // What is typed next still goes into the room's input box.
    drive::type(L"sentence");
    CHECK(waitFor([&] { return textOf(input) == L"half a sentence"; }));
}

TEST_CASE("lines are heard from the room that is open, each once, own ones marked")
{
    ToolbarBench bench;
    bench.load();
    bench.host.enterRoom(L"First Room");
    bench.host.command(L"say Early Bird: before we listened");
    bench.enterRoom(L"First Room");
    bench.host.command(L"say Joe Smith: hello: there");
    CHECK(bench.hears(L"Joe Smith|hello: there"));
    REQUIRE(TextToChat(L"from me", kSendNow));
    CHECK(bench.hears(L"Orv Tester|from me|own"));

    bench.host.command(L"leave");
    CHECK(waitFor([&] { return !frmToolbar::instance()->scannedRoom(); }));
    bench.enterRoom(L"Second Room");
    bench.host.command(L"say Ann: second");
    CHECK(bench.hears(L"Ann|second"));
    for (int i = 0; i < 200; ++i)
        bench.host.command(L"say Ann: line " + std::to_wstring(i));
    CHECK(bench.hears(L"Ann|line 199"));
    std::vector<std::wstring> lines;
    for (const std::wstring& line : bench.heard)
        if (line.starts_with(L"Ann|line "))
            lines.push_back(line);
    REQUIRE(lines.size() == 200);
    for (int i = 0; i < 200; ++i)
        CHECK(lines[i] == L"Ann|line " + std::to_wstring(i));
    for (const std::wstring& line : bench.heard)
        CHECK(line.find(L"before we listened") == std::wstring::npos);
}

TEST_CASE("the rooms that the user goes through are in the chat log, each with entry and exit")
{
    ToolbarBench bench;
    const TempDir dir;
    clsChatLogger logger(dir.path() + L"\\chat logs", [] { return std::wstring(L"Me"); });
    ToolbarRoutes& routes = toolbarRoutes();
    routes.roomEntered = [&](const std::wstring& caption) { logger.enterRoom(caption); };
    routes.roomLeft = [&] { logger.leaveRoom(); };
    routes.logLine = [&](const std::wstring& name, const std::wstring& message) {
        logger.AppendChatLog(name, message);
    };
    opt::General::ChatLog.set(true);
    bench.load();
    const auto log = [&](const wchar_t* room) {
        // The times differ from run to run.
        std::wstring kept;
        const auto bytes = readFile(dir.path() + L"\\chat logs\\Me\\" + room + L".log");
        for (const std::wstring& line : splitLines(from1252(bytes.value_or("(none)"))))
            kept += line.substr(0, line.find(L" on ")) + L"|";
        return kept;
    };
    bench.enterRoom(L"First Room");
    bench.host.command(L"say Joe Smith: hello");
    CHECK(bench.hears(L"Joe Smith|hello"));
    bench.enterRoom(L"Second Room");
    CHECK(waitFor([&] {
        return log(L"First Room")
               == L"Log Entry:\tEntered \"First Room\"|Joe Smith:\thello|Log Entry:\tExited room|";
    }));
    // The same window becomes another room: AOL's host says so.
    bench.host.command(L"move Third Room");
    CHECK(waitFor([&] { return log(L"Third Room").starts_with(L"Log Entry:\tEntered"); }));
    CHECK(log(L"Second Room") == L"Log Entry:\tEntered \"Second Room\"|Log Entry:\tExited room|");
    bench.host.command(L"leave");
    CHECK(waitFor([&] { return log(L"Third Room").ends_with(L"Log Entry:\tExited room|"); }));
    CHECK(listFolder(dir.path() + L"\\chat logs\\Me", L"*").size() == 3);
}

TEST_CASE("the fade panel comes and goes with the room while the fader is on")
{
    ToolbarBench bench;
    bench.load();
    bench.enterRoom(L"First Room");
    CHECK_FALSE(Form::find<frmFade>());
    bench.host.command(L"leave");
    opt::Fader::On.set(true);
    bench.enterRoom(L"Second Room");
    REQUIRE(Form::find<frmFade>());
    // That it leaves the focus in AOL cannot be seen here: X window managers focus new windows.
    CHECK(IsWindowVisible(Form::find<frmFade>()->hwnd()));
    bench.host.command(L"leave");
    CHECK(waitFor([] { return !Form::find<frmFade>(); }));
    opt::Fader::ShowFadePanelWithChat.set(false);
    bench.enterRoom(L"Third Room");
    CHECK_FALSE(Form::find<frmFade>());
}

TEST_CASE("the end of AOL is told once, whatever way it ends")
{
    for (const bool killed : {false, true}) {
        CAPTURE(killed);
        ToolbarBench bench;
        const HWND panel = bench.load().hwnd();
        bench.enterRoom(L"Town Square");
        if (killed)
            bench.host.kill();
        else
            bench.host.command(L"exit");
        CHECK(waitFor([&] { return bench.ended > 0; }));
        CHECK(waitFor([&] { return !IsWindow(panel) || !IsWindowVisible(panel); }));
        // Later notices of the same end add nothing.
        drive::until([] { return false; }, 700);
        CHECK(bench.ended == 1);
    }
}

TEST_CASE("a hung AOL does not freeze the panel")
{
    ToolbarBench bench;
    frmToolbar& toolbar = bench.load();
    bench.enterRoom(L"Town Square");
    bench.host.command(L"hang 3000");
    bool answered = false;
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < 3500) {
        const DWORD turn = GetTickCount();
        drive::until([] { return false; }, 50);
        toolbar.SetPanelPos();
        CHECK(GetTickCount() - turn < 1500);
        answered = true;
    }
    CHECK(answered);
    bench.host.command(L"say Joe Smith: back again");
    CHECK(bench.hears(L"Joe Smith|back again"));
}
