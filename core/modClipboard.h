#pragma once
// The clipboard, and text on it.
#include "base/win.h"

#include <string>
#include <string_view>

namespace velora {

/// The clipboard, opened in the name of a window of ours. Waits a moment (0.2 s) when another
/// program holds it; throws Error when it does not let go.
class OpenedClipboard {
public:
    explicit OpenedClipboard(HWND owner);
    ~OpenedClipboard();
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
};

/// Puts text on the clipboard in the name of a window of ours. Waits a moment when another program
/// holds the clipboard; throws Error when it does not let go.
void setClipboardText(HWND owner, std::wstring_view text);
/// Empty when there is none.
std::wstring clipboardText(HWND owner);
/// The same of a clipboard that is open.
std::wstring textOf(const OpenedClipboard& clipboard);

} // namespace velora
