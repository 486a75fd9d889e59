#include "chat/modFade.h"

#include "base/trap.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace velora {
namespace {

constexpr char kModule[] = "modFade";

constexpr std::string_view kFontTag = "<FONT COLOR=#";
constexpr std::size_t kFontTagLength = 20;                                // with six digits and ">"
constexpr std::size_t kShortWaveTag = 5;                                  // "<sup>", "<sub>"
constexpr std::size_t kLongWaveTag = 6;                                   // "</sup>", "</sub>"
constexpr std::size_t kLongestMarked = kFontTagLength + kLongWaveTag + 1; // of one character
constexpr std::array<std::string_view, 4> kWaveTags = {"<sup>", "</sup>", "<sub>", "</sub>"};

constexpr std::array<std::string_view, 19> kSmileys = {
    "O:-)", ":)",  ":(",  ";)",  ":-)", ";-)",  ":-(", ":-P", "=-O", ":-*",
    ">:o",  ":-D", ":-$", ":-!", ":-[", ":-\\", ":'(", ":-X", "8-)"};

constexpr std::uint32_t kWhite = 0xFFFFFF;

int g_wavePhase = 1;

struct Components {
    int red, green, blue;
};

constexpr Components componentsOf(Colour colour)
{
    const auto bits = static_cast<std::uint32_t>(colour);
    return {static_cast<int>(bits & 255), static_cast<int>(bits >> 8 & 255),
            static_cast<int>(bits >> 16 & 255)};
}

/// To the nearest integer, halves to the even one.
inline int rounded(double value)
{
#ifdef __SSE2__
    return _mm_cvtsd_si32(_mm_set_sd(value)); // the library's lrint is a call, three a character
#else
    return static_cast<int>(std::lrint(value));
#endif
}

template <class Char>
constexpr bool isBlank(Char c)
{
    return c == Char(' ') || c == Char('\r') || c == Char('\n') || c == Char('\t');
}

template <class Char>
bool onlySpaces(std::basic_string_view<Char> text)
{
    return std::all_of(text.begin(), text.end(), [](Char c) { return c == Char(' '); });
}

template <class Char>
std::basic_string<Char> as(std::string_view narrow)
{
    return std::basic_string<Char>(narrow.begin(), narrow.end());
}

/// The constant texts in the character type of the line, and the two digits of every byte.
template <class Char>
struct Tables {
    std::array<Char, kFontTagLength> fontTag{};
    std::array<std::array<Char, 2>, 256> digits{};
    std::array<std::array<Char, kLongWaveTag>, 4> wave{};

