#include "ui/Placement.h"
#include "ui/WinGeometry.h"

namespace velora {
namespace {
Rect areaOf(HMONITOR monitor)
{
    MONITORINFO info = {};
    info.cbSize = sizeof info;
    if (GetMonitorInfoW(monitor, &info))
        return fromRECT(info.rcWork);
    return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

BOOL CALLBACK collect(HMONITOR monitor, HDC, RECT*, LPARAM areas) noexcept
{
    try {
        MONITORINFO info = {};
        info.cbSize = sizeof info;
        if (!GetMonitorInfoW(monitor, &info))
            return TRUE;
        auto& list = *reinterpret_cast<std::vector<Rect>*>(areas);
        const bool primary = info.dwFlags & MONITORINFOF_PRIMARY;
        list.insert(primary ? list.begin() : list.end(), fromRECT(info.rcWork));
    } catch (...) {
        return FALSE;
    }
    return TRUE;
}
} // namespace

std::vector<Rect> monitorAreas()
{
    std::vector<Rect> areas;
    EnumDisplayMonitors(nullptr, nullptr, collect, reinterpret_cast<LPARAM>(&areas));
    return areas;
}

Rect monitorAreaNear(const Rect& place)
{
    const RECT r = toRECT(place);
    return areaOf(MonitorFromRect(&r, MONITOR_DEFAULTTONEAREST));
}

} // namespace velora
