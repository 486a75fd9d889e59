#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// The names behind a path's drive ("C:\x\y.wav" gives x and y.wav; natively the root counts as a
/// drive); absent when the path begins with none.
std::optional<std::vector<std::wstring>> namesBehindDrive(std::wstring_view path);

/// Size and time of a file's last change as one text; empty when it is not there.
std::wstring fileStamp(const std::wstring& path);

/// The file's size; absent when it is not there.
std::optional<std::uint64_t> fileBytes(const std::wstring& path);

struct FileFound {
    std::wstring_view name; ///< lives for the call only
    std::uint64_t bytes;
    bool folder;
    bool link; ///< leads elsewhere: following it may never end
};
/// Tells of each thing in a folder, in the file system's order, "." and ".." left out, until
/// `visit` answers false. False when the folder is not there or cannot be read.
bool visitFolder(const std::wstring& folder, const std::function<bool(const FileFound&)>& visit);

} // namespace velora
