#include "chat/modSendRules.h"

#include "base/text.h"
#include "chat/modKeyword.h"

#include <algorithm>

namespace velora {
namespace {
constexpr int kShortestLine = 10;
constexpr unsigned kUsualPause = 1500, kShortestPause = 100, kLongestPause = 60000;
} // namespace

SendDecision decideSend(std::wstring_view typed, const SendOptions& options)
{
    if (trimView(typed).empty())
        return {};
    if (options.keywords && typed.starts_with(L'/'))
        return isKeywordText(typed)
                   ? SendDecision{SendAction::keyword, std::wstring(typed.substr(1)), {}}
                   : SendDecision{};
    if (options.fader && !options.fadeWavOnly)
        return {SendAction::fade, {}, {}};
    // A fade counts by the text that is seen, so only plain text is divided.
    if (!options.fader && options.useMultiline
        && typed.size() > static_cast<std::size_t>(std::max(options.charsInLine, kShortestLine))) {
        auto lines = breakLines(typed, options.charsInLine);
        if (lines.size() > 1)
            return {SendAction::lines, {}, std::move(lines)};
    }
    return {};
}

std::vector<std::wstring> breakLines(std::wstring_view text, int longest)
{
    const auto most = static_cast<std::size_t>(std::max(longest, kShortestLine));
    std::vector<std::wstring> lines;
    for (const std::wstring& paragraph : splitLines(text)) {
        std::wstring_view rest = trimView(paragraph);
        while (rest.size() > most) {
            // A blank right behind the line still lets it end there.
            std::size_t end = rest.rfind(L' ', most);
            if (end == rest.npos || end == 0)
                end = most;
            lines.push_back(trim(rest.substr(0, end)));
            rest = trimView(rest.substr(end));
        }
        if (!rest.empty())
            lines.emplace_back(rest);
    }
    return lines;
}

unsigned pauseMs(std::wstring_view seconds)
{
    const std::wstring text = replaceAll(trimView(seconds), L",", L".");
    const std::size_t dot = text.find(L'.');
    const auto whole = parseLong(dot == 0 ? L"0" : text.substr(0, dot));
    std::wstring part = dot == text.npos ? L"" : text.substr(dot + 1, 3);
    part.resize(3, L'0');
    const auto thousandths = parseLong(part);
    if (!whole || !thousandths || *whole < 0 || *whole > 60 || *thousandths < 0)
        return kUsualPause;
    return std::clamp(static_cast<unsigned>(*whole * 1000 + *thousandths), kShortestPause,
                      kLongestPause);
}

} // namespace velora
