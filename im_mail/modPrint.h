#pragma once
// Printing a text.
#include "base/win.h"

#include <functional>
#include <string_view>

namespace velora {

enum class PrintResult { done, cancelled, failed };

/// Asks by Windows' own dialog and prints the text. Pumps messages.
PrintResult printText(HWND owner, std::wstring_view text, const wchar_t* title);

/// Writes the text page by page, with a margin of an inch, long lines wrapped at blanks. `page` is
/// called before each page (true) and after it (false); its answer false ends the printing. Answers
/// the number of whole pages.
int printPages(std::wstring_view text, HDC dc, const std::function<bool(bool starts)>& page);

} // namespace velora
