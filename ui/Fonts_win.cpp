#include "ui/Fonts.h"

#include "ui/WinGeometry.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>

namespace velora {
namespace {

LOGFONTW messageFont()
{
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0))
        return metrics.lfMessageFont;
    LOGFONTW plain = {};
    plain.lfHeight = -11;
    std::wstring(L"MS Shell Dlg 2").copy(plain.lfFaceName, LF_FACESIZE - 1);
    return plain;
}

void apply(LOGFONTW& font, const FontStyle& style)
{
    font.lfHeight = MulDiv(font.lfHeight, style.scale, 100);
    if (style.bold)
        font.lfWeight = FW_BOLD;
    font.lfItalic = style.italic;
    font.lfUnderline = style.underline;
}

// The screen's device context with a font in it, for measuring. A memory context would not do: its
// two colours have no smoothed fonts, whose widths differ.
class Measure {
public:
    explicit Measure(HFONT font) : dc_(GetDC(nullptr)), old_(SelectObject(dc_, font)) {}
    ~Measure()
    {
        SelectObject(dc_, old_);
        ReleaseDC(nullptr, dc_);
    }
    Measure(const Measure&) = delete;
    Measure& operator=(const Measure&) = delete;
    HDC dc() const { return dc_; }

private:
    HDC dc_;
    HGDIOBJ old_;
};

} // namespace

HFONT uiFont(const FontStyle& style)
{
    // Never freed: controls on the screen may hold them until the process ends.
    static auto& made = *new std::map<FontStyle, HFONT>;
    HFONT& font = made[style];
    if (!font) {
        LOGFONTW wanted = messageFont();
        apply(wanted, style);
        font = CreateFontIndirectW(&wanted);
    }
    return font;
}

HFONT namedFont(std::wstring_view face, int points, const FontStyle& style)
{
    static auto& made = *new std::map<std::tuple<std::wstring, int, FontStyle>, HFONT>;
    HFONT& font = made[{std::wstring(face), points, style}];
    if (!font) {
        LOGFONTW wanted = messageFont();
        const HDC screen = GetDC(nullptr);
        wanted.lfHeight = -MulDiv(points, GetDeviceCaps(screen, LOGPIXELSY), 72);
        ReleaseDC(nullptr, screen);
        wanted.lfFaceName[face.copy(wanted.lfFaceName, LF_FACESIZE - 1)] = 0;
        apply(wanted, style);
        font = CreateFontIndirectW(&wanted);
    }
    return font;
}

Size textSize(HFONT font, std::wstring_view text)
{
    if (text.empty())
        return {0, fontHeight(font)};
    const Measure measure(font);
    SIZE size = {};
    GetTextExtentPoint32W(measure.dc(), text.data(), static_cast<int>(text.size()), &size);
    return {size.cx, size.cy};
}

Size wrappedTextSize(HFONT font, std::wstring_view text, int width)
{
    if (text.empty())
        return {0, fontHeight(font)};
    const Measure measure(font);
    RECT r = {0, 0, width, 0};
    UINT flags = DT_CALCRECT | DT_EXPANDTABS | (width > 0 ? DT_WORDBREAK : 0u);
    DrawTextW(measure.dc(), text.data(), static_cast<int>(text.size()), &r, flags);
    return fromRECT(r).size();
}

int fontHeight(HFONT font)
{
    const Measure measure(font);
    TEXTMETRICW metrics = {};
    GetTextMetricsW(measure.dc(), &metrics);
    return metrics.tmHeight;
}

} // namespace velora
