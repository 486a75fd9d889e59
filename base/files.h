#pragma once
// Files, as bytes. Paths are absolute; "\" separates on Windows, "/" in native builds.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// A name behind its folder, with the system's separator between them.
std::wstring joinPath(const std::wstring& folder, std::wstring_view name);

/// The whole file; absent when it cannot be opened, or is longer than `limit` bytes.
std::optional<std::string> readFile(const std::wstring& path, std::uint64_t limit = 64u << 20);

/// Writes a file as a whole: into a temporary file beside it, flushed, then renamed over it, so
/// that a kill or a full disk leaves the former content. Throws Error.
void replaceFile(const std::wstring& path, std::string_view bytes);

/// The same, and the last three former contents are kept as path + ".1" (newest) to ".3". A content
/// equal to the present one makes no copy. Throws Error.
void replaceFileKeepingCopies(const std::wstring& path, std::string_view bytes);

/// Keeps what the file holds now as path + ".1", the former copies as ".2" and ".3"; for a file
/// that is about to be changed in place. Nothing happens when ".1" holds the same already, or the
/// file cannot be read. Throws Error.
void keepCopies(const std::wstring& path);

/// Appends one record with a single write; the file is made when missing. Throws Error.
void appendToFile(const std::wstring& path, std::string_view record);

bool fileExists(const std::wstring& path);
bool folderExists(const std::wstring& path);

/// Makes a folder and the missing ones above it. Throws Error.
void makeFolder(const std::wstring& path);

struct FileEntry {
    std::wstring name; ///< without its folder
    std::uint64_t size;
    bool folder;
};
/// What a folder holds whose name matches the pattern ("*.wav"; case is ignored, "*.wav" is a
/// suffix test: a short 8.3 name never makes a match), in the order of the file system; "." and
/// ".." left out.
std::vector<FileEntry> listFolder(const std::wstring& folder, std::wstring_view pattern = L"*");

/// Deletes a file if it is there. Throws Error when it stays.
void deleteFile(const std::wstring& path);
/// Throws Error; `to` is replaced when `overwrite`.
void copyFile(const std::wstring& from, const std::wstring& to, bool overwrite);
/// Renames a file within its volume in one step; `to` is replaced. Throws Error.
void moveFile(const std::wstring& from, const std::wstring& to);

} // namespace velora
