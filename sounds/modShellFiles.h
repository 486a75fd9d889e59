#pragma once
// What the shell does with files and folders.
#include "base/win.h"

#include <string>

namespace velora {

/// Sends a file to the Recycle Bin, without asking. False when it stays.
bool recycleFile(const std::wstring& path, HWND owner);

} // namespace velora
