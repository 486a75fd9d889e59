// The alert as the user sees it: one at a time, never in the way, ignore and focus from it.
#include "im_mail/frmAlert.h"

#include "base/files.h"
#include "core/modAOL.h"
#include "im_mail/modIMServices.h"
#include "settings/Options.h"
#include "support/answer_win.h"
#include "support/aolhost_win.h"
#include "support/form_scope_win.h"
#include "ui/Placement.h"
#include "ui/WinGeometry.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::test;

namespace {

struct Bench : FormScope {
    WindowId focused = 0;
    std::wstring ignored;

    Bench()
    {
        aol() = {};
        startIMServices({.focusIM = [this](WindowId im) { focused = im; }, .adjustIMWindow = {}});
        imRoutes().addToIgnore = [this](const std::wstring& name) { ignored = name; };
    }
    ~Bench() { endIMServices(); }
    static void message(const std::wstring& name, const std::wstring& text, bool looking = false)
    {
        IMInfo im{7, name, L">IM From: " + name, name + L":\t" + text, false, looking};
        raiseIMEvent([&](const IMEvents& events) { events.onNewIM(im); });
    }
    static int alerts()
    {
        int count = 0;
        for (Form* form : Form::all())
            count += dynamic_cast<frmAlert*>(form) != nullptr;
        return count;
    }
    static bool shows(const std::wstring& text)
    {
        const frmAlert* const alert = frmAlert::instance();
        return alert && drive::child(alert->hwnd(), text) != nullptr;
    }
};

} // namespace

TEST_CASE("a flood of 200 IMs makes one alert that is kept up to date and takes no focus")
{
    Bench bench;
    const HWND before = GetForegroundWindow();
    for (int i = 0; i < 200; ++i)
        Bench::message(L"Member" + std::to_wstring(i % 50), L"text " + std::to_wstring(i));
    CHECK(Bench::alerts() == 1);
    CHECK(waitFor([] { return Bench::shows(L"200 messages from 50 members"); }));
    CHECK(Bench::shows(L"Member49"));
    CHECK_FALSE(Bench::shows(L"text 199")); // the text is shown only when asked for
    CHECK(GetForegroundWindow() == before);
    CHECK(GetFocus() == nullptr);
}

TEST_CASE("it slides open in the corner that is set, flashes, and goes by itself")
{
    Bench bench;
    opt::IM::AlertPos.set(3);
    opt::IM::AlertSeconds.set(1);
    opt::IM::DisplayMessage.set(true);
    Bench::message(L"Rose3", L"hello ~B there <b>you</b>");
    const frmAlert* alert = frmAlert::instance();
    REQUIRE(alert);
    const HWND window = alert->hwnd();
    CHECK(Bench::shows(L"hello ~B there <b>you</b>"));
    const Rect area = monitorAreas().at(0);
    CHECK(alert->place().left - area.left == 12);
    CHECK(alert->place().top - area.top == 12);
    // Open when its region is gone.
    CHECK(waitFor([&] {
        const Region region(CreateRectRgn(0, 0, 0, 0));
        return GetWindowRgn(window, region.get()) == ERROR;
    }));
    CHECK(drive::gone(window));
}

TEST_CASE("no alert for the IM that is looked at, for own words, or when alerts are off")
{
    Bench bench;
    Bench::message(L"Rose3", L"x", true);
    IMInfo im{7, L"Rose3", L"IM From: Rose3", L"", false, false};
    raiseIMEvent([&](const IMEvents& events) { events.onNewText(im, L"Me:\tmy words"); });
    opt::IM::DisplayAlert.set(false);
    Bench::message(L"Rose3", L"x");
    CHECK(Bench::alerts() == 0);
}

TEST_CASE("clicking the name brings the IM to the front; the button ignores the sender")
{
    Bench bench;
    Bench::message(L"Rose3", L"x");
    REQUIRE(frmAlert::instance());
    REQUIRE(drive::until([] { return IsWindowVisible(frmAlert::instance()->hwnd()); }));
    const HWND first = frmAlert::instance()->hwnd();
    // Visible all over, so that the mouse reaches it.
    REQUIRE(waitFor([&] {
        const Region region(CreateRectRgn(0, 0, 0, 0));
        return GetWindowRgn(first, region.get()) == ERROR;
    }));
    CHECK(drive::click(drive::child(first, L"Rose3")));
    CHECK(waitFor([&] { return bench.focused == 7; }));
    CHECK(drive::gone(first));

    Bench::message(L"Ann", L"x");
    const HWND second = frmAlert::instance()->hwnd();
    REQUIRE(waitFor([&] {
        const Region region(CreateRectRgn(0, 0, 0, 0));
        return GetWindowRgn(second, region.get()) == ERROR;
    }));
    CHECK(drive::press(second, L"Ignore..."));
    CHECK(waitFor([&] { return bench.ignored == L"Ann"; }));
}

TEST_CASE("the alert text: one box, the name shown as it is")
{
    Bench bench;
    opt::IM::DisplayAlert.set(false);
    opt::IM::TextAlert.set(true);
    opt::IM::AlertText.set(L"pizza");
    Answer answer(L"OK", L"Velora - Alert");
    Bench::message(L"Rose~B3", L"nothing");
    Bench::message(L"Rose~B3", L"Pizza!");
    for (int i = 0; i < 20; ++i)
        Bench::message(L"Other" + std::to_wstring(i), L"pizza");
    CHECK(waitFor([&] { return answer.came(); }));
    CHECK(answer.said(L"An Instant Message from Rose~B3 contains your Alert Text!"));
    CHECK(waitFor([] { return FindWindowW(nullptr, L"Velora - Alert") == nullptr; }));
}

TEST_CASE("AOL in front raises none; minimised it does")
{
    AolHost host;
    Bench bench;
    REQUIRE(drive::activate(host.frame()));
    Bench::message(L"Rose3", L"x");
    CHECK(Bench::alerts() == 0);
    ShowWindowAsync(host.frame(), SW_MINIMIZE);
    REQUIRE(waitFor([&] { return IsIconic(host.frame()); }));
    Bench::message(L"Rose3", L"x");
    CHECK(Bench::alerts() == 1);
    Form::unloadAll();
    opt::IM::AlertIfMin.set(false);
    Bench::message(L"Rose3", L"x");
    CHECK(Bench::alerts() == 0);
}

TEST_CASE("what covers its monitor")
{
    const HMONITOR monitor = MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY);
    MONITORINFO info = {};
    info.cbSize = sizeof info;
    REQUIRE(GetMonitorInfoW(monitor, &info));
    const RECT all = info.rcMonitor;
    const HWND window = CreateWindowExW(WS_EX_NOACTIVATE, L"STATIC", L"", WS_POPUP | WS_VISIBLE,
                                        all.left, all.top, all.right - all.left,
                                        all.bottom - all.top, nullptr, nullptr, nullptr, nullptr);
    REQUIRE(window);
    CHECK(coversMonitor(window));
    CHECK_FALSE(anotherProgramFullScreen()); // it is ours
    SetWindowPos(window, nullptr, all.left, all.top, 300, 200, SWP_NOZORDER | SWP_NOACTIVATE);
    CHECK_FALSE(coversMonitor(window));
    DestroyWindow(window);
    CHECK_FALSE(coversMonitor(nullptr));
}
