#include "aolhost/Art.h"

namespace aolhost {
namespace {

constexpr int kCaptionHeight = 14;

void frameRound(HDC dc, const RECT& area, COLORREF color)
{
    const HPEN pen = CreatePen(PS_SOLID, 1, color);
    const HGDIOBJ formerPen = SelectObject(dc, pen);
    const HGDIOBJ formerBrush = SelectObject(dc, GetStockObject(NULL_BRUSH));
    RoundRect(dc, area.left, area.top, area.right, area.bottom, 6, 6);
    SelectObject(dc, formerPen);
    SelectObject(dc, formerBrush);
    DeleteObject(pen);
}

/// A raised button, pressed or touched.
void drawFace(HDC dc, RECT box, const IconState& state)
{
    const RECT edge = box;
    InflateRect(&box, -1, -1);
    const COLORREF top = state.hot ? RGB(255, 252, 236) : RGB(252, 253, 255);
    const COLORREF end = state.hot ? RGB(244, 216, 140) : RGB(176, 194, 226);
    if (state.down)
        fillGradient(dc, box, end, top);
    else
        fillGradient(dc, box, top, end);
    frameRound(dc, edge, palette::kLine);
}

void drawPush(HDC dc, const RECT& area, const std::wstring& caption, const IconState& state)
{
    drawFace(dc, area, state);
    RECT label = area;
    if (state.down)
        OffsetRect(&label, 1, 1);
    drawText(dc, label, caption, Face::bold, state.enabled ? palette::kText : palette::kLine,
             DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    if (state.focused) {
        RECT ring = area;
        InflateRect(&ring, -4, -4);
        DrawFocusRect(dc, &ring);
    }
}

} // namespace

void drawIcon(HDC dc, const RECT& area, const std::wstring& caption, Picture picture, IconLook look,
              const IconState& state)
{
    if (look == IconLook::push) {
        drawPush(dc, area, caption, state);
        return;
    }
    if (state.hot || state.down || look == IconLook::small)
        drawFace(dc, area, state);
    else if (state.focused)
        frameRound(dc, area, palette::kLine);
    RECT image = area, label = area;
    const int push = state.down ? 1 : 0;
    if (look != IconLook::small) {
        label.top = label.bottom - kCaptionHeight - 2;
        image.bottom = label.top;
        InflateRect(&image, 0, -2);
    } else {
        InflateRect(&image, -4, -4);
    }
    OffsetRect(&image, push, push);
    OffsetRect(&label, push, push);
    drawPicture(dc, image, picture);
    if (look != IconLook::small)
        drawText(dc, label, caption, Face::normal, state.enabled ? palette::kText : palette::kLine,
                 DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
}

} // namespace aolhost
