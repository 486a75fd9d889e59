#include "core/MarkupLabel.h"

#include "ui/Fonts.h"
#include "ui/Form.h"
#include "ui/Placement.h"
#include "ui/WinGeometry.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace velora {
namespace {
constexpr int kIconSize = 32;
// Slanted letters end a little beyond their measured width.
constexpr int kOverhang = 4;
// The surface's width; where the text would be taller than that is wide, the next one is tried.
constexpr int kWidths[] = {400, 560, 760};
// What of the screen's height a box needs beside its text: caption, buttons, margins, some air.
constexpr int kAroundText = 160;

HFONT fontFor(const MarkupStyle& style)
{
    return uiFont({style.bold, style.italic, style.underline});
}

int measureWord(std::wstring_view text, const MarkupStyle& style)
{
    return text.empty() ? 0 : textSize(fontFor(style), text).width;
}

// The markup's black is the colour of text: readable in the user's contrast scheme, too.
COLORREF colourFor(const MarkupStyle& style)
{
    return style.colour == kMarkupNormal ? GetSysColor(COLOR_BTNTEXT) : style.colour;
}

// With the distances that were measured: Wine draws smoothed letters wider than it measures them.
void drawText(HDC dc, Point at, const std::wstring& text)
{
    const int length = static_cast<int>(text.size());
    std::vector<int> ends(text.size());
    SIZE size = {};
    GetTextExtentExPointW(dc, text.c_str(), length, 0, nullptr, ends.data(), &size);
    std::adjacent_difference(ends.begin(), ends.end(), ends.begin());
    ExtTextOutW(dc, at.x, at.y, 0, nullptr, text.c_str(), static_cast<UINT>(length), ends.data());
}
} // namespace

void MarkupLabel::create(Form& form, std::wstring_view markup, int leftMargin, HICON icon)
{
    icon_ = icon;
    surface_.leftMargin = leftMargin;
    // Bold is a little taller in some fonts; all lines have one height.
    surface_.lineHeight = std::max(fontHeight(uiFont()), fontHeight(uiFont({.bold = true})));
    const HWND reference = GetForegroundWindow();
    plan(markup, monitorAreaNear(reference ? windowRect(reference) : Rect{}));
    createDrawn(form, plainText(markup), [this](HDC dc, const Rect& r) { draw(dc, r); });
}

void MarkupLabel::plan(std::wstring_view markup, const Rect& area)
{
    const auto runs = parseMarkup(markup);
    const int most = std::max(1, (area.height() - kAroundText) / surface_.lineHeight);
    for (const int width : kWidths) {
        surface_.width = std::min(width, area.width() - 2 * kMargin);
        plan_ = planMarkup(runs, surface_, measureWord);
        if (plan_.lines <= most && plan_.height <= surface_.width)
            return;
    }
    if (plan_.lines > most)
        cutTo(most);
}

void MarkupLabel::cutTo(int lines)
{
    const int end = (lines - 1) * surface_.lineHeight; // the last line is for the dots
    std::erase_if(plan_.words, [end](const MarkupWord& word) { return word.y >= end; });
    const MarkupStyle plain;
    plan_.words.push_back({surface_.leftMargin, end, measureWord(L"...", plain), plain, L"..."});
    plan_.lines = lines;
    plan_.height = lines * surface_.lineHeight;
}

Size MarkupLabel::naturalSize() const
{
    return {plan_.right + kOverhang, std::max(plan_.height, icon_ ? kIconSize : 0)};
}

void MarkupLabel::draw(HDC dc, const Rect& surface) const
{
    const RECT all = toRECT(surface);
    FillRect(dc, &all, GetSysColorBrush(COLOR_BTNFACE));
    if (icon_)
        DrawIconEx(dc, surface.left + kMargin, surface.top, icon_, kIconSize, kIconSize, 0, nullptr,
                   DI_NORMAL);
    // One or two lines stand in the middle of the icon's height.
    const int lead = icon_ ? std::max(0, (kIconSize - plan_.height) / 2) : 0;
    SetBkMode(dc, TRANSPARENT);
    const HGDIOBJ before = GetCurrentObject(dc, OBJ_FONT);
    for (const MarkupWord& word : plan_.words) {
        SelectObject(dc, fontFor(word.style));
        SetTextColor(dc, colourFor(word.style));
        drawText(dc, {surface.left + word.x, surface.top + lead + word.y}, word.text);
    }
    SelectObject(dc, before);
}

} // namespace velora
