#include "ui/Placement.h"

#include <algorithm>

namespace velora {
namespace {
// Beyond this a stored number is damage, and sums of such numbers could overflow.
constexpr int kAbsurd = 100000;

bool sensible(const Rect& r)
{
    const auto fits = [](int v) { return v > -kAbsurd && v < kAbsurd; };
    return fits(r.left) && fits(r.top) && fits(r.right) && fits(r.bottom) && !r.empty();
}
} // namespace

std::optional<Rect> usablePlace(const Rect& wanted, const std::vector<Rect>& monitors)
{
    if (!sensible(wanted))
        return std::nullopt;
    const Rect title{wanted.left, wanted.top, wanted.right, wanted.top + kTitleHeight};
    const int enough = std::min(kTitleVisible, wanted.width());
    for (const Rect& monitor : monitors) {
        const Rect visible = intersection(title, monitor);
        if (visible.width() < enough || visible.height() < kTitleHeight)
            continue;
        Rect result = wanted;
        result.right = std::min(result.right, result.left + monitor.width());
        result.bottom = std::min(result.bottom, result.top + monitor.height());
        return result;
    }
    return std::nullopt;
}

Rect movedInto(const Rect& wanted, const Rect& area)
{
    const Size size{std::min(wanted.width(), area.width()),
                    std::min(wanted.height(), area.height())};
    const int left = std::clamp(wanted.left, area.left, area.right - size.width);
    const int top = std::clamp(wanted.top, area.top, area.bottom - size.height);
    return rectOf({left, top}, size);
}

} // namespace velora
