#include "aolhost/Canvas.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace aolhost {
namespace {

constexpr int kTimes = 4;
constexpr double kGrid = 32;

} // namespace

Canvas::Canvas(HDC target, const RECT& area) : target_(target)
{
    const int width = area.right - area.left, height = area.bottom - area.top;
    side_ = std::max(1, std::min(width, height));
    corner_ = {area.left + (width - side_) / 2, area.top + (height - side_) / 2};
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = side_ * kTimes;
    info.bmiHeader.biHeight = -side_ * kTimes;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(target, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    bits_ = static_cast<unsigned char*>(bits);
    dc_ = CreateCompatibleDC(target);
    formerBitmap_ = SelectObject(dc_, bitmap_);
    SetStretchBltMode(dc_, COLORONCOLOR);
    StretchBlt(dc_, 0, 0, side_ * kTimes, side_ * kTimes, target, corner_.x, corner_.y, side_,
               side_, SRCCOPY);
    SetBkMode(dc_, TRANSPARENT);
}

Canvas::~Canvas()
{
    GdiFlush();
    // Each pixel of the result is the mean of its kTimes by kTimes, kept in the top left corner.
    const int stride = side_ * kTimes * 4;
    for (int y = 0; y < side_ && bits_; ++y)
        for (int x = 0; x < side_; ++x)
            for (int channel = 0; channel < 3; ++channel) {
                int sum = 0;
                for (int dy = 0; dy < kTimes; ++dy)
                    for (int dx = 0; dx < kTimes; ++dx)
                        sum += bits_[(y * kTimes + dy) * stride + (x * kTimes + dx) * 4 + channel];
                bits_[y * stride + x * 4 + channel] =
                    static_cast<unsigned char>(sum / (kTimes * kTimes));
            }
    BitBlt(target_, corner_.x, corner_.y, side_, side_, dc_, 0, 0, SRCCOPY);
    dropTools();
    SelectObject(dc_, formerBitmap_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
}

int Canvas::at(double units) const
{
    return static_cast<int>(std::lround(units * side_ * kTimes / kGrid));
}

void Canvas::dropTools()
{
    SelectObject(dc_, GetStockObject(NULL_PEN));
    SelectObject(dc_, GetStockObject(NULL_BRUSH));
    if (pen_)
        DeleteObject(pen_);
    if (brush_)
        DeleteObject(brush_);
    pen_ = nullptr;
    brush_ = nullptr;
}

Canvas& Canvas::colors(COLORREF fill, COLORREF outline, double lineWidth)
{
    dropTools();
    if (outline != kNone) {
        pen_ = CreatePen(PS_SOLID, std::max(1, at(lineWidth)), outline);
        SelectObject(dc_, pen_);
    }
    if (fill != kNone) {
        brush_ = CreateSolidBrush(fill);
        SelectObject(dc_, brush_);
    }
    return *this;
}

Canvas& Canvas::polygon(std::initializer_list<Point> points)
{
    std::vector<POINT> corners;
    for (const Point& p : points)
        corners.push_back({at(p.x), at(p.y)});
    Polygon(dc_, corners.data(), static_cast<int>(corners.size()));
    return *this;
}

Canvas& Canvas::line(std::initializer_list<Point> points)
{
    std::vector<POINT> corners;
    for (const Point& p : points)
        corners.push_back({at(p.x), at(p.y)});
    Polyline(dc_, corners.data(), static_cast<int>(corners.size()));
    return *this;
}

Canvas& Canvas::box(double left, double top, double right, double bottom, double rounding)
{
    RoundRect(dc_, at(left), at(top), at(right), at(bottom), at(rounding * 2), at(rounding * 2));
    return *this;
}

Canvas& Canvas::ellipse(double left, double top, double right, double bottom)
{
    Ellipse(dc_, at(left), at(top), at(right), at(bottom));
    return *this;
}

Canvas& Canvas::circle(double x, double y, double radius)
{
    return ellipse(x - radius, y - radius, x + radius, y + radius);
}

Canvas& Canvas::letter(wchar_t c, double size, double x, double y, COLORREF color, bool bold,
                       bool italic)
{
    const HFONT face = CreateFontW(-at(size), 0, 0, 0, bold ? FW_BOLD : FW_NORMAL, italic, FALSE,
                                   FALSE, DEFAULT_CHARSET, 0, 0, 0, 0, L"Arial");
    const HGDIOBJ former = SelectObject(dc_, face);
    SetTextColor(dc_, color);
    SetTextAlign(dc_, TA_CENTER | TA_BASELINE);
    TextOutW(dc_, at(x), at(y), &c, 1);
    SelectObject(dc_, former);
    DeleteObject(face);
    return *this;
}

} // namespace aolhost
