#include "sounds/modSoundLine.h"

#include "base/text.h"
#include "core/modMarkup.h"

#include <algorithm>

namespace velora {
namespace {

constexpr std::wstring_view kImCaptions[] = {L"Send Instant Message", L"Telegramm schicken",
                                             L"Envoyer un Message Eclair"};
constexpr std::wstring_view kImBeginnings[] = {L">instant message from:",
                                               L"instant message from:",
                                               L"instant message to:",
                                               L">im from:",
                                               L"im from:",
                                               L">im to:"};

using Member = std::wstring WavDescription::*;
constexpr std::pair<std::wstring_view, Member> kMembers[] = {
    {L"Title", &WavDescription::title},
    {L"Artist", &WavDescription::artist},
    {L"Album", &WavDescription::album},
    {L"Year", &WavDescription::year},
    {L"Comments", &WavDescription::comments},
    {L"Genre", &WavDescription::genre},
    {L"Compression", &WavDescription::compression}};

std::wstring oneLine(std::wstring text)
{
    for (wchar_t& c : text)
        if (c < L' ')
            c = L' ';
    return trim(text);
}

} // namespace

std::wstring randomGlintune(const std::vector<std::wstring>& styles, RandomSource& random)
{
    if (styles.empty())
        return {};
    random.randomize();
    return styles[static_cast<std::size_t>(static_cast<double>(styles.size()) * random.rnd())];
}

std::wstring descriptionField(const WavDescription& description, std::wstring_view field)
{
    for (const auto& [name, member] : kMembers)
        if (equalNoCase(name, field))
            return description.*member;
    return {};
}

const std::vector<std::wstring>& descriptionFields()
{
    static const std::vector<std::wstring> names = [] {
        std::vector<std::wstring> all;
        for (const auto& [name, member] : kMembers)
            all.emplace_back(name);
        return all;
    }();
    return names;
}

std::vector<std::pair<std::wstring, std::wstring>>
describedFields(const WavDescription& description, const std::vector<std::wstring>& fields)
{
    std::vector<std::pair<std::wstring, std::wstring>> told;
    for (const std::wstring& field : fields)
        if (std::wstring value = trim(descriptionField(description, field)); !value.empty())
            told.emplace_back(field + L":", std::move(value));
    return told;
}

std::wstring descriptionTip(const WavDescription& description,
                            const std::vector<std::wstring>& fields)
{
    std::wstring text;
    for (const auto& [label, value] : describedFields(description, fields))
        text.append(text.empty() ? L"" : L"\r\n").append(label).append(L" ").append(value);
    return text;
}

std::wstring descriptionMarkup(const WavDescription& description,
                               const std::vector<std::wstring>& fields)
{
    std::wstring text;
    for (const auto& [label, value] : describedFields(description, fields))
        text += (text.empty() ? L"~B~CB" : L"~N~B~CB") + label + L"~B~CN " + literal(value);
    return text;
}

std::wstring descriptionText(const WavDescription& description, std::wstring_view field1,
                             std::wstring_view field2)
{
    std::wstring text = oneLine(descriptionField(description, field1));
    const std::wstring more = oneLine(descriptionField(description, field2));
    if (!text.empty() && !more.empty())
        text += L" - ";
    return text + more;
}

std::wstring descriptionLine(std::wstring_view text, bool trimDescrip)
{
    if (trimView(text).empty())
        return {};
    return (trimDescrip ? std::wstring() : std::wstring(L"Descrip: ")).append(text);
}

bool takesSounds(std::wstring_view caption)
{
    for (const std::wstring_view im : kImCaptions)
        if (caption.find(im) != std::wstring_view::npos)
            return true;
    if (caption.starts_with(L"Re:") || caption.starts_with(L"Fwd:"))
        return true;
    const std::wstring_view line = caption.substr(0, caption.find_first_of(L"\r\n"));
    const std::size_t colon = line.find(L':');
    if (colon == std::wstring_view::npos)
        return false;
    const std::wstring beginning = lower(trimView(line.substr(0, colon + 1)));
    return std::find(std::begin(kImBeginnings), std::end(kImBeginnings), beginning)
           != std::end(kImBeginnings);
}

} // namespace velora
