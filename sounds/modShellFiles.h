#pragma once
// What the shell does with files and folders.
#include "base/win.h"

#include <string>

namespace velora {

/// Sends a file to the Recycle Bin, without asking. False when it stays.
bool recycleFile(const std::wstring& path, HWND owner);

/// The folder that the user chooses, without a trailing backslash (but for a drive); empty when he
/// cancels. Pumps messages.
std::wstring chooseFolder(HWND owner, const wchar_t* title, const std::wstring& start);

} // namespace velora
