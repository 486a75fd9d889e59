#pragma once
// A surface for small pictures: drawn four times as large on a grid of 32 by 32 units, then
// averaged down, so that edges are smooth where GDI alone would leave steps.
#include "base/win.h"

#include <initializer_list>

namespace aolhost {

class Canvas {
public:
    struct Point {
        double x, y;
    };

    /// The picture fills the largest square in the middle of the area; what is there shines
    /// through where nothing is drawn.
    Canvas(HDC target, const RECT& area);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    static constexpr COLORREF kNone = CLR_INVALID;
    /// Colours of what comes next; kNone leaves the inside or the outline away.
    Canvas& colors(COLORREF fill, COLORREF outline, double lineWidth = 1.2);
    Canvas& polygon(std::initializer_list<Point> points);
    Canvas& line(std::initializer_list<Point> points);
    Canvas& box(double left, double top, double right, double bottom, double rounding = 0);
    Canvas& ellipse(double left, double top, double right, double bottom);
    Canvas& circle(double x, double y, double radius);
    Canvas& letter(wchar_t c, double size, double x, double y, COLORREF color, bool bold = true,
                   bool italic = false);

private:
    int at(double units) const;
    void dropTools();
    HDC target_;
    POINT corner_{};
    int side_ = 0;
    HDC dc_ = nullptr;
    HBITMAP bitmap_ = nullptr;
    HGDIOBJ formerBitmap_ = nullptr;
    unsigned char* bits_ = nullptr;
    HPEN pen_ = nullptr;
    HBRUSH brush_ = nullptr;
};

} // namespace aolhost
