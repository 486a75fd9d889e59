#include "chat/modFade.h"

#include "base/trap.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace velora {
namespace {

constexpr char kModule[] = "modFade";

constexpr std::string_view kFontTag = "<FONT COLOR=#";
constexpr std::size_t kFontTagLength = 20; // with six digits and ">"
constexpr std::size_t kShortWaveTag = 5;   // "<sup>", "<sub>"
constexpr std::size_t kLongWaveTag = 6;    // "</sup>", "</sub>"
constexpr std::array<std::string_view, 4> kWaveTags = {"<sup>", "</sup>", "<sub>", "</sub>"};

constexpr std::array<std::string_view, 19> kSmileys = {
    "O:-)", ":)",  ":(",  ";)",  ":-)", ";-)",  ":-(", ":-P", "=-O", ":-*",
    ">:o",  ":-D", ":-$", ":-!", ":-[", ":-\\", ":'(", ":-X", "8-)"};

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

/// Writes marked characters into a buffer that has room for the longest form of each.
template <class Char>
class MarkupWriter {
public:
    MarkupWriter(Char* out, bool wavy, int phase) : out_(out), wavy_(wavy), phase_(phase) {}

    void plain(Char c) { *out_++ = c; }

    void coloured(Char c, Components colour)
    {
        if ((colour.red & colour.green & colour.blue) == 255)
            colour = {0xFB, 0xFB, 0xFB}; // white never goes out as white
        const auto& tables = kTables<Char>;
        std::memcpy(out_, tables.fontTag.data(), sizeof tables.fontTag);
        Char* const digits = out_ + kFontTag.size();
        std::memcpy(digits, tables.digits[colour.red].data(), 2 * sizeof(Char));
        std::memcpy(digits + 2, tables.digits[colour.green].data(), 2 * sizeof(Char));
        std::memcpy(digits + 4, tables.digits[colour.blue].data(), 2 * sizeof(Char));
        out_ += kFontTagLength;
        if (phase_ == 5)
            phase_ = 1;
        if (wavy_) {
            std::memcpy(out_, tables.wave[phase_ - 1].data(), sizeof tables.wave[0]);
            out_ += kWaveTags[phase_ - 1].size();
        }
        ++phase_;
        *out_++ = c;
    }

    Char* end() const { return out_; }
    int phase() const { return phase_; }

private:
    Char* out_;
    bool wavy_;
    int phase_;
};

/// Runs `body(writer)` with room for `length` marked characters behind `out`, and keeps the phase.
template <class Char, class Body>
void appendMarked(std::basic_string<Char>& out, std::size_t length, bool wavy, int phase,
                  Body&& body)
{
    const std::size_t before = out.size();
    const std::size_t most = kFontTagLength + 1 + (wavy ? kLongWaveTag : 0);
    out.resize(before + length * most + kLongWaveTag);
    MarkupWriter<Char> writer(out.data() + before, wavy, phase);
    body(writer);
    g_wavePhase = writer.phase();
    out.resize(static_cast<std::size_t>(writer.end() - out.data()));
}

template <class Char>
void appendFade(std::basic_string<Char>& out, std::basic_string_view<Char> text, Colour from,
                Colour to, bool wavy)
{
    if (onlySpaces(text)) {
        out += text;
        return;
    }
    const Components a = componentsOf(from), b = componentsOf(to);
    const auto length = static_cast<double>(text.size());
    const double red = (b.red - a.red) / length, green = (b.green - a.green) / length,
                 blue = (b.blue - a.blue) / length;
    appendMarked(out, text.size(), wavy, 2, [&](MarkupWriter<Char>& writer) {
        double i = 0;
        for (const Char c : text) {
            i += 1;
            if (isBlank(c))
                writer.plain(c);
            else
                writer.coloured(c, {static_cast<int>(std::lrint(red * i + a.red)),
                                    static_cast<int>(std::lrint(green * i + a.green)),
                                    static_cast<int>(std::lrint(blue * i + a.blue))});
        }
    });
}

/// At each place where a smiley starts its length, 1 at its further characters, 0 elsewhere; empty
/// when there is none. Entries are tried in the table's order, and a character belongs to one only.
template <class Char>
std::vector<std::size_t> smileyLengths(std::basic_string_view<Char> text)
{
    std::vector<std::size_t> lengths;
    // Every smiley holds one of these; most lines hold none.
    if (text.find_first_of(as<Char>(":;-")) == text.npos)
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

template <class Char>
void wrap(std::basic_string<Char>& text, bool on, std::string_view tag)
{
    if (on)
        text =
            as<Char>("<" + std::string(tag) + ">") + text + as<Char>("</" + std::string(tag) + ">");
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
    trap(kModule, [&] { appendFade(out, text, from, to, wavy); });
    return out;
}

template <class Char>
std::basic_string<Char> MakeSolidFade(std::basic_string_view<Char> text, const Fade& fade)
{
    std::basic_string<Char> out;
    trap(kModule, [&] {
        const auto count = static_cast<std::size_t>(std::clamp(fade.FadeNumber, 1, kMostColours));
        appendMarked(out, text.size(), fade.Wavy, g_wavePhase, [&](MarkupWriter<Char>& writer) {
            std::size_t turn = 0;
            for (const Char c : text) {
                if (isBlank(c)) {
                    writer.plain(c);
                    continue;
                }
                writer.coloured(c, componentsOf(fade.colours[turn]));
                turn = turn + 1 == count ? 0 : turn + 1;
            }
        });
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
        out.reserve(text.size() * (kFontTagLength + 1 + (fade.Wavy ? kLongWaveTag : 0))
                    + kLongWaveTag);
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
        guardSoundCommand(out, fade);
        wrap(out, fade.Bold, "B");
        wrap(out, fade.Italic, "I");
        wrap(out, fade.ULine, "U");
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