    constexpr Tables()
    {
        for (std::size_t i = 0; i < kFontTag.size(); ++i)
            fontTag[i] = static_cast<Char>(kFontTag[i]);
        fontTag[kFontTagLength - 1] = Char('>');
        for (std::size_t value = 0; value < 256; ++value) {
            digits[value][0] = static_cast<Char>("0123456789ABCDEF"[value >> 4]);
            digits[value][1] = static_cast<Char>("0123456789ABCDEF"[value & 15]);
        }
        for (std::size_t tag = 0; tag < wave.size(); ++tag)
            for (std::size_t i = 0; i < kWaveTags[tag].size(); ++i)
                wave[tag][i] = static_cast<Char>(kWaveTags[tag][i]);
    }
};

template <class Char>
constexpr Tables<Char> kTables{};

/// The colours of a two-stop gradient over `length` characters.
class Gradient {
public:
    Gradient(Colour from, Colour to, std::size_t length)
    {
        const Components first = componentsOf(from), last = componentsOf(to);
        const auto steps = static_cast<double>(length);
        red_ = {(last.red - first.red) / steps, static_cast<double>(first.red)};
        green_ = {(last.green - first.green) / steps, static_cast<double>(first.green)};
        blue_ = {(last.blue - first.blue) / steps, static_cast<double>(first.blue)};
    }
    /// For every character, the blank ones too.
    void advance() { at_ += 1; }
    std::uint32_t colour() const
    {
        return red_.at(at_) | green_.at(at_) << 8 | blue_.at(at_) << 16;
    }

private:
    struct Component {
        double step, first;
        std::uint32_t at(double place) const
        {
            return static_cast<std::uint32_t>(rounded(step * place + first));
        }
    };
    Component red_, green_, blue_;
    double at_ = 0;
};

/// The colours of a fade in turn.
class Cycle {
public:
    explicit Cycle(const Fade& fade)
        : fade_(fade),
          count_(static_cast<std::size_t>(std::clamp(fade.FadeNumber, 1, kMostColours)))
    {
    }
    void advance() {}
    std::uint32_t colour()
    {
        const std::size_t turn = turn_;
        turn_ = turn + 1 == count_ ? 0 : turn + 1;
        return static_cast<std::uint32_t>(fade_.colours[turn]) & kWhite;
    }

private:
    const Fade& fade_;
    std::size_t count_, turn_ = 0;
};

/// Writes the tag of a colour; what comes behind it stands where it answers.
template <class Char>
inline Char* putTag(Char* at, std::uint32_t colour)
{
    if (colour == kWhite)
        colour = 0xFBFBFB; // white never goes out as white
    const auto& tables = kTables<Char>;
    std::memcpy(at, tables.fontTag.data(), sizeof tables.fontTag);
    Char* const digits = at + kFontTag.size();
    std::memcpy(digits, tables.digits[colour & 255].data(), 2 * sizeof(Char));
    std::memcpy(digits + 2, tables.digits[colour >> 8 & 255].data(), 2 * sizeof(Char));
    std::memcpy(digits + 4, tables.digits[colour >> 16].data(), 2 * sizeof(Char));
    return at + kFontTagLength;
}

/// Appends the marked text, by way of a buffer that stays in the processor's cache: the markup is
/// 21 times as long as the text, and goes to memory only once. Starts at a wave phase, and leaves
/// the process at the one that it has come to.
template <bool kWavy, class Char, class Colours>
void appendMarkedAs(std::basic_string<Char>& out, std::basic_string_view<Char> text,
                    Colours colours, int phase)
{
    constexpr std::size_t kBuffer = 2048;
    Char buffer[kBuffer];
    Char* const full = buffer + kBuffer - kLongestMarked;
    Char* at = buffer;
    for (const Char c : text) {
        if (at > full) {
            out.append(buffer, static_cast<std::size_t>(at - buffer));
            at = buffer;
        }
        colours.advance();
        if (!isBlank(c)) {
            at = putTag(at, colours.colour());
            if (phase == 5)
                phase = 1;
            if (kWavy) {
                const auto wave = static_cast<std::size_t>(phase - 1);
                std::memcpy(at, kTables<Char>.wave[wave].data(), kLongWaveTag * sizeof(Char));
                at += kWaveTags[wave].size();
            }
            ++phase;
        }
        *at++ = c;
    }
    out.append(buffer, static_cast<std::size_t>(at - buffer));
    g_wavePhase = phase;
}

template <class Char, class Colours>
void appendMarked(std::basic_string<Char>& out, std::basic_string_view<Char> text,
                  const Colours& colours, bool wavy, int phase)
{
    if (wavy)
        appendMarkedAs<true>(out, text, colours, phase);
    else
        appendMarkedAs<false>(out, text, colours, phase);
}

/// The most that the markup of a text grows to, the tags of its styles included.
constexpr std::size_t longestMarkup(std::size_t length, bool wavy)
{
    constexpr std::size_t kStyles = sizeof "<U><I><B></B></I></U>";
    return length * (kFontTagLength + 1 + (wavy ? kLongWaveTag : 0)) + kStyles;
}

template <class Char>
void appendFade(std::basic_string<Char>& out, std::basic_string_view<Char> text, Colour from,
                Colour to, bool wavy)
{
    if (onlySpaces(text)) {
        out += text;
        return;
    }
    appendMarked(out, text, Gradient(from, to, text.size()), wavy, 2);
}

/// At each place where a smiley starts its length, 1 at its further characters, 0 elsewhere; empty
/// when there is none. Entries are tried in the table's order, and a character belongs to one only.
template <class Char>
std::vector<std::size_t> smileyLengths(std::basic_string_view<Char> text)
{
    std::vector<std::size_t> lengths;
    // Every smiley holds one of these; most lines hold none. (The library's search would be a call
    // for every character.)
    const auto of = [](Char c) { return c == Char(':') || c == Char(';') || c == Char('-'); };
    if (std::none_of(text.begin(), text.end(), of))
        return lengths;
    for (const std::string_view entry : kSmileys) {
        const std::basic_string<Char> smiley = as<Char>(entry);
        for (std::size_t at = text.find(smiley); at != text.npos;) {
            lengths.resize(text.size());
            const auto first = lengths.begin() + static_cast<std::ptrdiff_t>(at);
            const auto last = first + static_cast<std::ptrdiff_t>(smiley.size());
            const bool taken = std::any_of(first, last, [](std::size_t n) { return n != 0; });
            if (!taken) {
                std::fill(first, last, std::size_t{1});
                *first = smiley.size();
            }
            at = text.find(smiley, at + (taken ? 1 : smiley.size()));
        }
    }
    return lengths;
}

/// Markup without the font and wave tags that this module puts in front of characters.
template <class Char>
std::basic_string<Char> withoutTags(std::basic_string_view<Char> marked)
{
    const std::basic_string<Char> font = as<Char>(kFontTag);
    std::basic_string<Char> plain;
    for (std::size_t i = 0; i < marked.size();) {
        if (marked.compare(i, font.size(), font) == 0) {
            i += kFontTagLength;
            for (const std::string_view tag : kWaveTags)
                if (marked.compare(i, tag.size(), as<Char>(tag)) == 0) {
                    i += tag.size();
                    break;
                }
        }
        if (i < marked.size())
            plain += marked[i++];
    }
    return plain;
}

/// True when the two characters at the place of the next visible one say that a sound command
/// starts.
template <class Char>
bool looksLikeSound(std::basic_string_view<Char> marked, std::size_t brace, bool wavy)
{
    const std::size_t next = brace + 1 + kFontTagLength + (wavy ? kShortWaveTag : 0);
    if (next + 2 > marked.size())
        return false;
    const auto low = [](Char c) { return c == Char('S') ? Char('s') : c; };
    const Char first = low(marked[next]), second = low(marked[next + 1]);
    return (first == Char('s') && (second == Char(' ') || second == Char('<')))
           || (first == Char('>') && second == Char('s'));
}

/// The tag that closes what the last wave tag of the markup opened; nothing when it closed.
template <class Char>
std::basic_string<Char> closingWave(std::basic_string_view<Char> marked)
{
    std::size_t latest = 0;
    std::string_view closing;
    for (std::size_t k = 0; k < kWaveTags.size(); ++k) {
        const std::size_t at = marked.rfind(as<Char>(kWaveTags[k]));
        if (at != marked.npos && at >= latest) {
            latest = at;
            closing = k % 2 == 0 ? kWaveTags[k + 1] : std::string_view();
        }
    }
    return as<Char>(closing);
}

/// Keeps the first sound command whole: from its "{" on the text goes out in black, without tags
/// between its letters. The tags in front of the "{" are dropped, and an open wave is closed.
template <class Char>
void guardSoundCommand(std::basic_string<Char>& marked, const Fade& fade)
{
    using View = std::basic_string_view<Char>;
    for (std::size_t brace = marked.find(Char('{')); brace != marked.npos;
         brace = marked.find(Char('{'), brace + 1)) {
        if (!looksLikeSound<Char>(marked, brace, fade.Wavy))
            continue;
        const std::size_t tag = marked.rfind(as<Char>(kFontTag), brace);
        if (tag == marked.npos)
            return;
        std::basic_string<Char> kept = marked.substr(0, tag);
        if (fade.Wavy)
            kept += closingWave<Char>(kept);
        // A closing tag that AOL does not know, at which it takes the colour afresh. The word is
        // put together here so that it never stands whole in the program.
        kept += as<Char>("</" + std::string("pro") + "mo" + "><font color=0>");
        kept += as<Char>(fade.ULine ? "<u>" : "");
        kept += withoutTags<Char>(View(marked).substr(tag));
        marked = std::move(kept);
        return;
    }
}

/// "<U><I><B>" in front and the ends behind, each where its style is on.
template <class Char>
void wrapInStyles(std::basic_string<Char>& text, const Fade& fade)
{
    std::string before, behind;
    const auto wrap = [&](bool on, const std::string& tag) {
        if (!on)
            return;
        before = "<" + tag + ">" + before;
        behind += "</" + tag + ">";
    };
    wrap(fade.Bold, "B");
    wrap(fade.Italic, "I");
    wrap(fade.ULine, "U");
    if (before.empty())
        return;
    text.insert(0, as<Char>(before));
    text += as<Char>(behind);
}

template <class Char>
void breakLinesIn(std::basic_string<Char>& text)
{
    const auto lineEnd = as<Char>("\r\n"), tag = as<Char>("<BR>");
    for (std::size_t at = text.find(lineEnd); at != text.npos;
         at = text.find(lineEnd, at + tag.size()))
        text.replace(at, lineEnd.size(), tag);
}

} // namespace

