#include "chat/modFade.h"

#include "base/text.h"

#include <array>
#include <cstdio>
#include <doctest/doctest.h>
#include <string>

using namespace velora;

namespace {

constexpr Colour kWhite = 0xFFFFFF;

// ---- An independent calculation: character by character, with printf and single steps. ----

int g_phase = 1;

std::string hexOf(int r, int g, int b)
{
    char text[8];
    std::snprintf(text, sizeof text, "%02X%02X%02X", r, g, b);
    return std::string(text) == "FFFFFF" ? "FBFBFB" : text;
}

std::string tagged(char c, int r, int g, int b, bool wavy)
{
    static const char* const wave[] = {"", "<sup>", "</sup>", "<sub>", "</sub>"};
    if (g_phase == 5)
        g_phase = 1;
    const std::string tag = wavy ? wave[g_phase] : "";
    ++g_phase;
    return "<FONT COLOR=#" + hexOf(r, g, b) + ">" + tag + c;
}

bool bare(char c)
{
    return c == ' ' || c == '\r' || c == '\n' || c == '\t';
}

/// Nearest whole number, halves to the even neighbour, without the library's rounding.
int nearest(double x)
{
    const int below = static_cast<int>(x) - (x < 0 ? 1 : 0);
    const double rest = x - below;
    if (rest > 0.5 || (rest == 0.5 && below % 2 != 0))
        return below + 1;
    return below;
}

std::string twoStop(const std::string& text, Colour from, Colour to, bool wavy)
{
    if (text.find_first_not_of(' ') == std::string::npos)
        return text;
    g_phase = 2;
    std::string out;
    for (std::size_t i = 1; i <= text.size(); ++i) {
        int c[3];
        for (int k = 0; k < 3; ++k) {
            const int x1 = from >> (8 * k) & 255, x2 = to >> (8 * k) & 255;
            volatile double step = x2 - x1;
            step = step / static_cast<double>(text.size());
            step = step * static_cast<double>(i);
            step = step + x1;
            c[k] = nearest(step);
        }
        const char ch = text[i - 1];
        out += bare(ch) ? std::string(1, ch) : tagged(ch, c[0], c[1], c[2], wavy);
    }
    return out;
}

std::string reference(const std::string& text, const Fade& fade, bool solid)
{
    std::string out;
    if (solid || fade.FadeNumber == 1) {
        int turn = 0;
        for (const char ch : text) {
            const Colour c = fade.colours[static_cast<std::size_t>(turn % fade.FadeNumber)];
            out += bare(ch) ? std::string(1, ch)
                            : tagged(ch, c & 255, c >> 8 & 255, c >> 16 & 255, fade.Wavy);
            turn += bare(ch) ? 0 : 1;
        }
    } else {
        std::vector<std::size_t> lengths(static_cast<std::size_t>(fade.FadeNumber - 1));
        for (std::size_t i = 0; i < text.size(); ++i)
            ++lengths[i % lengths.size()];
        std::size_t at = 0;
        for (std::size_t k = 0; k < lengths.size(); at += lengths[k++])
            out += twoStop(text.substr(at, lengths[k]), fade.colours[k], fade.colours[k + 1],
                           fade.Wavy);
    }
    if (fade.Bold)
        out = "<B>" + out + "</B>";
    if (fade.Italic)
        out = "<I>" + out + "</I>";
    if (fade.ULine)
        out = "<U>" + out + "</U>";
    return out;
}

/// Removes every tag of the fader by its form alone.
std::string untagged(std::string text)
{
    for (const char* tag : {"<sup>", "</sup>", "<sub>", "</sub>", "<B>", "</B>", "<I>", "</I>",
                            "<U>", "</U>", "</promo>", "<font color=0>", "<u>"})
        for (std::size_t at; (at = text.find(tag)) != std::string::npos;)
            text.erase(at, std::string(tag).size());
    for (std::size_t at; (at = text.find("<FONT COLOR=#")) != std::string::npos;)
        text.erase(at, 20);
    return text;
}

std::string made(const std::string& text, Colour from, Colour to, bool wavy = false)
{
    return MakeFade(std::string_view(text), from, to, wavy);
}

Fade fadeOf(int count, std::initializer_list<Colour> colours)
{
    Fade fade;
    fade.FadeNumber = count;
    std::size_t i = 0;
    for (const Colour c : colours)
        fade.colours[i++] = c;
    return fade;
}

struct FixedRandom : RandomSource {
    explicit FixedRandom(double value) : value_(value) {}
    double rnd() override { return value_; }
    double value_;
};

} // namespace

