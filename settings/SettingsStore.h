#pragma once
// Where settings are kept. The program's store is the registry; tests bring one in memory.
#include "settings/RegValue.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velora {

class SettingsStore {
public:
    /// Reads a value of the section that is open.
    using Reader = std::function<std::optional<RegValue>(const wchar_t* name)>;

    virtual ~SettingsStore() = default;

    /// Opens a section once and lets `use` read from it; does nothing when the section is missing
    /// or may not be read. An empty section is the product key itself.
    virtual void withSection(std::wstring_view section,
                             const std::function<void(const Reader&)>& use) = 0;
    /// Writes a value; the section is made when missing. Throws Error.
    virtual void write(std::wstring_view section, std::wstring_view name,
                       const RegValue& value) = 0;
    /// Deletes a value; a missing one is no error. Throws Error when it stays.
    virtual void remove(std::wstring_view section, std::wstring_view name) = 0;
    /// Deletes a section with all its values and the sections in it. Throws Error when it stays.
    virtual void removeSection(std::wstring_view section) = 0;
    /// The names and values of a section, and the names of the sections in it.
    virtual std::vector<std::pair<std::wstring, RegValue>> values(std::wstring_view section) = 0;
    virtual std::vector<std::wstring> sections(std::wstring_view section) = 0;
};

/// The store under HKEY_CURRENT_USER and the key; Windows only.
std::unique_ptr<SettingsStore> makeRegistryStore(std::wstring productKey);

inline constexpr wchar_t kProductKey[] = L"Software\\Orv Software\\Velora";

/// The store that options and settings use; the program sets it first of all. Without one every
/// read gives the default and writes stay in memory. Answers the former one.
std::unique_ptr<SettingsStore> setSettingsStore(std::unique_ptr<SettingsStore> store);

} // namespace velora
