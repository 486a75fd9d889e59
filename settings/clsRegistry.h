#pragma once
// One value of the registry at a time: set root, path and names, then act.
#include "base/win.h"
#include "settings/RegValue.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velora {

class clsRegistry {
public:
    /// True when the key can be opened for reading.
    bool KeyExists() const;
    /// Makes the key, and those above it. False when that fails.
    bool CreateKey();
    /// Deletes the key; one that has sub-keys stays. False when it stays.
    bool DeleteKey();
    /// Deletes the value. False when there is none or it stays.
    bool DeleteValue();

    /// The value, or Default when it cannot be read; sets ValueType when it can.
    RegValue Value();
    /// Writes the value, making the key when missing. Throws Error.
    void Value(const RegValue& value);

    /// Names and values of the key; a value of a kind that the program does not know comes empty.
    std::vector<std::pair<std::wstring, RegValue>> EnumerateValues() const;
    std::vector<std::wstring> EnumerateSections() const;

    /// How a value is written whose own type does not decide it.
    ValueKind ValueType() const { return valueType_; }
    void ValueType(ValueKind kind) { valueType_ = kind; }

    /// A predefined root.
    HKEY ClassKey() const { return classKey_; }
    void ClassKey(HKEY root) { classKey_ = root; }

    const std::wstring& SectionKey() const { return sectionKey_; }
    void SectionKey(std::wstring_view path) { sectionKey_ = path; }

    const std::wstring& ValueKey() const { return valueKey_; }
    void ValueKey(std::wstring_view name) { valueKey_ = name; }

    const RegValue& Default() const { return default_; }
    void Default(RegValue value) { default_ = std::move(value); }

    /// Ends in "\" when it is not blank.
    const std::wstring& SubKey() const { return subKey_; }
    void SubKey(std::wstring_view path);

private:
    std::wstring path() const;

    HKEY classKey_ = HKEY_CURRENT_USER;
    std::wstring sectionKey_, subKey_, valueKey_;
    ValueKind valueType_ = ValueKind::None;
    RegValue default_;
};

} // namespace velora
