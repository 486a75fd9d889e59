#include "settings/clsRegistry.h"

#include "base/handles.h"
#include "base/text.h"
#include "base/trap.h"
#include "settings/registry_win.h"

namespace velora {
namespace {

RegistryKey createKey(HKEY root, const std::wstring& path, LONG& status)
{
    HKEY key = nullptr;
    status =
        RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    return RegistryKey(key);
}

} // namespace

RegistryKey openKey(HKEY root, const std::wstring& path, REGSAM access)
{
    HKEY key = nullptr;
    return RegistryKey(
        RegOpenKeyExW(root, path.c_str(), 0, access, &key) == ERROR_SUCCESS ? key : nullptr);
}

std::optional<StoredBytes> queryValue(HKEY key, const wchar_t* name)
{
    // Nearly every value fits the first buffer; a longer one is asked for once more, and again if
    // another program makes it longer meanwhile.
    StoredBytes stored{ValueKind::None, Bytes(256, 0)};
    for (int tries = 0; tries < 4; ++tries) {
        DWORD type = 0, size = static_cast<DWORD>(stored.bytes.size());
        const LONG status = RegQueryValueExW(key, name, nullptr, &type, stored.bytes.data(), &size);
        if (status != ERROR_SUCCESS && status != ERROR_MORE_DATA)
            return std::nullopt;
        if (size > kMaxValueSize)
            return std::nullopt;
        stored.bytes.resize(size);
        stored.kind = static_cast<ValueKind>(type);
        if (status == ERROR_SUCCESS)
            return stored;
    }
    return std::nullopt;
}

std::vector<std::pair<std::wstring, RegValue>> enumerateValues(HKEY key)
{
    std::vector<std::pair<std::wstring, RegValue>> values;
    std::wstring name(16384, L'\0');
    for (DWORD i = 0;; ++i) {
        DWORD length = static_cast<DWORD>(name.size());
        if (RegEnumValueW(key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr)
            != ERROR_SUCCESS)
            return values;
        values.emplace_back(name.substr(0, length), RegValue());
        const auto stored = queryValue(key, values.back().first.c_str());
        if (stored)
            values.back().second = decodeValue(stored->bytes, stored->kind).value_or(RegValue());
    }
}

std::vector<std::wstring> enumerateSections(HKEY key)
{
    std::vector<std::wstring> sections;
    wchar_t name[256];
    for (DWORD i = 0;; ++i) {
        DWORD length = 256;
        if (RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr)
            != ERROR_SUCCESS)
            return sections;
        sections.emplace_back(name, length);
    }
}

bool clsRegistry::KeyExists() const
{
    return static_cast<bool>(openKey(classKey_, path(), KEY_READ));
}

bool clsRegistry::CreateKey()
{
    LONG status;
    return static_cast<bool>(createKey(classKey_, path(), status));
}

bool clsRegistry::DeleteKey()
{
    return RegDeleteKeyW(classKey_, path().c_str()) == ERROR_SUCCESS;
}

bool clsRegistry::DeleteValue()
{
    const RegistryKey key = openKey(classKey_, path(), KEY_SET_VALUE);
    return key && RegDeleteValueW(key.get(), valueKey_.c_str()) == ERROR_SUCCESS;
}

RegValue clsRegistry::Value()
{
    const RegistryKey key = openKey(classKey_, path(), KEY_READ);
    if (!key)
        return default_;
    const auto stored = queryValue(key.get(), valueKey_.c_str());
    if (!stored)
        return default_;
    const auto value = decodeValue(stored->bytes, stored->kind);
    if (!value)
        return default_;
    valueType_ = stored->kind;
    return *value;
}

void clsRegistry::Value(const RegValue& value)
{
    valueType_ = kindFor(value).value_or(valueType_);
    const auto fail = [&](unsigned long code) {
        const std::wstring section = subKey_.substr(0, subKey_.find_last_not_of(L'\\') + 1);
        throw Error(toUtf8(L"Cannot write to the registry key '" + sectionKey_ + L"',Section: '"
                           + section + L"',Key: '" + valueKey_ + L"' to value: '" + textOf(value)
                           + L"'"),
                    code);
    };
    Bytes bytes;
    try {
        bytes = encodeValue(value, valueType_);
    } catch (const Error& e) {
        fail(e.code());
    }
    LONG status;
    const RegistryKey key = createKey(classKey_, path(), status);
    if (key)
        status = RegSetValueExW(key.get(), valueKey_.c_str(), 0, static_cast<DWORD>(valueType_),
                                bytes.data(), static_cast<DWORD>(bytes.size()));
    if (status != ERROR_SUCCESS)
        fail(static_cast<unsigned long>(status));
}

std::vector<std::pair<std::wstring, RegValue>> clsRegistry::EnumerateValues() const
{
    const RegistryKey key = openKey(classKey_, path(), KEY_READ);
    return key ? enumerateValues(key.get()) : std::vector<std::pair<std::wstring, RegValue>>();
}

std::vector<std::wstring> clsRegistry::EnumerateSections() const
{
    const RegistryKey key = openKey(classKey_, path(), KEY_READ);
    return key ? enumerateSections(key.get()) : std::vector<std::wstring>();
}

void clsRegistry::SubKey(std::wstring_view path)
{
    subKey_ = trimView(path).empty() ? std::wstring() : std::wstring(path) + L'\\';
}

std::wstring clsRegistry::path() const
{
    return joinKeys(sectionKey_, subKey_);
}

std::wstring joinKeys(std::wstring_view upper, std::wstring_view section)
{
    std::wstring path(upper);
    if (!section.empty())
        (path += path.empty() ? L"" : L"\\") += section;
    // A path that ends in the separator does not open on every Windows.
    path.resize(path.find_last_not_of(L'\\') + 1);
    return path;
}

} // namespace velora
