#pragma once
#include <cstdint>
#include <optional>
#include <string>

namespace velora {

/// Size and time of a file's last change as one text; empty when it is not there.
std::wstring fileStamp(const std::wstring& path);

/// The file's size; absent when it is not there.
std::optional<std::uint64_t> fileBytes(const std::wstring& path);

} // namespace velora
