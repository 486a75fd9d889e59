#pragma once
// The system's message font in its styles, and measuring text. The fonts belong to this module and
// stay valid for the life of the program: forms and controls hold plain handles.
#include "base/win.h"
#include "ui/Geometry.h"

#include <string_view>

namespace velora {

struct FontStyle {
    bool bold = false, italic = false, underline = false;
    /// Percent of the system's size.
    int scale = 100;
    auto operator<=>(const FontStyle&) const = default;
};

HFONT uiFont(const FontStyle& style = {});
/// A font by name and size in points, as fader previews and logs use.
HFONT namedFont(std::wstring_view face, int points, const FontStyle& style = {});

/// Of one line. An empty text has no width and the font's height.
Size textSize(HFONT font, std::wstring_view text);
/// Of text wrapped at blanks to `width`, with its line breaks.
Size wrappedTextSize(HFONT font, std::wstring_view text, int width);
int fontHeight(HFONT font);

} // namespace velora
