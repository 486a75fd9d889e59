#include "chat/modKeyword.h"

#include "base/text.h"

namespace velora {
namespace {

struct Plain {
    std::wstring_view word;
    Keyword keyword;
};

constexpr std::array<Plain, 19> kPlain = {{
    {L"hushkit", Keyword::Hushkit},     {L"imoff", Keyword::ImOff},
    {L"imon", Keyword::ImOn},           {L"help", Keyword::Help},
    {L"wavlist", Keyword::WavList},     {L"adv", Keyword::Advertise},
    {L"advertise", Keyword::Advertise}, {L"updates", Keyword::Update},
    {L"update", Keyword::Update},       {L"changehug", Keyword::ChangeHug},
    {L"show", Keyword::ShowFade},       {L"hide", Keyword::HideFade},
    {L"fadeon", Keyword::FadeOn},       {L"fadeoff", Keyword::FadeOff},
    {L"options", Keyword::Options},     {L"opt", Keyword::Options},
    {L"edit", Keyword::EditKeywords},   {L"fwedit", Keyword::EditGlintunes},
    {L"multiline", Keyword::MultiLine},
}};

// In this order, and found anywhere in the text.
constexpr std::array<Plain, 4> kWithArgument = {{
    {L"profile:", Keyword::Profile},
    {L"email:", Keyword::Email},
    {L"im:", Keyword::Im},
    {L"log:", Keyword::Log},
}};

} // namespace

bool isKeywordText(std::wstring_view typed)
{
    if (!typed.starts_with(L'/'))
        return false;
    const std::wstring rest = lower(typed.substr(1));
    return rest.find(L'/') == rest.npos || rest.find(L"http://") != rest.npos;
}

KeywordText parseKeyword(std::wstring_view text)
{
    const std::wstring word = screenNameKey(text);
    for (const Plain& entry : kPlain)
        if (word == entry.word)
            return {entry.keyword, {}};
    for (const Plain& entry : kWithArgument)
        if (word.find(entry.word) != word.npos) {
            const std::wstring_view argument = text.substr(text.find(L':') + 1);
            return {entry.keyword,
                    entry.keyword == Keyword::Log ? std::wstring(argument) : trim(argument)};
        }
    return {Keyword::Other, without(text, L' ')};
}

bool isWebAddress(std::wstring_view target)
{
    return startsWithNoCase(target, L"http://") || startsWithNoCase(target, L"https://")
           || startsWithNoCase(target, L"www.");
}

} // namespace velora
