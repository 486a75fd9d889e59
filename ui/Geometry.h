#pragma once
// Points, sizes and rectangles in pixels, for the rules of placing that know no window.

namespace velora {

struct Point {
    int x = 0, y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    int width = 0, height = 0;
    bool operator==(const Size&) const = default;
};

/// `right` and `bottom` lie one past the last pixel, as the system counts.
struct Rect {
    int left = 0, top = 0, right = 0, bottom = 0;
    bool operator==(const Rect&) const = default;

    int width() const { return right - left; }
    int height() const { return bottom - top; }
    Size size() const { return {width(), height()}; }
    bool empty() const { return right <= left || bottom <= top; }
};

inline Rect rectOf(Point at, Size size)
{
    return {at.x, at.y, at.x + size.width, at.y + size.height};
}
Rect intersection(const Rect& a, const Rect& b);
/// A rectangle of this size in the middle of `outer`.
Rect centredIn(const Rect& outer, Size size);

} // namespace velora