TEST_CASE("hexadecimal colours read red, green, blue and never pure white")
{
    CHECK(RGBToHEX(0x0000FF) == "0000FF");
    CHECK(RGBToHEX(0x123456) == "123456");
    CHECK(RGBToHEX(0) == "000000");
    CHECK(RGBToHEX(0xA) == "00000A");
    CHECK(RGBToHEX(kWhite) == "FBFBFB");
}

TEST_CASE("a gradient's first step, last colour and blanks")
{
    CHECK(made("ab", 0, kWhite) == "<FONT COLOR=#808080>a<FONT COLOR=#FBFBFB>b");
    CHECK(made("   ", 0, kWhite) == "   ");
    CHECK(made("a b", 0, 0x0000FF) == "<FONT COLOR=#550000>a <FONT COLOR=#FF0000>b");
    CHECK(made("", 0, kWhite).empty());
}

TEST_CASE("the wave restarts in a gradient and goes on in a solid fade")
{
    CHECK(made("abcd", 0, 0, true)
          == "<FONT COLOR=#000000></sup>a<FONT COLOR=#000000><sub>b"
             "<FONT COLOR=#000000></sub>c<FONT COLOR=#000000><sup>d");
    Fade one = fadeOf(1, {0});
    one.Wavy = true;
    CHECK(MakeSolidFade(std::string_view("x"), one) == "<FONT COLOR=#000000></sup>x");
    one.Wavy = false;
    MakeSolidFade(std::string_view("yz"), one); // not wavy, yet the phase advances
    one.Wavy = true;
    CHECK(MakeSolidFade(std::string_view("x"), one) == "<FONT COLOR=#000000><sup>x");
}

TEST_CASE("smileys stay whole and in their order")
{
    std::string text = "8-) O:-) :-)";
    const auto smileys = SmilieToTab(text);
    CHECK(text == "\t \t \t");
    CHECK(smileys == std::vector<std::string>{"8-)", "O:-)", ":-)"});
    TabToSmilie(text, smileys);
    CHECK(text == "8-) O:-) :-)");

    Fade fade = fadeOf(2, {0, 0});
    std::string line = "hi :-) there";
    FadeEngine(line, fade, false);
    CHECK(line.find(" :-) <FONT") != std::string::npos);
    CHECK(untagged(line) == "hi :-) there");

    std::string typed = "a\tb"; // no smiley: a TAB is a TAB
    FadeEngine(typed, fade, false);
    CHECK(untagged(typed) == "a\tb");
    std::string mixed = "a\t:)"; // the typed TAB is the first slot
    FadeEngine(mixed, fade, false);
    CHECK(untagged(mixed) == "a:)\t");
}

TEST_CASE("styles wrap from the inside: bold, italic, underline")
{
    Fade fade = fadeOf(1, {0});
    fade.Bold = fade.Italic = fade.ULine = true;
    std::string text = "x";
    FadeEngine(text, fade, false);
    CHECK(text == "<U><I><B><FONT COLOR=#000000>x</B></I></U>");
}

TEST_CASE("a sound command reaches AOL in black and unbroken")
{
    for (const bool wavy : {false, true})
        for (const char* command : {"{S hello there}", "{s x}"})
            for (const char* before : {"", "a", "ab", "abc ", "abcd", "listen: "}) {
                Fade fade = fadeOf(3, {0xFF, 0xFF00, 0xFF0000});
                fade.Wavy = wavy;
                fade.ULine = true;
                setWavePhase(1);
                std::string text = std::string(before) + command + " bye";
                FadeEngine(text, fade, false);
                CAPTURE(text);
                const std::string tail =
                    std::string("</promo><font color=0><u>") + command + " bye</U>";
                CHECK(text.size() >= tail.size());
                CHECK(text.substr(text.size() - tail.size()) == tail);
                CHECK(untagged(text) == std::string(before) + command + " bye");
                // No wave is left open in front of the command.
                const std::string head = text.substr(0, text.size() - tail.size());
                CHECK((head.rfind("<sup>") == std::string::npos
                       || head.rfind("</sup>") > head.rfind("<sup>")
                       || head.rfind("</sub>") != std::string::npos));
            }
    std::string none = "{x} {";
    const Fade fade = fadeOf(2, {0, 0});
    FadeEngine(none, fade, false);
    CHECK(none.find("promo") == std::string::npos);
}

