#include "im_mail/modAnswerRules.h"

#include "base/safename.h"
#include "base/text.h"

#include <algorithm>

namespace velora {
namespace {

constexpr wchar_t kLink[] = L"<A HREF=https://velora.example>Velora</A>";
constexpr std::wstring_view kNameVariable = L"{%}";
constexpr std::uint32_t kHour = 3600u * 1000u;

} // namespace

std::wstring defaultAnswer()
{
    return std::wstring(L"Hi, {%}!  My IMs are currently being answered by ") + kLink
           + L" as I am unavailable at this time.  Please try again later or leave me an E-Mail!  "
             L":)";
}

std::wstring newGeneralMessage()
{
    return std::wstring(L"Hello {%}, My IMs are being answered by ") + kLink
           + L" as I am currently unable to personally answer your IM at this time.  Please leave "
             L"me a "
             L"message and I will get back to you ASAP!  :)";
}

bool modeAnswers(int mode, bool inExceptions, bool hasNote)
{
    switch (mode) {
    case 0: return false;
    case 2: return inExceptions;
    case 3: return !inExceptions;
    case 4: return hasNote;
    case 5: return !hasNote;
    default: return true;
    }
}

bool listHolds(std::wstring_view list, std::wstring_view screenName)
{
    const std::wstring key = screenNameKey(screenName);
    const auto lines = splitLines(list);
    return !key.empty() && std::any_of(lines.begin(), lines.end(), [&](const std::wstring& line) {
        return screenNameKey(line) == key;
    });
}

AnswerChoice GetReturnMsg(const std::optional<std::wstring>& personalised,
                          const std::optional<std::wstring>& general, std::wstring_view defaultText)
{
    std::wstring text = personalised ? *personalised
                        : general    ? *general
                                     : std::wstring(defaultText);
    if (text.size() > kMostImCharacters)
        return {defaultAnswer(), true};
    if (text.empty())
        return {defaultAnswer(), false};
    return {std::move(text), false};
}

std::wstring fillAnswer(std::wstring_view text, std::wstring_view name)
{
    std::wstring safe = replaceAll(name, L"&", L"&amp;");
    safe = replaceAll(replaceAll(safe, L"<", L"&lt;"), L">", L"&gt;");
    return replaceAll(text, kNameVariable, safe);
}

std::wstring personalisedFileName(std::wstring_view screenName)
{
    return safeFileName(screenNameKey(screenName)) + L".dat";
}

void clsAnswered::clear()
{
    answered_.clear();
    recent_.clear();
}

bool clsAnswered::contains(std::wstring_view screenName) const
{
    return answered_.count(screenNameKey(screenName)) != 0;
}

bool clsAnswered::mayAnswer(std::wstring_view screenName, std::uint32_t ms, bool onceOnly)
{
    const std::wstring key = screenNameKey(screenName);
    if (key.empty() || (onceOnly && answered_.count(key)))
        return false;
    const auto found = recent_.find(key);
    if (found == recent_.end())
        return true;
    auto& times = found->second;
    std::erase_if(times, [&](std::uint32_t t) { return ms - t >= kHour; });
    return times.size() < static_cast<std::size_t>(std::max(mostPerHour_, 1));
}

void clsAnswered::add(std::wstring_view screenName, std::uint32_t ms)
{
    const std::wstring key = screenNameKey(screenName);
    answered_.insert(key);
    recent_[key].push_back(ms);
}

} // namespace velora
