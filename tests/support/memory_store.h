#pragma once
// A settings store in memory, for tests of what reads and writes options.
#include "base/text.h"
#include "base/trap.h"
#include "settings/Options.h"

#include <map>
#include <set>

namespace velora {

class MemoryStore final : public SettingsStore {
public:
    using Section = std::map<std::wstring, RegValue>;
    std::map<std::wstring, Section> data;
    bool denied = false; ///< refuses everything, as a key without rights does
    int opened = 0;      ///< sections opened

    void withSection(std::wstring_view section,
                     const std::function<void(const Reader&)>& use) override
    {
        ++opened;
        const auto found = data.find(std::wstring(section));
        if (denied || found == data.end())
            return;
        use([&](const wchar_t* name) -> std::optional<RegValue> {
            const auto value = found->second.find(name);
            return value == found->second.end() ? std::nullopt : std::optional(value->second);
        });
    }
    void write(std::wstring_view section, std::wstring_view name, const RegValue& value) override
    {
        if (denied)
            throw Error("denied', to value: '" + toUtf8(textOf(value)) + "'", 5);
        data[std::wstring(section)][std::wstring(name)] = value;
    }
    void remove(std::wstring_view section, std::wstring_view name) override
    {
        data[std::wstring(section)].erase(std::wstring(name));
    }
    void removeSection(std::wstring_view section) override
    {
        std::erase_if(data, [&](const auto& entry) {
            return entry.first == section || entry.first.starts_with(std::wstring(section) + L'\\');
        });
    }
    std::vector<std::pair<std::wstring, RegValue>> values(std::wstring_view section) override
    {
        const Section& found = data[std::wstring(section)];
        return {found.begin(), found.end()};
    }
    std::vector<std::wstring> sections(std::wstring_view section) override
    {
        const std::wstring prefix = section.empty() ? L"" : std::wstring(section) + L'\\';
        std::set<std::wstring> names;
        for (const auto& [name, values] : data)
            if (name.starts_with(prefix) && name.size() > prefix.size())
                names.insert(
                    name.substr(prefix.size(), name.find(L'\\', prefix.size()) - prefix.size()));
        return {names.begin(), names.end()};
    }
};

/// Puts a store in place for one test, the options loaded from it, and the former one back.
class StoreScope {
public:
    StoreScope()
        : store(new MemoryStore), former_(setSettingsStore(std::unique_ptr<SettingsStore>(store)))
    {
        LoadSettings();
    }
    ~StoreScope()
    {
        setSettingsStore(std::move(former_));
        LoadSettings();
    }
    StoreScope(const StoreScope&) = delete;
    StoreScope& operator=(const StoreScope&) = delete;

    MemoryStore* store;

private:
    std::unique_ptr<SettingsStore> former_;
};

} // namespace velora
