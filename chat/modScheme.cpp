#include "chat/modScheme.h"

#include "base/text.h"

#include <algorithm>
#include <array>

namespace velora {
namespace {

constexpr std::array<std::wstring_view, kMostColours> kCounts = {
    L"One", L"Two", L"Three", L"Four", L"Five", L"Six", L"Seven", L"Eight", L"Nine", L"Ten"};

struct Line {
    std::wstring key; ///< lower case
    std::wstring_view value;
};

std::vector<Line> readLines(std::wstring_view text)
{
    std::vector<Line> lines;
    std::size_t from = 0;
    while (from <= text.size()) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n", from), text.size());
        const std::wstring_view line = text.substr(from, end - from);
        const std::size_t equals = line.find(L'=');
        if (equals != line.npos)
            lines.push_back(
                {lower(trimView(line.substr(0, equals))), trimView(line.substr(equals + 1))});
        from = end + 1;
    }
    return lines;
}

/// 1 to 10 for the words "one" to "ten" in any case, else 0.
int countOfWord(std::wstring_view word)
{
    for (std::size_t i = 0; i < kCounts.size(); ++i)
        if (equalNoCase(word, kCounts[i]))
            return static_cast<int>(i) + 1;
    return 0;
}

bool flagOf(std::wstring_view value)
{
    return equalNoCase(value, L"true") || parseLong(value).value_or(0) != 0;
}

/// A colour as it was written: signed or unsigned, whatever is above the 24th bit dropped.
std::optional<Colour> colourOf(std::wstring_view value)
{
    if (const auto number = parseLong(value))
        return static_cast<Colour>(*number & 0xFFFFFF);
    return std::nullopt;
}

/// The place of an older colour key: "color0" is the first, but a file that numbers from 1 has no
/// "color0" and means "color1" by it. Negative for other keys.
int olderColour(std::wstring_view key, bool fromZero)
{
    constexpr std::wstring_view prefix = L"color";
    if (!key.starts_with(prefix))
        return -1;
    const long number = parseLong(key.substr(prefix.size())).value_or(-1);
    return static_cast<int>(number) - (fromZero ? 0 : 1);
}

std::wstring oneLine(std::wstring_view value)
{
    std::wstring line(value);
    std::replace_if(
        line.begin(), line.end(), [](wchar_t c) { return c == L'\r' || c == L'\n' || !c; }, L' ');
    return line;
}

} // namespace

std::optional<FadeScheme> parseScheme(std::wstring_view text)
{
    FadeScheme scheme;
    Fade& fade = scheme.fade;
    bool hasCount = false, hasColour = false;
    const std::vector<Line> lines = readLines(text);
    const bool fromZero =
        std::any_of(lines.begin(), lines.end(), [](const Line& l) { return l.key == L"color0"; });
    const std::array<std::pair<std::wstring_view, bool*>, 6> flags = {
        {{L"wavy", &fade.Wavy},
         {L"bold", &fade.Bold},
         {L"italic", &fade.Italic},
         {L"italics", &fade.Italic},
         {L"uline", &fade.ULine},
         {L"underline", &fade.ULine}}};
    const std::array<std::pair<std::wstring_view, std::wstring*>, 4> tags = {
        {{L"author", &scheme.Author},
         {L"datecreated", &scheme.DateCreated},
         {L"modified", &scheme.Modified},
         {L"comments", &scheme.Comments}}};
    for (const Line& line : lines) {
        if (line.key == L"fadenumber") {
            const int word = countOfWord(line.value);
            const auto number = word ? std::optional<long>(word) : parseLong(line.value);
            hasCount = hasCount || number.has_value();
            if (number)
                fade.FadeNumber = static_cast<int>(std::clamp(*number, 1L, 10L));
        }
        const int named = countOfWord(line.key);
        const int place = named ? named - 1 : olderColour(line.key, fromZero);
        if (place >= 0 && place < kMostColours)
            if (const auto colour = colourOf(line.value)) {
                fade.colours[static_cast<std::size_t>(place)] = *colour;
                hasColour = true;
            }
        for (const auto& [key, flag] : flags)
            if (line.key == key)
                *flag = flagOf(line.value);
        for (const auto& [key, tag] : tags)
            if (line.key == key)
                *tag = line.value;
    }
    if (!hasCount || !hasColour)
        return std::nullopt;
    return scheme;
}

std::wstring renderScheme(const FadeScheme& scheme)
{
    std::wstring text;
    const auto line = [&](std::wstring_view key, std::wstring_view value) {
        text += key;
        text += L'=';
        text += oneLine(value);
        text += L"\r\n";
    };
    const auto flag = [&](std::wstring_view key, bool on) { line(key, on ? L"True" : L"False"); };
    const Fade& fade = scheme.fade;
    text += L"[Options]\r\n";
    line(L"FadeNumber", std::to_wstring(fade.FadeNumber));
    text += L"[Colors]\r\n";
    for (std::size_t i = 0; i < kCounts.size(); ++i)
        line(kCounts[i], std::to_wstring(fade.colours[i]));
    text += L"[Style]\r\n";
    flag(L"Wavy", fade.Wavy);
    flag(L"Bold", fade.Bold);
    flag(L"Italic", fade.Italic);
    flag(L"ULine", fade.ULine);
    text += L"[Tag]\r\n";
    line(L"Author", scheme.Author);
    line(L"DateCreated", scheme.DateCreated);
    line(L"Modified", scheme.Modified);
    line(L"Comments", scheme.Comments);
    return text;
}

std::wstring schemeTagText(const FadeScheme& scheme)
{
    const auto orElse = [](const std::wstring& value, const wchar_t* other) {
        return value.empty() ? std::wstring(other) : value;
    };
    return L"Author:  " + orElse(scheme.Author, L"Orv Software") + L"\r\nCreated:  "
           + orElse(scheme.DateCreated, L"Unknown") + L"\r\nModified By:  "
           + orElse(scheme.Modified, L"Unknown");
}

} // namespace velora
