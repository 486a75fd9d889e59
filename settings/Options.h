#pragma once
// Every option of the program: opt::Section::Key.get() and .set(value).
#include "settings/SettingsStore.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace velora {

enum class OptionType { Boolean, Integer, Long, String };

/// Colours are &HBBGGRR; these two stand for the system's colours of tooltips, whatever they are.
inline constexpr std::int32_t kTipBackground = static_cast<std::int32_t>(0x80000018u);
inline constexpr std::int32_t kTipText = static_cast<std::int32_t>(0x80000017u);

/// A catalogue default: a number (also for a Boolean) or a text.
struct OptionDefault {
    template <std::integral Number>
    constexpr OptionDefault(Number value) : number(static_cast<long>(value))
    {
    }
    constexpr OptionDefault(const wchar_t* value) : text(value) {}
    long number = 0;
    const wchar_t* text = L"";
};

struct OptionInfo {
    /// Registry section; one that ends in "\" is followed by the name of the present fade scheme.
    const wchar_t* section;
    const wchar_t* key;
    OptionType type;
    OptionDefault preset;
    bool atStart; ///< held in memory from start-up on; otherwise read where it is used
};

/// The position of an option in the catalogue.
enum class OptionId : std::size_t {
#define SECTION(section, name)
#define OPTION(section, id, key, type, preset) section##_##id,
#define ON_DEMAND(section, id, key, type, preset) section##_##id,
#include "settings/catalogue.inc"
#undef SECTION
#undef OPTION
#undef ON_DEMAND
    Count
};

inline constexpr std::size_t kOptionCount = static_cast<std::size_t>(OptionId::Count);

std::span<const OptionInfo, kOptionCount> optionCatalogue();

template <class T>
concept SettingType =
    std::same_as<T, bool> || std::same_as<T, long> || std::same_as<T, std::wstring>;

/// Takes the present value: from memory, or from the store for an on-demand option.
template <SettingType T>
T optionValue(OptionId id);
/// Keeps the value in memory, writes it to the store and tells the observers. A write that fails
/// throws Error after that; memory keeps the new value.
void setOptionValue(OptionId id, const RegValue& value);
/// The catalogue default, typed.
RegValue optionDefault(OptionId id);
/// The section of an option as it is now (a fade scheme's options move with the scheme).
std::wstring optionSection(OptionId id);

/// One option. Integers are long, too; a value outside their 16 bits is refused on reading.
template <SettingType T>
class Option {
public:
    using Argument = std::conditional_t<std::same_as<T, std::wstring>, std::wstring_view, T>;

    explicit constexpr Option(OptionId id) : id_(id) {}
    constexpr OptionId id() const { return id_; }
    T get() const { return optionValue<T>(id_); }
    void set(Argument value) const
    {
        if constexpr (std::same_as<T, std::wstring>)
            setOptionValue(id_, std::wstring(value));
        else if constexpr (std::same_as<T, bool>)
            setOptionValue(id_, value);
        else
            setOptionValue(id_, static_cast<std::int32_t>(value));
    }

private:
    OptionId id_;
};

namespace detail {
template <OptionType>
struct OptionCpp {
    using Type = long;
};
template <>
struct OptionCpp<OptionType::Boolean> {
    using Type = bool;
};
template <>
struct OptionCpp<OptionType::String> {
    using Type = std::wstring;
};
} // namespace detail

namespace opt {
#define SECTION(section, name)
#define OPTION(section, name, key, type, preset)                       \
    namespace section {                                                \
    inline constexpr Option<detail::OptionCpp<OptionType::type>::Type> \
        name(OptionId::section##_##name);                              \
    }
#define ON_DEMAND OPTION
#include "settings/catalogue.inc"
#undef SECTION
#undef OPTION
#undef ON_DEMAND
} // namespace opt

/// Reads every start-up option, section by section; what is missing or of another type gets its
/// default.
void LoadSettings();
/// Reads the options of the fade scheme that "Fader"/"Default" names now.
void LoadFadeScheme();

/// Calls back after an option was set, until the subscription is destroyed.
class [[nodiscard]] OptionSubscription {
public:
    OptionSubscription() = default;
    explicit OptionSubscription(std::function<void(OptionId)> callback);

private:
    std::shared_ptr<std::function<void(OptionId)>> callback_;
};
OptionSubscription onOptionChanged(std::function<void(OptionId)> callback);

/// Settings that are no catalogue options. A missing value, or one of another type, gives the
/// default.
template <SettingType T>
T readSetting(std::wstring_view section, const std::wstring& key, T preset);
inline std::wstring readSetting(std::wstring_view section, const std::wstring& key,
                                const wchar_t* preset)
{
    return readSetting<std::wstring>(section, key, std::wstring(preset));
}
inline long readSetting(std::wstring_view section, const std::wstring& key, int preset)
{
    return readSetting<long>(section, key, long{preset});
}

/// Throws Error when the store refuses.
void writeSetting(std::wstring_view section, std::wstring_view key, const RegValue& value);
inline void writeSetting(std::wstring_view section, std::wstring_view key, const wchar_t* value)
{
    writeSetting(section, key, RegValue(std::wstring(value)));
}
inline void writeSetting(std::wstring_view section, std::wstring_view key,
                         const std::wstring& value)
{
    writeSetting(section, key, RegValue(value));
}
template <std::integral Number>
void writeSetting(std::wstring_view section, std::wstring_view key, Number value)
{
    if constexpr (std::same_as<Number, bool>)
        writeSetting(section, key, RegValue(value));
    else
        writeSetting(section, key, RegValue(static_cast<std::int32_t>(value)));
}

/// The names and values of a section, in the store's order, and the names of the sections in it.
std::vector<std::pair<std::wstring, RegValue>> settingValues(std::wstring_view section);
std::vector<std::wstring> settingSections(std::wstring_view section);
/// A missing value or section is no error. Throws Error when the store refuses.
void deleteSetting(std::wstring_view section, std::wstring_view key);
void deleteSettingSection(std::wstring_view section);

} // namespace velora