int wavePhase()
{
    return g_wavePhase;
}

void setWavePhase(int phase)
{
    g_wavePhase = std::clamp(phase, 1, 5);
}

std::string RGBToHEX(Colour swapped)
{
    const Components c = componentsOf(swapped);
    std::string hex;
    for (const int component : {c.blue, c.green, c.red})
        hex.append(kTables<char>.digits[static_cast<std::size_t>(component)].data(), 2);
    return hex == "FFFFFF" ? "FBFBFB" : hex;
}

template <class Char>
std::basic_string<Char> MakeFade(std::basic_string_view<Char> text, Colour from, Colour to,
                                 bool wavy)
{
    std::basic_string<Char> out;
    trap(kModule, [&] {
        out.reserve(longestMarkup(text.size(), wavy));
        appendFade(out, text, from, to, wavy);
    });
    return out;
}

template <class Char>
std::basic_string<Char> MakeSolidFade(std::basic_string_view<Char> text, const Fade& fade)
{
    std::basic_string<Char> out;
    trap(kModule, [&] {
        out.reserve(longestMarkup(text.size(), fade.Wavy));
        appendMarked(out, text, Cycle(fade), fade.Wavy, g_wavePhase);
    });
    return out;
}

template <class Char>
std::basic_string<Char> FadeColor(std::basic_string_view<Char> text, const Fade& fade)
{
    std::basic_string<Char> out;
    trap(kModule, [&] {
        const auto pieces =
            static_cast<std::size_t>(std::clamp(fade.FadeNumber, 2, kMostColours) - 1);
        out.reserve(longestMarkup(text.size(), fade.Wavy));
        std::size_t from = 0;
        for (std::size_t k = 0; k < pieces; ++k) {
            // Dealt out one by one, the first pieces get what does not divide evenly.
            const std::size_t length = text.size() / pieces + (k < text.size() % pieces ? 1 : 0);
            appendFade(out, text.substr(from, length), fade.colours[k], fade.colours[k + 1],
                       fade.Wavy);
            from += length;
        }
    });
    return out;
}

