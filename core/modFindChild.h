#pragma once
// Finding windows of AOL below a parent, and reading their texts. Class names are compared without
// regard to case. Finding sends no message and never waits.
#include "base/win.h"

#include <string>
#include <string_view>

namespace velora {

/// The `which`-th (from 1) direct child of that class, in z-order; 0 when there is none.
HWND FindChildByClass(HWND parent, std::wstring_view className, int which = 1);
/// The `which`-th direct child whose caption starts with the text.
HWND FindChildByTitle(HWND parent, std::wstring_view caption, int which = 1);
/// The next sibling of that class after the window.
HWND FindNextByClass(HWND after, std::wstring_view className);

bool hasClass(HWND window, std::wstring_view className);
std::wstring windowClass(HWND window);
/// A window's caption as the system keeps it. For controls of another process this is not what they
/// show: use GetAPITextEx.
std::wstring windowCaption(HWND window);

/// The window's text, asked of the window itself, with a time limit; empty when it doesn't answer.
std::wstring GetAPIText(HWND window);
/// The same for a control of AOL: at most `limit` characters are taken.
std::wstring GetAPITextEx(HWND window, std::size_t limit = 1u << 20);

} // namespace velora
