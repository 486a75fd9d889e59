#pragma once
// Shared by the registry class and the registry store: keys and values as the system gives them.
#include "base/handles.h"
#include "settings/RegValue.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velora {

/// A longer value is none of ours and is not read.
inline constexpr unsigned long kMaxValueSize = 1u << 20;

struct StoredBytes {
    ValueKind kind; ///< may be a number that the enumeration does not name
    Bytes bytes;
};

/// Empty when the key cannot be opened so.
RegistryKey openKey(HKEY root, const std::wstring& path, REGSAM access);
std::optional<StoredBytes> queryValue(HKEY key, const wchar_t* name);
std::vector<std::pair<std::wstring, RegValue>> enumerateValues(HKEY key);
std::vector<std::wstring> enumerateSections(HKEY key);

/// The path of a section below a key, without a separator at its end.
std::wstring joinKeys(std::wstring_view upper, std::wstring_view section);

} // namespace velora
