#pragma once
// How the hook tests drive their small AOL: messages that they send to its frame.
#include "base/win.h"

namespace velora::smallaol {

inline constexpr UINT kOpenChild = WM_APP + 1; // wParam: way (below), lParam: ms until its controls
inline constexpr UINT kControl = WM_APP + 2;   // wParam: child, lParam: 0 display, 1 input -> HWND
inline constexpr UINT kHang = WM_APP + 3;      // wParam: ms; post it
inline constexpr UINT kSay = WM_APP + 4;       // wParam: display, lParam: lines; 5143 after each
inline constexpr UINT kCount = WM_APP + 5;     // wParam: Counter -> how often since the start
inline constexpr UINT kOverlay =
    WM_APP + 6; // wParam: window, lParam: 1 on, 0 off: "another program"
inline constexpr UINT kResources = WM_APP + 7;  // wParam: 0 handles, 1 user objects, 2 gdi objects
inline constexpr UINT kNewMenu = WM_APP + 8;    // AOL replaces its menu bar
inline constexpr UINT kPopup = WM_APP + 9;      // wParam: popup position: as if the user opened it
                                                // -> its number of items afterwards
inline constexpr UINT kPopupItem = WM_APP + 10; // wParam: popup position, lParam: item -> its id
inline constexpr UINT kMenuLeft = WM_APP + 11;  // wParam: id -> 1 when it is in some menu
inline constexpr UINT kFocus = WM_APP + 12;     // -> the thread's focus window
inline constexpr UINT kRaw = WM_APP + 13; // wParam: window, lParam: 1 = is subclassed by someone

enum Way { kByMessage, kByExStyle, kPlain };
enum Counter { kEnterDown, kEnterChar, kEnterUp, kCommands, kNotices, kOverlaid, kParentNotices };

inline constexpr int kAboutId = 102;
inline constexpr UINT kNotice = 5143;

} // namespace velora::smallaol
