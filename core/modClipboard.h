#pragma once
// Text on the clipboard.
#include "base/win.h"

#include <string>
#include <string_view>

namespace velora {

/// Puts text on the clipboard in the name of a window of ours. Waits a moment when another program
/// holds the clipboard; throws Error when it does not let go.
void setClipboardText(HWND owner, std::wstring_view text);
/// Empty when there is none.
std::wstring clipboardText(HWND owner);

} // namespace velora
