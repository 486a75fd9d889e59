#include "chat/modFadePreview_win.h"

#include "base/handles.h"
#include "ui/Fonts.h"
#include "ui/WinGeometry.h"

namespace velora {
namespace {

constexpr wchar_t kFace[] = L"Arial";
constexpr int kPoints = 11;
constexpr int kSmallPoints = 8; // raised and lowered letters
constexpr int kInset = 6;

HFONT fontOf(const FadeRun& run)
{
    FontStyle style;
    style.bold = run.bold;
    style.italic = run.italic;
    style.underline = run.underline;
    return namedFont(kFace, run.shift ? kSmallPoints : kPoints, style);
}

} // namespace

void drawFaded(HDC dc, const Rect& where, const std::vector<FadeRun>& runs, COLORREF background)
{
    const RECT area = toRECT(where);
    const Brush brush(CreateSolidBrush(background));
    FillRect(dc, &area, brush.get());
    const int state = SaveDC(dc);
    IntersectClipRect(dc, area.left, area.top, area.right, area.bottom);
    SetBkMode(dc, TRANSPARENT);
    SetTextAlign(dc, TA_BASELINE);
    const int lineHeight = fontHeight(namedFont(kFace, kPoints)) + 4;
    int x = where.left + kInset, y = where.top + kInset + lineHeight * 3 / 4;
    for (const FadeRun& run : runs) {
        SelectObject(dc, fontOf(run));
        SetTextColor(dc, static_cast<COLORREF>(run.colour));
        for (const wchar_t c : run.text) {
            SIZE size{};
            GetTextExtentPoint32W(dc, &c, 1, &size);
            if (c == L'\n' || (c > L' ' && x + size.cx > where.right - kInset)) {
                x = where.left + kInset;
                y += lineHeight;
            }
            if (c == L'\n')
                continue;
            TextOutW(dc, x, y - run.shift * 4, &c, 1);
            x += size.cx;
        }
    }
    RestoreDC(dc, state);
}

} // namespace velora
