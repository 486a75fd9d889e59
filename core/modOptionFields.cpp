#include "core/modOptionFields.h"

#include "base/files.h"
#include "base/text.h"

namespace velora {
namespace {

/// "1.5" or "1,5" in thousandths; no more than three places.
std::optional<long> thousandths(std::wstring_view text)
{
    const std::size_t point = text.find_first_of(L".,");
    std::wstring digits(text.substr(0, point));
    std::wstring part(point == text.npos ? L"" : text.substr(point + 1));
    if (digits.empty() || digits.size() > 5 || part.size() > 3)
        return std::nullopt;
    part.resize(3, L'0');
    digits += part;
    if (digits.find_first_not_of(L"0123456789") != digits.npos)
        return std::nullopt;
    return parseLong(digits);
}

std::optional<RegValue> textValue(const OptionField& field, std::wstring_view text)
{
    switch (field.kind) {
    case FieldKind::seconds: {
        const auto given = thousandths(trimView(text));
        if (!given || *given < field.least || *given > field.most)
            return std::nullopt;
        return trim(text);
    }
    case FieldKind::sound:
        if (text.find(L'\\') != text.npos && !fileExists(trim(text)))
            return std::nullopt;
        return trim(text);
    case FieldKind::text:
        if (text.size() > static_cast<std::size_t>(field.most))
            return std::nullopt;
        break;
    default: break;
    }
    return std::wstring(text);
}

std::wstring secondsText(long thousandths)
{
    return thousandths % 1000 == 0 ? std::to_wstring(thousandths / 1000)
                                   : L"0." + std::to_wstring(thousandths / 100);
}

} // namespace

RegValue presentValue(OptionId option)
{
    switch (optionCatalogue()[static_cast<std::size_t>(option)].type) {
    case OptionType::Boolean: return optionValue<bool>(option);
    case OptionType::Integer:
    case OptionType::Long: return static_cast<std::int32_t>(optionValue<long>(option));
    case OptionType::String: break;
    }
    return optionValue<std::wstring>(option);
}

std::optional<RegValue> fieldValue(const OptionField& field, std::wstring_view text)
{
    if (field.kind == FieldKind::choice && !choiceOf(field, text))
        return std::nullopt;
    if (!field.option)
        return std::wstring(text);
    switch (optionCatalogue()[static_cast<std::size_t>(*field.option)].type) {
    case OptionType::Boolean: {
        const auto on = asBoolean(RegValue(std::wstring(text)));
        return on ? std::optional<RegValue>(*on) : std::nullopt;
    }
    case OptionType::Integer:
    case OptionType::Long: {
        const auto number = parseLong(trimView(text));
        if (!number
            || (field.kind == FieldKind::number && (*number < field.least || *number > field.most)))
            return std::nullopt;
        return RegValue(static_cast<std::int32_t>(*number));
    }
    case OptionType::String: break;
    }
    return textValue(field, text);
}

std::wstring fieldRefusal(const OptionField& field)
{
    const std::wstring name = L"~B" + withoutMnemonic(field.caption) + L"~B~N ~N";
    switch (field.kind) {
    case FieldKind::number:
        return name + L"Please enter a whole number from " + std::to_wstring(field.least) + L" to "
               + std::to_wstring(field.most) + L".";
    case FieldKind::seconds:
        return name + L"Please enter a number of seconds from " + secondsText(field.least) + L" to "
               + secondsText(field.most) + L", such as 1.50.";
    case FieldKind::sound: return name + L"There is no such file. Please choose another one.";
    case FieldKind::text:
        return name + L"Please enter no more than " + std::to_wstring(field.most) + L" characters.";
    default: return name + L"Please choose one of the list.";
    }
}

std::optional<std::size_t> choiceOf(const OptionField& field, std::wstring_view text)
{
    for (std::size_t i = 0; i < field.choices.size(); ++i)
        if (equalNoCase(field.choices[i].value, text))
            return i;
    return std::nullopt;
}

wchar_t mnemonicOf(std::wstring_view caption)
{
    const std::size_t at = caption.find(L'&');
    return at + 1 < caption.size() && at != caption.npos ? upper(caption.substr(at + 1, 1))[0]
                                                         : L'\0';
}

std::wstring withoutMnemonic(std::wstring_view caption)
{
    return without(caption, L'&');
}

} // namespace velora
