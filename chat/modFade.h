#pragma once
// The text fader: plain text in, AOL font markup out, in which every visible character carries a
// colour of its own. All of it is pure but for one thing: the wave phase is one for the process and
// survives between calls, because a solid fade goes on waving where the last fade stopped.
//
// Text is Windows-1252 bytes or wide characters; both forms give the same markup.
#include "base/random.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// A colour in Windows' order: R + 256 G + 65536 B. Bits above the 24th are ignored.
using Colour = std::int32_t;

inline constexpr int kMostColours = 10;

/// The fade in use: what a scheme file keeps.
struct Fade {
    int FadeNumber = 6; ///< how many of the colours count, 1 to 10; 0 fades nothing
    std::array<Colour, kMostColours> colours{};
    bool Wavy = false;
    bool Bold = false;
    bool Italic = false;
    bool ULine = false;
    bool operator==(const Fade&) const = default;
};

/// Six upper-case hexadecimal digits of a colour whose bytes the caller has swapped, RGB(blue,
/// green, red). Pure white always comes out as "FBFBFB".
std::string RGBToHEX(Colour swapped);

/// A gradient from one colour to another: of L characters the i-th gets the colour i/L of the way,
/// so the first is a step away from `from` and the last is `to`. Blanks, CR, LF and TAB stay bare
/// but count. Starts the wave at its second phase.
template <class Char>
std::basic_string<Char> MakeFade(std::basic_string_view<Char> text, Colour from, Colour to,
                                 bool wavy);

/// One colour after another on the visible characters. Goes on with the wave where it stands.
template <class Char>
std::basic_string<Char> MakeSolidFade(std::basic_string_view<Char> text, const Fade& fade);

/// A gradient through all colours of a fade: FadeNumber - 1 pieces, each a MakeFade.
template <class Char>
std::basic_string<Char> FadeColor(std::basic_string_view<Char> text, const Fade& fade);

/// Takes the smileys out, each replaced by one TAB; answers them in the order of the text.
template <class Char>
std::vector<std::basic_string<Char>> SmilieToTab(std::basic_string<Char>& text);

/// Puts smileys back, one for each TAB from the left; a TAB for which none is left stays.
template <class Char>
void TabToSmilie(std::basic_string<Char>& text,
                 const std::vector<std::basic_string<Char>>& smileys);

/// The whole way of a line: smileys kept, colours, styles, the sound command kept in black and
/// unbroken, and with `breakLines` each CR LF as "<BR>". A text of blanks only, or a fade of no
/// colours, leaves the text as it is.
template <class Char>
void FadeEngine(std::basic_string<Char>& text, const Fade& fade, bool solidFade,
                bool breakLines = false);

/// What may change from one use of the fade to the next.
struct RandomFadeOptions {
    bool RandomizeFadeNumber = false;
    bool UseRandomBold = false;
    bool UseRandomItalic = false;
    bool UseRandomULine = false;
    bool UseRandomWavy = false;
};

/// Draws ten colours, never black, and the count (2 to 10) where that is asked for.
void drawRandomColours(Fade& fade, const RandomFadeOptions& options, RandomSource& random);

/// Draws each style whose option is on; on and off are equally likely.
void drawRandomStyles(Fade& fade, const RandomFadeOptions& options, RandomSource& random);

/// The wave phase, 1 to 5; for tests that need a known start.
int wavePhase();
void setWavePhase(int phase);

} // namespace velora
