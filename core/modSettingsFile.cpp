#include "core/modSettingsFile.h"

#include "base/text.h"
#include "base/trap.h"
#include "core/modOptionPages.h"

#include <algorithm>
#include <set>

namespace velora {
namespace {

constexpr wchar_t kHeader[] = L"Velora settings 1";
constexpr wchar_t kText[] = L"text", kNumber[] = L"number";
constexpr std::size_t kMostBytes = 2u << 20, kMostLines = 20000;
constexpr std::size_t kLongestName = 255, kLongestValue = 20000;
constexpr int kDeepest = 6;

bool plain(std::wstring_view text)
{
    return text.size() <= kLongestName
           && std::none_of(text.begin(), text.end(), [](wchar_t c) { return c < L' '; });
}

bool isSection(std::wstring_view section)
{
    const auto parts = split(section, L'\\');
    return plain(section) && parts.size() <= kDeepest
           && std::none_of(parts.begin(), parts.end(),
                           [](const std::wstring& part) { return trimView(part).empty(); });
}

bool isName(std::wstring_view name)
{
    return plain(name) && !name.empty();
}

std::wstring escaped(std::wstring_view text)
{
    std::wstring out;
    for (const wchar_t c : text)
        switch (c) {
        case L'\\': out += L"\\\\"; break;
        case L'\t': out += L"\\t"; break;
        case L'\r': out += L"\\r"; break;
        case L'\n': out += L"\\n"; break;
        default: out += c;
        }
    return out;
}

std::optional<std::wstring> unescaped(std::wstring_view text)
{
    std::wstring out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'\\') {
            out += text[i];
            continue;
        }
        switch (++i < text.size() ? text[i] : L'\0') {
        case L'\\': out += L'\\'; break;
        case L't': out += L'\t'; break;
        case L'r': out += L'\r'; break;
        case L'n': out += L'\n'; break;
        default: return std::nullopt;
        }
    }
    return out;
}

std::optional<RegValue> readValue(std::wstring_view kind, std::wstring_view text)
{
    if (kind == kText && text.size() <= kLongestValue) {
        auto value = unescaped(text);
        return value ? std::optional<RegValue>(std::move(*value)) : std::nullopt;
    }
    if (kind != kNumber)
        return std::nullopt;
    const auto number = parseLong(text);
    if (!number || *number != static_cast<std::int32_t>(*number))
        return std::nullopt;
    return RegValue(static_cast<std::int32_t>(*number));
}

std::optional<Setting> readLine(std::wstring_view line)
{
    const auto parts = split(line, L'\t');
    if (parts.size() != 4 || !isSection(parts[0]) || !isName(parts[1]))
        return std::nullopt;
    auto value = readValue(parts[2], parts[3]);
    if (!value)
        return std::nullopt;
    return Setting{parts[0], parts[1], std::move(*value)};
}

/// As the registry gives it back: texts and numbers are all that the program writes.
std::optional<Setting> asKept(const std::wstring& section, const std::wstring& name,
                              const RegValue& value)
{
    const auto kind = kindFor(value);
    if (!isSection(section) || !isName(name) || !kind)
        return std::nullopt;
    if (*kind == ValueKind::Number)
        return Setting{section, name, RegValue(static_cast<std::int32_t>(*asLong(value)))};
    const std::wstring text = textOf(value);
    if (*kind != ValueKind::Text || escaped(text).size() > kLongestValue)
        return std::nullopt;
    return Setting{section, name, RegValue(text)};
}

void collect(const std::wstring& section, int depth, std::vector<Setting>& all)
{
    for (const auto& [name, value] : settingValues(section))
        if (auto setting = asKept(section, name, value))
            all.push_back(std::move(*setting));
    if (depth < kDeepest)
        for (const std::wstring& inner : settingSections(section))
            collect(section + L"\\" + inner, depth + 1, all);
}

void write(const std::vector<Setting>& settings)
{
    for (const std::wstring& section : settingSections({}))
        deleteSettingSection(section);
    for (const Setting& setting : settings)
        writeSetting(setting.section, setting.name, setting.value);
}

std::vector<RegValue> presentOptions()
{
    std::vector<RegValue> values;
    for (std::size_t i = 0; i < kOptionCount; ++i)
        values.push_back(presentValue(OptionId{i}));
    return values;
}

/// Reads the options anew and tells of those that are others now.
void reread(const std::vector<RegValue>& before)
{
    LoadSettings();
    const std::vector<RegValue> now = presentOptions();
    for (std::size_t i = 0; i < kOptionCount; ++i)
        if (now[i] != before[i])
            setOptionValue(OptionId{i}, now[i]);
}

} // namespace

std::vector<Setting> presentSettings()
{
    std::vector<Setting> all;
    for (const std::wstring& section : settingSections({}))
        collect(section, 1, all);
    return all;
}

void replaceSettings(const std::vector<Setting>& settings)
{
    const std::vector<RegValue> before = presentOptions();
    const std::vector<Setting> former = presentSettings();
    try {
        write(settings);
    } catch (...) {
        const std::exception_ptr failure = std::current_exception();
        trap("modSettingsFile", [&] { write(former); });
        std::rethrow_exception(failure);
    }
    reread(before);
}

std::string settingsFile(const std::vector<Setting>& settings)
{
    std::wstring text = std::wstring(kHeader) + L"\r\n";
    for (const Setting& setting : settings)
        text += setting.section + L"\t" + setting.name + L"\t"
                + (std::holds_alternative<std::wstring>(setting.value) ? kText : kNumber) + L"\t"
                + escaped(textOf(setting.value)) + L"\r\n";
    return encodeFileText(text);
}

ReadSettings readSettingsFile(std::string_view bytes)
{
    if (bytes.size() > kMostBytes)
        return {{}, 1};
    const auto lines = splitLines(decodeFileText(bytes));
    if (lines.empty() || lines[0] != kHeader)
        return {{}, 1};
    ReadSettings read;
    std::set<std::wstring> known;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        auto setting = i < kMostLines ? readLine(lines[i]) : std::nullopt;
        if (!setting || !known.insert(lower(setting->section + L"\t" + setting->name)).second)
            return {{}, i + 1};
        read.settings.push_back(std::move(*setting));
    }
    return read;
}

} // namespace velora
