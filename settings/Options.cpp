#include "settings/Options.h"

#include "base/trap.h"

#include <algorithm>
#include <array>
#include <exception>
#include <iterator>

namespace velora {
namespace {

constexpr char kModule[] = "Options";

namespace section {
#define SECTION(id, name) constexpr wchar_t id[] = name;
#define OPTION(section, id, key, type, preset)
#define ON_DEMAND OPTION
#include "settings/catalogue.inc"
#undef SECTION
#undef OPTION
#undef ON_DEMAND
} // namespace section

constexpr OptionInfo kCatalogue[] = {
#define SECTION(id, name)
#define OPTION(of, id, key, type, preset) {section::of, key, OptionType::type, preset, true},
#define ON_DEMAND(of, id, key, type, preset) {section::of, key, OptionType::type, preset, false},
#include "settings/catalogue.inc"
#undef SECTION
#undef OPTION
#undef ON_DEMAND
};

static_assert(std::count_if(std::begin(kCatalogue), std::end(kCatalogue),
                            [](const OptionInfo& info) { return info.atStart; })
              == 132);

std::size_t indexOf(OptionId id)
{
    return static_cast<std::size_t>(id);
}

bool followsScheme(const OptionInfo& info)
{
    return std::wstring_view(info.section).ends_with(L'\\');
}

RegValue presetOf(const OptionInfo& info)
{
    switch (info.type) {
    case OptionType::Boolean: return info.preset.number != 0;
    case OptionType::Integer:
    case OptionType::Long: return static_cast<std::int32_t>(info.preset.number);
    case OptionType::String: break;
    }
    return std::wstring(info.preset.text);
}

template <class T>
RegValue boxed(const std::optional<T>& value)
{
    if (!value)
        return {};
    if constexpr (std::same_as<T, long>)
        return static_cast<std::int32_t>(*value);
    else
        return *value;
}

/// What the option makes of a stored value: the value in its own type, or its default.
RegValue accept(const OptionInfo& info, const std::optional<RegValue>& stored)
{
    RegValue value;
    if (stored) {
        switch (info.type) {
        case OptionType::Boolean: value = boxed(asBoolean(*stored)); break;
        case OptionType::Integer: value = boxed(asInteger(*stored)); break;
        case OptionType::Long: value = boxed(asLong(*stored)); break;
        case OptionType::String: value = boxed(asText(*stored)); break;
        }
    }
    return std::holds_alternative<std::monostate>(value) ? presetOf(info) : value;
}

struct State {
    std::array<RegValue, kOptionCount> values;
    std::unique_ptr<SettingsStore> store;
    std::vector<std::weak_ptr<std::function<void(OptionId)>>> observers;