template <class Char>
std::vector<std::basic_string<Char>> SmilieToTab(std::basic_string<Char>& text)
{
    std::vector<std::basic_string<Char>> smileys;
    trap(kModule, [&] {
        const auto lengths = smileyLengths<Char>(text);
        if (lengths.empty())
            return;
        std::basic_string<Char> out;
        for (std::size_t i = 0; i < text.size();) {
            if (lengths[i] > 1) {
                smileys.push_back(text.substr(i, lengths[i]));
                out += Char('\t');
                i += lengths[i];
            } else {
                out += text[i++];
            }
        }
        text = std::move(out);
    });
    return smileys;
}

template <class Char>
void TabToSmilie(std::basic_string<Char>& text, const std::vector<std::basic_string<Char>>& smileys)
{
    trap(kModule, [&] {
        std::basic_string<Char> out;
        std::size_t next = 0;
        for (const Char c : text) {
            if (c == Char('\t') && next < smileys.size())
                out += smileys[next++];
            else
                out += c;
        }
        text = std::move(out);
    });
}

template <class Char>
void FadeEngine(std::basic_string<Char>& text, const Fade& fade, bool solidFade, bool breakLines)
{
    trap(kModule, [&] {
        if (fade.FadeNumber <= 0 || onlySpaces<Char>(text))
            return;
        std::basic_string<Char> out = text;
        const auto smileys = SmilieToTab(out);
        const std::basic_string_view<Char> view = out;
        out = solidFade || fade.FadeNumber == 1 ? MakeSolidFade(view, fade) : FadeColor(view, fade);
        if (!smileys.empty())
            TabToSmilie(out, smileys);
        if (text.find(Char('{')) != text.npos)
            guardSoundCommand(out, fade);
        wrapInStyles(out, fade);
        if (breakLines)
            breakLinesIn(out);
        text = std::move(out);
    });
}

void drawRandomColours(Fade& fade, const RandomFadeOptions& options, RandomSource& random)
{
    random.randomize();
    if (options.RandomizeFadeNumber)
        fade.FadeNumber = static_cast<int>(random.rnd() * 9 + 2);
    for (Colour& colour : fade.colours)
        colour = static_cast<Colour>(random.rnd() * 16777215 + 1);
}

void drawRandomStyles(Fade& fade, const RandomFadeOptions& options, RandomSource& random)
{
    random.randomize();
    const auto draw = [&](bool wanted, bool& style) {
        if (wanted)
            style = random.rnd() >= 0.5;
    };
    draw(options.UseRandomBold, fade.Bold);
    draw(options.UseRandomItalic, fade.Italic);
    draw(options.UseRandomULine, fade.ULine);
    draw(options.UseRandomWavy, fade.Wavy);
}

#define VELORA_FADE_FOR(Char)                                                                      \
    template std::basic_string<Char> MakeFade(std::basic_string_view<Char>, Colour, Colour, bool); \
    template std::basic_string<Char> MakeSolidFade(std::basic_string_view<Char>, const Fade&);     \
    template std::basic_string<Char> FadeColor(std::basic_string_view<Char>, const Fade&);         \
    template std::vector<std::basic_string<Char>> SmilieToTab(std::basic_string<Char>&);           \
    template void TabToSmilie(std::basic_string<Char>&,                                            \
                              const std::vector<std::basic_string<Char>>&);                        \
    template void FadeEngine(std::basic_string<Char>&, const Fade&, bool, bool);

VELORA_FADE_FOR(char)
VELORA_FADE_FOR(wchar_t)
#undef VELORA_FADE_FOR

} // namespace velora
