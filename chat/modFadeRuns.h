#pragma once
// Faded text as a reader sees it: runs of characters with their colour and style. For previews.
#include "chat/modFade.h"

#include <string>
#include <string_view>
#include <vector>

namespace velora {

struct FadeRun {
    std::wstring text;
    Colour colour = 0;
    bool bold = false, italic = false, underline = false;
    int shift = 0; ///< 1 raised, -1 lowered
};

/// Reads the fader's own markup: font colours, styles, waves and <BR>. Anything else is text.
std::vector<FadeRun> fadeRuns(std::wstring_view markup);

/// How two colours stand out against each other: 1 (the same) to 21 (black on white), by the
/// contrast ratio of the web's accessibility guidelines.
double contrast(Colour a, Colour b);

/// The share (0 to 1) of the visible characters that are hard to read on the background.
double hardToRead(const std::vector<FadeRun>& runs, Colour background);

} // namespace velora
