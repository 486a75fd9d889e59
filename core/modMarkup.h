#pragma once
// The markup of messages: reading it, and placing its words on a surface that grows with them.
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// A colour as Windows counts it: red in the low byte.
using MarkupColour = std::uint32_t;
inline constexpr MarkupColour kMarkupRed = 0x0000FF;
inline constexpr MarkupColour kMarkupGreen = 0x008000;
inline constexpr MarkupColour kMarkupBlue = 0xC00000;
inline constexpr MarkupColour kMarkupYellow = 0x008080;
inline constexpr MarkupColour kMarkupNormal = 0x000000;

struct MarkupStyle {
    bool bold = false, italic = false, underline = false;
    MarkupColour colour = kMarkupNormal;
    bool operator==(const MarkupStyle&) const = default;
};

/// A stretch of text in one style, without markers and line breaks.
struct MarkupRun {
    MarkupStyle style;
    std::wstring text;
    bool newLine = false; // begins a line
    bool operator==(const MarkupRun&) const = default;
};

/// Reads markup. A "~" that begins no marker is text. "~C" with a letter that is no colour is
/// dropped and changes nothing. A line end in the text is a new line as well.
std::vector<MarkupRun> parseMarkup(std::wstring_view markup);

/// The words alone, lines ended by CR LF: for the clipboard and for screen readers.
std::wstring plainText(std::wstring_view markup);

/// Makes a name or a path safe inside markup: shown as it is, "~" included, on one line.
std::wstring literal(std::wstring_view value);

/// The surface that text is drawn on. All lengths in pixels.
struct MarkupSurface {
    int leftMargin = 51; // where each line begins
    int width = 0;       // of the surface, the margin included
    int height = 0;      // at first; grows by whole lines
    int lineHeight = 1;
};

struct MarkupWord {
    int x = 0, y = 0, width = 0;
    MarkupStyle style;
    std::wstring text;
    bool operator==(const MarkupWord&) const = default;
};

struct MarkupPlan {
    std::vector<MarkupWord> words; // neighbours of one style and line are one
    int right = 0;                 // where the longest line ends
    int lines = 0;
    int height = 0; // of the surface, after growing
};

using MeasureText = std::function<int(std::wstring_view text, const MarkupStyle& style)>;

/// Places the words: each goes on the line while it ends inside the surface, else begins the next
/// one, where it loses its leading blank; a word longer than a line is broken. The surface grows by
/// one line each time that the next one would pass its bottom.
MarkupPlan planMarkup(const std::vector<MarkupRun>& runs, const MarkupSurface& surface,
                      const MeasureText& measure);

} // namespace velora
