#include "chat/modHotWords.h"

#include "base/text.h"

namespace velora {
namespace {
constexpr std::uint32_t kBetweenAlerts = 10000;
}

std::optional<std::wstring> findHotWord(std::wstring_view message,
                                        const std::vector<std::wstring>& words, bool caseSensitive)
{
    const std::wstring text = caseSensitive ? std::wstring(message) : lower(message);
    for (const std::wstring& word : words)
        if (!trimView(word).empty()
            && text.find(caseSensitive ? word : lower(word)) != std::wstring::npos)
            return word;
    return std::nullopt;
}

bool clsAlertLimit::mayAlert(std::uint32_t ms)
{
    if (last_ && ms - *last_ < kBetweenAlerts)
        return false;
    last_ = ms;
    return true;
}

} // namespace velora
