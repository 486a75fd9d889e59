#include "sounds/modSoundCommand.h"

#include "base/safename.h"
#include "base/text.h"

namespace velora {
namespace {

constexpr std::wstring_view kTrigger = L"{s ";
constexpr std::wstring_view kPlace = L"{%}";
constexpr std::uint64_t kKilo = 1u << 10, kMega = 1u << 20, kGiga = 1u << 30;

/// `thousandths` with three decimal places, its whole part grouped.
std::wstring formatThousandths(std::uint64_t thousandths, const NumberStyle& style)
{
    std::wstring whole = std::to_wstring(thousandths / 1000);
    if (whole == L"0" && !style.leadingZero)
        whole.clear();
    for (std::size_t at = whole.size(); at > 3; at -= 3)
        whole.insert(at - 3, style.thousands);
    const std::wstring digits = std::to_wstring(1000 + thousandths % 1000);
    return whole + style.decimal + digits.substr(1);
}

} // namespace

const wchar_t kBuiltInGlintune[] =
    L"- \u2013 \u2014\u2022\u00a4\u2022{%}\u2022\u00a4\u2022\u2014 \u2013 -";

std::wstring soundCommand(std::wstring_view wavName, bool upperTrigger)
{
    return (upperTrigger ? L"{S " : L"{s ") + std::wstring(wavName) + L"}";
}

std::wstring ParseWavName(std::wstring_view line)
{
    const std::size_t trigger = lower(line).find(kTrigger);
    if (trigger == std::wstring::npos)
        return {};
    const std::wstring_view rest = line.substr(trigger + kTrigger.size());
    const std::size_t end = rest.find(L'}');
    return end == std::wstring_view::npos ? std::wstring() : std::wstring(rest.substr(0, end));
}

bool isSafeSoundName(std::wstring_view wavName)
{
    return isPlainFileName(wavName);
}

std::wstring sizeText(std::uint64_t bytes, const NumberStyle& style)
{
    if (bytes >= kGiga)
        return {};
    const std::uint64_t unit = bytes < kMega ? kKilo : kMega;
    std::wstring text = formatThousandths((bytes * 1000 + unit / 2) / unit, style);
    text.resize(text.size() - 2);
    return text + (unit == kKilo ? L" KB" : L" MB");
}

Glintune decorate(std::wstring_view style, std::wstring_view command)
{
    Glintune result;
    std::size_t place = style.find(kPlace);
    if (place == std::wstring_view::npos) {
        style = kBuiltInGlintune;
        result.newStyle = style;
        place = style.find(kPlace);
    }
    result.line.append(style.substr(0, place)).append(command);
    result.line.append(style.substr(place + kPlace.size()));
    return result;
}

} // namespace velora
