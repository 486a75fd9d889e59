#include "im_mail/modAlertRules.h"

#include "base/text.h"

#include <algorithm>

namespace velora {
namespace {
constexpr int kFromEdge = 12;
}

Rect alertPlace(long position, const Rect& area, Size size)
{
    const bool left = position == 1 || position == 3, top = position == 2 || position == 3;
    const int x = left ? area.left + kFromEdge : area.right - kFromEdge - size.width;
    const int y = top ? area.top + kFromEdge : area.bottom - kFromEdge - size.height;
    return {x, y, x + size.width, y + size.height};
}

bool flashesAt(int tick)
{
    return tick >= 0 && tick < 2 * kFlashes && tick % 2 == 0;
}

int slideHeight(int step, int steps, int height)
{
    return steps <= 0 ? height : std::clamp(step, 0, steps) * height / steps;
}

std::wstring alertText(std::wstring_view message)
{
    std::wstring text;
    for (const wchar_t c : message.substr(0, 4 * kMostAlertText)) {
        const bool blank = static_cast<unsigned>(c) <= 0x20;
        if (!blank)
            text += c;
        else if (!text.empty() && text.back() != L' ')
            text += L' ';
    }
    text = trim(text);
    if (text.size() > kMostAlertText)
        text = text.substr(0, kMostAlertText) + L"\u2026";
    return text;
}

bool holdsAlertText(std::wstring_view text, std::wstring_view wanted)
{
    return !trimView(wanted).empty() && lower(text).find(lower(wanted)) != std::wstring::npos;
}

std::wstring alertCount(std::size_t messages, std::size_t senders)
{
    if (messages < 2)
        return {};
    const std::wstring count = std::to_wstring(messages) + L" messages";
    return senders < 2 ? count : count + L" from " + std::to_wstring(senders) + L" members";
}

} // namespace velora
