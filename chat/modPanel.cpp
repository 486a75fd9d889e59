#include "chat/modPanel.h"

#include "base/text.h"

#include <algorithm>
#include <vector>

namespace velora {
namespace {

/// Nobody's screen is larger; keeps sums far from overflow whatever the setting holds.
constexpr long kFarthest = 100000;

std::vector<std::wstring> namesIn(std::wstring_view text)
{
    std::vector<std::wstring> names;
    for (std::size_t from = 0; from <= text.size();) {
        const std::size_t comma = std::min(text.find(L',', from), text.size());
        if (std::wstring name = trim(text.substr(from, comma - from)); !name.empty())
            names.push_back(std::move(name));
        from = comma + 1;
    }
    return names;
}

} // namespace

std::optional<PanelOffset> parsePanelOffset(const std::wstring& text)
{
    const std::size_t comma = text.find(L',');
    if (comma == std::wstring::npos)
        return std::nullopt;
    const auto right = parseLong(text.substr(0, comma));
    const auto top = parseLong(text.substr(comma + 1));
    if (!right || !top || *right < 0 || *top < 0 || *right > kFarthest || *top > kFarthest)
        return std::nullopt;
    return PanelOffset{static_cast<int>(*right), static_cast<int>(*top)};
}

std::wstring panelOffsetText(PanelOffset offset)
{
    return std::to_wstring(offset.fromRight) + L"," + std::to_wstring(offset.fromTop);
}

Rect panelPlace(const Rect& frame, Size panel, PanelOffset offset)
{
    const int left = std::max(frame.left, frame.right - offset.fromRight - panel.width);
    const int top =
        std::max(frame.top, std::min(frame.top + offset.fromTop, frame.bottom - panel.height));
    return rectOf({left, top}, panel);
}

PanelOffset panelOffset(const Rect& frame, const Rect& panel)
{
    const Rect inside =
        panelPlace(frame, panel.size(), {frame.right - panel.right, panel.top - frame.top});
    return {std::max(0, frame.right - inside.right), std::max(0, inside.top - frame.top)};
}

bool menuInTray(std::wstring_view menuAccess)
{
    return equalNoCase(trimView(menuAccess), L"Tray");
}

bool holdsName(std::wstring_view names, std::wstring_view name)
{
    const auto all = namesIn(names);
    return std::any_of(all.begin(), all.end(),
                       [&](const std::wstring& each) { return equalNoCase(each, name); });
}

std::wstring withName(std::wstring_view names, std::wstring_view name)
{
    const std::wstring others = withoutName(names, name);
    return others.empty() ? std::wstring(name) : others + L"," + std::wstring(name);
}

std::wstring withoutName(std::wstring_view names, std::wstring_view name)
{
    std::wstring others;
    for (const std::wstring& each : namesIn(names))
        if (!equalNoCase(each, name))
            others += (others.empty() ? L"" : L",") + each;
    return others;
}

} // namespace velora
