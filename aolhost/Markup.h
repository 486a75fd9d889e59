#pragma once
// AOL's text markup: what a member sends is HTML, what the display shows is its text in colours.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace aolhost {

/// A stretch of text in one style. `color` is a COLORREF: red in the low byte.
struct Run {
    std::wstring text;
    std::uint32_t color = 0;
    bool bold = false, italic = false, underline = false;
    bool sameStyle(const Run& other) const
    {
        return color == other.color && bold == other.bold && italic == other.italic
               && underline == other.underline;
    }
};

/// Tags are read and dropped, an unknown one too; a "<" that begins no tag stays as it is.
/// `breaks`: <BR> and <P> become line ends; without it they vanish, as in a chat line.
std::vector<Run> parseMarkup(std::wstring_view html, bool breaks);
std::wstring plainText(std::wstring_view html, bool breaks);

} // namespace aolhost
