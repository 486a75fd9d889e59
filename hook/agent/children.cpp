// The frame, its MDI client and the windows that AOL opens in it.
#include "hook/agent/agent.h"

namespace velora::agent {
namespace {

constexpr UINT kSettleTick = 20; // ms

void watchMdi(HWND mdi)
{
    Record* record = watch(mdi);
    if (!record)
        return;
    g.mdi = mdi;
    record->roles |= kMdiRole;
    for (HWND child = GetWindow(mdi, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        touchChild(child);
}

/// The MDI child that the window is or stands in; 0 when it is in none.
HWND mdiChildOf(HWND window)
{
    while (window && window != g.mdi) {
        const HWND parent = GetAncestor(window, GA_PARENT);
        if (parent == g.mdi)
            return window;
        window = parent;
    }
    return nullptr;
}

} // namespace

void watchFrame(HWND frame)
{
    g.frame = frame;
    if (Record* record = watch(frame))
        record->roles |= kFrameRole;
    // Direct children only: FindWindowEx would do, but compares what AOL's other windows say too.
    if (const HWND mdi = FindWindowExW(frame, nullptr, L"MDIClient", nullptr))
        watchMdi(mdi);
}

void touchChild(HWND window)
{
    if (!isOurs(window) || (GetAncestor(window, GA_PARENT) != g.mdi))
        return;
    if (Record* record = watch(window))
        record->roles |= kChildRole;
    if (g.settling.touch(number(window), GetTickCount()))
        SetTimer(g.window, 1, kSettleTick, nullptr);
    else
        postEvent(wire::Event::child, 0, 0, number(window));
}

void parentNotify(HWND parent, WPARAM wParam, LPARAM lParam)
{
    if (LOWORD(wParam) != WM_CREATE)
        return;
    if (!g.mdi && parent == g.frame) {
        if (const HWND mdi = FindWindowExW(g.frame, nullptr, L"MDIClient", nullptr))
            watchMdi(mdi);
    }
    // A control's notice climbs up to the MDI client, so late-built controls are seen here too.
    if (const HWND child = mdiChildOf(reinterpret_cast<HWND>(lParam)))
        touchChild(child);
}

void reportSettled()
{
    while (const std::uint32_t window =
               g.settling.takeSettled(GetTickCount(), g.section ? g.section->settleTime : 0))
        if (isOurs(windowOf(window)))
            postEvent(wire::Event::child, 0, 0, window);
    if (g.settling.empty())
        KillTimer(g.window, 1);
}

} // namespace velora::agent
