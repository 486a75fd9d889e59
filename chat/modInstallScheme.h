#pragma once
#include <string>

namespace velora {

/// Installs a fade-scheme file: its fade goes into the settings under the file's name, and the file
/// into the scheme folder below the program folder, where the fader's list finds it (a scheme of
/// that name that is there is kept as a copy). False when the file cannot be read or is no scheme,
/// or when the settings cannot be written.
bool InstallScheme(const std::wstring& file, const std::wstring& programFolder);

} // namespace velora
