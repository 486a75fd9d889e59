#pragma once
#include "base/win.h"

#include <string>

namespace velora {

/// The folder that the user chooses in the system's window, which begins at `start`; without a
/// trailing backslash (but for a drive), empty when he cancels. Pumps messages.
std::wstring chooseFolder(HWND owner, const wchar_t* title, const std::wstring& start,
                          bool offerNewFolder = true);

} // namespace velora
