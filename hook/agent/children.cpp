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
    if (!isOurs(window))
        return;
    const Record* known = findRecord(window);
    const bool held = known && (known->roles & kHeldRole);
    if (!held && GetAncestor(window, GA_PARENT) != g.mdi)
        return;
    if (Record* record = watch(window))
        record->roles |= kChildRole;
    if (g.settling.touch(number(window), GetTickCount()))
        SetTimer(g.window, kSettleTimer, kSettleTick, nullptr);
    else
        postEvent(wire::Event::child, 0, 0, number(window));
}

void parentNotify(std::uint32_t roles, HWND parent, WPARAM wParam, LPARAM lParam)
{
    if (LOWORD(wParam) != WM_CREATE)
        return;
    if ((roles & kFrameRole) && !g.mdi) {
        if (const HWND mdi = FindWindowExW(parent, nullptr, L"MDIClient", nullptr))
            watchMdi(mdi);
    }
    if (roles & kMdiRole)
        touchChild(reinterpret_cast<HWND>(lParam));
    // AOL builds a window's controls when it gets round to it: each of them is a change.
    if (roles & kChildRole)
        touchChild(parent);
}

void reportSettled()
{
    while (const std::uint32_t window =
               g.settling.takeSettled(GetTickCount(), g.section ? g.section->settleTime : 0))
        if (isOurs(windowOf(window)))
            postEvent(wire::Event::child, 0, 0, window);
    if (g.settling.empty())
        KillTimer(g.window, kSettleTimer);
}

} // namespace velora::agent
