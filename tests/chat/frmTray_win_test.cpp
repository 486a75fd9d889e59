// The icon in the notification area, used with the mouse. Without a task bar Wine shows the area as
// a window of its own.
#include "chat/frmTray.h"

#include "chat/ToolbarRoutes.h"
#include "settings/Options.h"
#include "support/drive_win.h"
#include "support/toolbar_win.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

bool iconShown()
{
    return frmTray::instance() && frmTray::instance()->shown();
}

/// Clicks the icon and goes through its menu.
void choose(std::vector<std::wstring> items)
{
    const HWND area = FindWindowW(L"__winex11_standalone_tray", nullptr);
    REQUIRE(area);
    // Each icon is a window in it.
    HWND icon = nullptr;
    REQUIRE(waitFor([&] { return (icon = GetWindow(area, GW_CHILD)) && IsWindowVisible(icon); }));
    const drive::MenuPick pick(std::move(items));
    REQUIRE(drive::click(icon, true));
    REQUIRE(drive::until([&] { return pick.done(); }));
}

} // namespace

TEST_CASE("the icon brings back a panel that was hidden, and goes with it")
{
    ToolbarBench bench;
    const HWND panel = bench.load().hwnd();
    CHECK_FALSE(iconShown());
    frmToolbar::instance()->ShowToolbar(false);
    CHECK_FALSE(IsWindowVisible(panel));
    REQUIRE(waitFor(iconShown));
    choose({L"Toolbar", L"Show the Toolbar"});
    CHECK(waitFor([&] { return IsWindowVisible(panel) && !iconShown(); }));
}

TEST_CASE("the icon stays where the menu is wanted there, comes back on a new task bar, and its "
          "menu does what it says")
{
    ToolbarBench bench;
    bool left = false;
    toolbarRoutes().exitProgram = [&] { left = true; };
    opt::Toolbar::MenuAccess.set(L"Tray");
    const HWND panel = bench.load().hwnd();
    REQUIRE(waitFor(iconShown));
    CHECK(IsWindowVisible(panel));

    // The task bar has ended and come up again: it knows no icon any more.
    NOTIFYICONDATAW icon{};
    icon.cbSize = NOTIFYICONDATAW_V2_SIZE;
    icon.hWnd = frmTray::instance()->hwnd();
    icon.uID = 1;
    REQUIRE(Shell_NotifyIconW(NIM_DELETE, &icon));
    PostMessageW(HWND_BROADCAST, RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
    REQUIRE(waitFor([&] { return Shell_NotifyIconW(NIM_MODIFY, &icon) != FALSE; }));

    bench.enterRoom(L"Town Square");
    bench.host.command(L"people +Rose3");
    std::wstring ignored;
    toolbarRoutes().ignoreMember = [&](const std::wstring& name) { ignored = name; };
    choose({L"People", L"Rose3", L"Ignore"});
    CHECK(ignored == L"Rose3");
    choose({L"Exit Velora"});
    CHECK(left);
    bench.host.command(L"exit");
    CHECK(waitFor([] { return frmTray::instance() == nullptr; }));
}
