#include "ui/Geometry.h"

#include <algorithm>

namespace velora {

Rect intersection(const Rect& a, const Rect& b)
{
    const Rect both{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                    std::min(a.bottom, b.bottom)};
    return both.empty() ? Rect{} : both;
}

Rect centredIn(const Rect& outer, Size size)
{
    return rectOf({outer.left + (outer.width() - size.width) / 2,
                   outer.top + (outer.height() - size.height) / 2},
                  size);
}

} // namespace velora
