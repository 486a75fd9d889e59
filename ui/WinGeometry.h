#pragma once
// Between our rectangles and the system's.
#include "base/win.h"
#include "ui/Geometry.h"

namespace velora {

inline RECT toRECT(const Rect& r)
{
    return {r.left, r.top, r.right, r.bottom};
}
inline Rect fromRECT(const RECT& r)
{
    return {r.left, r.top, r.right, r.bottom};
}

/// On the screen; empty when the window is gone. Sends no message.
inline Rect windowRect(HWND window)
{
    RECT r = {};
    GetWindowRect(window, &r);
    return fromRECT(r);
}
inline Size clientSize(HWND window)
{
    RECT r = {};
    GetClientRect(window, &r);
    return fromRECT(r).size();
}

} // namespace velora
