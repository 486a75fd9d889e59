#include "base/text.h"
#include "base/trap.h"
#include "settings/SettingsStore.h"
#include "settings/clsRegistry.h"
#include "settings/registry_win.h"

namespace velora {
namespace {

class RegistryStore final : public SettingsStore {
public:
    explicit RegistryStore(std::wstring productKey) : productKey_(std::move(productKey)) {}

    void withSection(std::wstring_view section,
                     const std::function<void(const Reader&)>& use) override
    {
        const RegistryKey key = open(section, KEY_READ);
        if (!key)
            return;
        use([&](const wchar_t* name) -> std::optional<RegValue> {
            const auto stored = queryValue(key.get(), name);
            return stored ? decodeValue(stored->bytes, stored->kind) : std::nullopt;
        });
    }

    void write(std::wstring_view section, std::wstring_view name, const RegValue& value) override
    {
        registry(section, name).Value(value);
    }

    void remove(std::wstring_view section, std::wstring_view name) override
    {
        clsRegistry value = registry(section, name);
        if (!value.DeleteValue() && exists(section, name))
            throw Error("cannot delete the registry value");
    }

    void removeSection(std::wstring_view section) override
    {
        // Without a section this would be the product key with all that it holds.
        if (trimView(section).empty())
            throw Error("no registry section to delete");
        for (const std::wstring& inner : sections(section))
            removeSection(joinKeys(section, inner));
        clsRegistry key = registry(section, {});
        if (!key.DeleteKey() && key.KeyExists())
            throw Error("cannot delete the registry section");
    }

    std::vector<std::pair<std::wstring, RegValue>> values(std::wstring_view section) override
    {
        return registry(section, {}).EnumerateValues();
    }

    std::vector<std::wstring> sections(std::wstring_view section) override
    {
        return registry(section, {}).EnumerateSections();
    }

private:
    RegistryKey open(std::wstring_view section, REGSAM access) const
    {
        return openKey(HKEY_CURRENT_USER, joinKeys(productKey_, section), access);
    }

    clsRegistry registry(std::wstring_view section, std::wstring_view name) const
    {
        clsRegistry registry;
        registry.SectionKey(productKey_);
        registry.SubKey(section);
        registry.ValueKey(name);
        return registry;
    }

    bool exists(std::wstring_view section, std::wstring_view name) const
    {
        const RegistryKey key = open(section, KEY_READ);
        return key && queryValue(key.get(), std::wstring(name).c_str());
    }

    std::wstring productKey_;
};

} // namespace

std::unique_ptr<SettingsStore> makeRegistryStore(std::wstring productKey)
{
    return std::make_unique<RegistryStore>(std::move(productKey));
}

} // namespace velora
