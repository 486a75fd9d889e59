#pragma once
// The tip that shows a member's buddy note when the tab is clicked.
#include "base/win.h"
#include "ui/Geometry.h"

#include <string_view>

namespace velora {

/// Shows the note at a place on the screen, in the look of the options, for some seconds; nothing
/// when there is none. `owner` is a window of ours.
void showBuddyTip(HWND owner, Point at, std::wstring_view screenName);
void hideBuddyTip();

} // namespace velora