    State()
    {
        std::transform(std::begin(kCatalogue), std::end(kCatalogue), values.begin(), presetOf);
    }
};

State& state()
{
    static State theState;
    return theState;
}

std::optional<RegValue> readFromStore(std::wstring_view section, const wchar_t* key)
{
    std::optional<RegValue> value;
    if (auto& store = state().store)
        store->withSection(section, [&](const SettingsStore::Reader& read) { value = read(key); });
    return value;
}

/// Loads the options from `first` on that share its section; answers the first of the next one.
std::size_t loadSection(std::size_t first)
{
    const std::wstring_view section = kCatalogue[first].section;
    std::size_t end = first;
    while (end < kOptionCount && section == kCatalogue[end].section)
        ++end;
    auto& values = state().values;
    for (std::size_t i = first; i < end; ++i)
        values[i] = presetOf(kCatalogue[i]);
    if (auto& store = state().store)
        store->withSection(optionSection(OptionId{first}), [&](const SettingsStore::Reader& read) {
            for (std::size_t i = first; i < end; ++i)
                values[i] = accept(kCatalogue[i], read(kCatalogue[i].key));
        });
    return end;
}

void tellObservers(OptionId id)
{
    auto& observers = state().observers;
    std::erase_if(observers, [](const auto& observer) { return observer.expired(); });
    // A callback may subscribe or unsubscribe.
    for (const auto& weak : std::vector(observers))
        if (const auto callback = weak.lock())
            trap(
                kModule, [&] { (*callback)(id); }, "onOptionChanged");
}

template <SettingType T>
T unboxed(const RegValue& value)
{
    if constexpr (std::same_as<T, bool>)
        return asBoolean(value).value_or(false);
    else if constexpr (std::same_as<T, long>)
        return asLong(value).value_or(0);
    else
        return asText(value).value_or(std::wstring());
}

} // namespace

std::span<const OptionInfo, kOptionCount> optionCatalogue()
{
    return kCatalogue;
}

std::unique_ptr<SettingsStore> setSettingsStore(std::unique_ptr<SettingsStore> store)
{
    return std::exchange(state().store, std::move(store));
}

RegValue optionDefault(OptionId id)
{
    return presetOf(kCatalogue[indexOf(id)]);
}

std::wstring optionSection(OptionId id)
{
    const OptionInfo& info = kCatalogue[indexOf(id)];
    std::wstring section = info.section;
    if (followsScheme(info))
        section += opt::Fader::Default.get();
    return section;
}

template <SettingType T>
T optionValue(OptionId id)
{
    const OptionInfo& info = kCatalogue[indexOf(id)];
    RegValue& value = state().values[indexOf(id)];
    // Without a store an on-demand option lives in memory like the others.
    if (!info.atStart && state().store)
        value = accept(info, readFromStore(info.section, info.key));
    return unboxed<T>(value);
}
template bool optionValue<bool>(OptionId);
template long optionValue<long>(OptionId);
template std::wstring optionValue<std::wstring>(OptionId);

void setOptionValue(OptionId id, const RegValue& value)
{
    state().values[indexOf(id)] = value;
    std::exception_ptr failure;
    try {
        writeSetting(optionSection(id), kCatalogue[indexOf(id)].key, value);
    } catch (...) {
        failure = std::current_exception();
    }
    tellObservers(id);
    if (failure)
        std::rethrow_exception(failure);
}

void LoadSettings()
{
    trap(kModule, [] {
        std::size_t next = 0;
        while (next < kOptionCount && kCatalogue[next].atStart)
            next = loadSection(next);
    });
}

void LoadFadeScheme()
{
    trap(kModule, [] { loadSection(indexOf(opt::FadeScheme::FadeNumber.id())); });
}

OptionSubscription::OptionSubscription(std::function<void(OptionId)> callback)
    : callback_(std::make_shared<std::function<void(OptionId)>>(std::move(callback)))
{
    state().observers.push_back(callback_);
}

OptionSubscription onOptionChanged(std::function<void(OptionId)> callback)
{
    return OptionSubscription(std::move(callback));
}

template <SettingType T>
T readSetting(std::wstring_view section, const std::wstring& key, T preset)
{
    const auto stored = readFromStore(section, key.c_str());
    if (!stored)
        return preset;
    if constexpr (std::same_as<T, bool>)
        return asBoolean(*stored).value_or(preset);
    else if constexpr (std::same_as<T, long>)
        return asLong(*stored).value_or(preset);
    else
        return asText(*stored).value_or(std::move(preset));
}
template bool readSetting(std::wstring_view, const std::wstring&, bool);
template long readSetting(std::wstring_view, const std::wstring&, long);
template std::wstring readSetting(std::wstring_view, const std::wstring&, std::wstring);

void writeSetting(std::wstring_view section, std::wstring_view key, const RegValue& value)
{
    if (auto& store = state().store)
        store->write(section, key, value);
}

std::vector<std::pair<std::wstring, RegValue>> settingValues(std::wstring_view section)
{
    using Values = std::vector<std::pair<std::wstring, RegValue>>;
    auto& store = state().store;
    return store ? store->values(section) : Values();
}

std::vector<std::wstring> settingSections(std::wstring_view section)
{
    auto& store = state().store;
    return store ? store->sections(section) : std::vector<std::wstring>();
}

void deleteSetting(std::wstring_view section, std::wstring_view key)
{
    if (auto& store = state().store)
        store->remove(section, key);
}

void deleteSettingSection(std::wstring_view section)
{
    if (auto& store = state().store)
        store->removeSection(section);
}

} // namespace velora
