#include "aolhost/Art.h"

namespace aolhost {
namespace {

HFONT makeFont(const wchar_t* face, int points, bool bold)
{
    const int height = -MulDiv(points, 96, 72);
    return CreateFontW(height, 0, 0, 0, bold ? FW_BOLD : FW_NORMAL, FALSE, FALSE, FALSE,
                       DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                       DEFAULT_PITCH, face);
}

COLORREF between(COLORREF from, COLORREF to, int step, int steps)
{
    const auto mix = [&](int a, int b) { return a + (b - a) * step / steps; };
    return RGB(mix(GetRValue(from), GetRValue(to)), mix(GetGValue(from), GetGValue(to)),
               mix(GetBValue(from), GetBValue(to)));
}

} // namespace

HFONT font(Face face)
{
    static const HFONT fonts[] = {
        makeFont(L"Tahoma", 8, false), makeFont(L"Tahoma", 8, true), makeFont(L"Tahoma", 7, false),
        makeFont(L"Arial", 18, true),  makeFont(L"Arial", 11, true),
    };
    return fonts[static_cast<int>(face)];
}

HBRUSH pageBrush()
{
    static const HBRUSH brush = CreateSolidBrush(palette::kPage);
    return brush;
}

void fillGradient(HDC dc, const RECT& area, COLORREF from, COLORREF to, bool vertical)
{
    const int steps = vertical ? area.bottom - area.top : area.right - area.left;
    for (int i = 0; i < steps; ++i) {
        RECT band = area;
        if (vertical) {
            band.top = area.top + i;
            band.bottom = band.top + 1;
        } else {
            band.left = area.left + i;
            band.right = band.left + 1;
        }
        SetBkColor(dc, between(from, to, i, steps));
        ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &band, nullptr, 0, nullptr);
    }
}

void drawText(HDC dc, RECT area, const std::wstring& text, Face face, COLORREF color, UINT flags)
{
    const HGDIOBJ former = SelectObject(dc, font(face));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, color);
    DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &area, flags | DT_NOPREFIX);
    SelectObject(dc, former);
}

HICON makeIcon(Picture picture)
{
    constexpr int side = 16;
    const HDC screen = GetDC(nullptr);
    const HDC dc = CreateCompatibleDC(screen);
    const HBITMAP image = CreateCompatibleBitmap(screen, side, side);
    const HBITMAP mask = CreateBitmap(side, side, 1, 1, nullptr);
    const RECT area{0, 0, side, side};
    const HGDIOBJ former = SelectObject(dc, mask);
    // Shown where the mask is 0: a disc, so that no square ground is seen around the picture.
    PatBlt(dc, 0, 0, side, side, WHITENESS);
    SelectObject(dc, GetStockObject(BLACK_BRUSH));
    Ellipse(dc, 0, 0, side + 1, side + 1);
    SelectObject(dc, image);
    PatBlt(dc, 0, 0, side, side, BLACKNESS);
    drawPicture(dc, area, picture);
    SelectObject(dc, former);
    ICONINFO info{TRUE, 0, 0, mask, image};
    const HICON icon = CreateIconIndirect(&info);
    DeleteObject(mask);
    DeleteObject(image);
    DeleteDC(dc);
    ReleaseDC(nullptr, screen);
    return icon;
}

BufferedPaint::BufferedPaint(HWND window) : window_(window)
{
    BeginPaint(window, &paint_);
    GetClientRect(window, &area_);
    memory_ = CreateCompatibleDC(paint_.hdc);
    bitmap_ = CreateCompatibleBitmap(paint_.hdc, area_.right > 0 ? area_.right : 1,
                                     area_.bottom > 0 ? area_.bottom : 1);
    former_ = SelectObject(memory_, bitmap_);
}

BufferedPaint::~BufferedPaint()
{
    BitBlt(paint_.hdc, 0, 0, area_.right, area_.bottom, memory_, 0, 0, SRCCOPY);
    SelectObject(memory_, former_);
    DeleteObject(bitmap_);
    DeleteDC(memory_);
    EndPaint(window_, &paint_);
}

} // namespace aolhost
