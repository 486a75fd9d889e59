#pragma once
// The list files: "favwavs.dat" and "data\wav groups\<name>.dat" in the program folder. One entry a
// line: the name, a TAB and the full path.
//
// Reading lowers names and skips what it does not know, so a list is never written back from what
// was read: edits work on the file's own text and leave every other line as it stands.
#include "sounds/modWavList.h"

namespace velora {

struct ListEntry {
    std::wstring name;
    std::wstring path;
    /// The first of ".wav", ".mid", ".mp3" that the path holds; absent when it holds none.
    std::optional<SoundKind> kind;
};

/// The entries of a list file's text. A line without a TAB is skipped.
std::vector<ListEntry> parseListFile(std::wstring_view text, bool preserveCase);

/// The text with one more entry at its end; absent when name or path hold a character that would
/// break the line format.
std::optional<std::wstring> addListEntry(std::wstring_view text, std::wstring_view name,
                                         std::wstring_view path);

/// The text without the lines whose path is `path` (case ignored); the same text when none is.
std::wstring removeListEntry(std::wstring_view text, std::wstring_view path);

/// A list file on the disk; no entries when it is missing, unreadable or unreasonably large.
std::vector<ListEntry> readListFile(const std::wstring& path, bool preserveCase);

/// Edits of a list file; its last three former contents are kept beside it. False when nothing was
/// changed: the entry would break the format or is there already (add), is not there (remove), or
/// the file cannot be read or written.
bool AddFavWav(const std::wstring& listFile, std::wstring_view name, std::wstring_view path);
bool DelFavWav(const std::wstring& listFile, std::wstring_view path);

/// Many at once: adds those files that the list does not hold yet, each by its name without the
/// ending; answers how many. 0 when the list cannot be written.
std::size_t addListEntries(const std::wstring& listFile, const std::vector<std::wstring>& paths);
bool removeListEntries(const std::wstring& listFile, const std::vector<std::wstring>& paths);

} // namespace velora