TEST_CASE("line breaks, blank text and an empty fade")
{
    const Fade fade = fadeOf(1, {0});
    std::string text = "a\r\nb";
    FadeEngine(text, fade, false, true);
    CHECK(text == "<FONT COLOR=#000000>a<BR><FONT COLOR=#000000>b");
    std::string blanks = "   ";
    FadeEngine(blanks, fade, false);
    CHECK(blanks == "   ");
    std::string same = "abc";
    FadeEngine(same, fadeOf(0, {}), false);
    CHECK(same == "abc");
}

TEST_CASE("bytes and wide text give the same markup")
{
    Fade fade = fadeOf(5, {0x123456, 0xFEDCBA, 0, kWhite, 0x808080});
    fade.Wavy = true;
    std::string narrow = "Caf\xE9 \x80 :-) {S x}";
    std::wstring wide = from1252(narrow);
    FadeEngine(narrow, fade, false);
    FadeEngine(wide, fade, false);
    CHECK(to1252(wide) == narrow);
}

TEST_CASE("a hundred thousand random texts and fades agree with the independent calculation")
{
    SystemRandom random(20010911);
    const auto below = [&](int n) { return static_cast<int>(random.rnd() * n); };
    static constexpr std::string_view letters = "abcXYZ019 .,!?~#\xE4\xFC<>&  \r\n\t";
    setWavePhase(1);
    g_phase = 1;
    int differences = 0, unreadable = 0;
    for (int round = 0; round < 100000; ++round) {
        Fade fade;
        fade.FadeNumber = 1 + below(10);
        for (Colour& colour : fade.colours)
            colour = below(8) == 0 ? kWhite : below(0x1000000);
        fade.Wavy = below(2);
        fade.Bold = below(4) == 0;
        fade.Italic = below(4) == 0;
        fade.ULine = below(4) == 0;
        std::string text = "x";
        for (int n = below(60); n > 0; --n)
            text += letters[static_cast<std::size_t>(below(static_cast<int>(letters.size())))];
        const bool solid = below(3) == 0;
        std::string out = text;
        FadeEngine(out, fade, solid);
        differences += out != reference(text, fade, solid);
        unreadable += untagged(out) != text;
    }
    CHECK(differences == 0);
    CHECK(unreadable == 0);
    CHECK(wavePhase() == g_phase);
}

TEST_CASE("the whole gradient range agrees with exact arithmetic")
{
    // The exact value is (difference * i + start * L) / L. Away from a tie the rounded double must
    // be the nearest whole number; at a tie, where the steps' own rounding decides, a neighbour.
    int wrong = 0;
    for (int length = 1; length <= 128; ++length) {
        const std::string text(static_cast<std::size_t>(length), 'x');
        for (int difference = -255; difference <= 255; ++difference) {
            const int start = difference < 0 ? 255 : 255 - difference;
            const int end = start + difference;
            const std::string out = made(text, start, end);
            for (int i = 1; i <= length; ++i) {
                const std::string digits = out.substr(static_cast<std::size_t>(i - 1) * 21 + 13, 2);
                const int got = std::stoi(digits, nullptr, 16);
                const int twice = 2 * (difference * i + start * length) - 2 * got * length;
                wrong += twice > length || twice < -length;
            }
        }
    }
    CHECK(wrong == 0);
}

TEST_CASE("random colours are never black and stay in their range")
{
    Fade fade;
    FixedRandom low(0.0), high(0.9999999999);
    drawRandomColours(fade, {.RandomizeFadeNumber = true}, low);
    CHECK(fade.FadeNumber == 2);
    CHECK(fade.colours[9] == 1);
    drawRandomColours(fade, {.RandomizeFadeNumber = true}, high);
    CHECK(fade.FadeNumber == 10);
    CHECK(fade.colours[0] == 0xFFFFFF);
    drawRandomColours(fade, {}, low);
    CHECK(fade.FadeNumber == 10);

    fade.Bold = fade.Wavy = false;
    drawRandomStyles(fade, {.UseRandomBold = true}, high);
    CHECK(fade.Bold);
    CHECK_FALSE(fade.Wavy);
    drawRandomStyles(fade, {.UseRandomBold = true}, low);
    CHECK_FALSE(fade.Bold);
}
