#pragma once
// The lists of sounds: kinds, names, and which of AOL's own sounds are left out.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// In the order of the kind filter.
enum class SoundKind { wav = 0, mid = 1, mp3 = 2 };

/// ".wav", ".mid" or ".mp3".
std::wstring_view extensionOf(SoundKind kind);

/// The kind that a file's extension tells, in any case; absent for any other file.
std::optional<SoundKind> kindOfFile(std::wstring_view fileName);

/// A file name less its last four characters, in lower case unless `preserveCase`.
std::wstring wavName(std::wstring_view fileName, bool preserveCase);

/// The sounds of AOL itself, which may be left out of AOL's lists. Compared exactly, after the case
/// rule: among names in lower case "im" is none.
bool isAolSystemSound(std::wstring_view name);

/// True for the two list sources that show AOL's own folders ("AOL Directory" and "AOL Sounds").
bool isAolSource(std::wstring_view sourceName);

} // namespace velora
