// Whether an IM raises the alert: the state of the screen, of AOL and of the options.
#include "base/handles.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "im_mail/frmAlert.h"
#include "im_mail/modAlertRules.h"
#include "im_mail/modIMAnswer.h"
#include "im_mail/modIMRules.h"
#include "settings/Options.h"
#include "ui/MessageLoop.h"

#include <shellapi.h>

namespace velora {
namespace {

constexpr char kModule[] = "modAlert";

/// What the system says of the user's state; absent before Windows Vista.
std::optional<int> notificationState()
{
    using Query = HRESULT(WINAPI*)(int*);
    const HMODULE shell = GetModuleHandleW(L"shell32.dll");
    const auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
        shell ? GetProcAddress(shell, "SHQueryUserNotificationState") : nullptr));
    int state = 0;
    if (!query || FAILED(query(&state)))
        return std::nullopt;
    return state;
}

DWORD processOf(HWND window)
{
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    return id;
}

AlertSituation situation(const IMInfo& im)
{
    const HWND frame = AOLWindow(), front = GetForegroundWindow();
    AlertSituation now;
    now.displayAlert = opt::IM::DisplayAlert.get();
    now.alertIfMinimised = opt::IM::AlertIfMin.get();
    now.aolMinimised = frame && IsIconic(frame);
    now.aolInFront = frame && front && processOf(front) == processOf(frame);
    now.lookingAtThisIm = im.lookingAt;
    now.quiet = opt::IM::QuietFullScreen.get() && anotherProgramFullScreen();
    return now;
}

/// One box at a time: a flood of senders must not bury the screen.
void tellAlertText(const std::wstring& screenName)
{
    static bool shown = false;
    if (shown)
        return;
    shown = true;
    postCall([screenName] {
        trap(kModule, [&] {
            MsgBoxEx(L"~B~CRAlert!~B~CN~N ~NAn Instant Message from ~B" + literal(screenName)
                         + L"~B contains your Alert Text!",
                     kMsgExclamation, L"Alert");
        });
        shown = false;
    });
}

} // namespace

bool coversMonitor(HWND window)
{
    RECT place;
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    return window && IsWindowVisible(window) && GetWindowRect(window, &place)
           && GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor)
           && place.left <= monitor.rcMonitor.left && place.top <= monitor.rcMonitor.top
           && place.right >= monitor.rcMonitor.right && place.bottom >= monitor.rcMonitor.bottom;
}

bool anotherProgramFullScreen()
{
    return trap(
        kModule,
        [] {
            // QUNS_RUNNING_D3D_FULL_SCREEN and QUNS_PRESENTATION_MODE. QUNS_BUSY is judged by the
            // window in front: that may be a full screen of AOL's or ours.
            const int state = notificationState().value_or(0);
            if (state == 3 || state == 4)
                return true;
            const HWND front = GetForegroundWindow();
            if (!front || front == GetDesktopWindow() || front == GetShellWindow()
                || isAolWindow(front) || processOf(front) == GetCurrentProcessId())
                return false;
            wchar_t className[32] = {};
            GetClassNameW(front, className, 32);
            // The desktop's own windows cover the screen, too, as do maximised ones less a task
            // bar that hides itself: those have a caption.
            if (equalNoCase(className, L"WorkerW") || equalNoCase(className, L"Progman")
                || (GetWindowLongW(front, GWL_STYLE) & WS_CAPTION) == WS_CAPTION)
                return false;
            return coversMonitor(front);
        },
        false);
}

void alertFor(const IMInfo& im, const std::wstring& fresh)
{
    trap(kModule, [&] {
        if (!hearsFrom(fresh, im.screenName))
            return;
        const std::wstring message = lastMessageOf(fresh, im.screenName);
        if (raisesAlert(situation(im)))
            frmAlert::ShowAlert(im, message);
        if (opt::IM::TextAlert.get() && holdsAlertText(fresh, opt::IM::AlertText.get()))
            tellAlertText(im.screenName);
    });
}

} // namespace velora
