#pragma once
// Printing the text of one of our rich edits.
#include "base/win.h"

#include <functional>
#include <string_view>

namespace velora {

enum class PrintResult { done, cancelled, failed };

/// Asks by Windows' own dialog and prints the text. Pumps messages.
PrintResult printRichText(HWND owner, HWND richEdit, const wchar_t* title);

/// Renders the text page by page, with a margin of an inch. `page` is called before each page
/// (true) and after it (false); its answer false ends the printing. The number of whole pages.
int printPages(HWND richEdit, HDC dc, const std::function<bool(bool starts)>& page);

} // namespace velora
