#include "sounds/modSoundCommand.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("a sound command is the trigger, the name as it is, and a brace")
{
    CHECK(soundCommand(L"Hello there", true) == L"{S Hello there}");
    CHECK(soundCommand(L"hello", false) == L"{s hello}");
    CHECK(soundCommand(L"a}b", true) == L"{S a}b}");
}

TEST_CASE("the name in a line")
{
    const struct {
        const wchar_t* line;
        const wchar_t* name;
    } cases[] = {
        {L"{S Hello there}", L"Hello there"},
        {L"{s hello}", L"hello"},
        {L"look: {S a} and {S b}", L"a"},
        {L"{S hello", L""},  // no end
        {L"}{S hello", L""}, // an end before the trigger is none
        {L"} {s x}", L"x"},
        {L"{S}", L""}, // the trigger has a blank
        {L"{S }", L""},
        {L"{S  x}", L" x"},     // blanks belong to the name
        {L"{s {S x}", L"{S x"}, // the first trigger counts
        {L"{ S x}", L""},
        {L"s x}", L""},
        {L"{", L""},
        {L"", L""},
        {L"{S \x00c4ra}", L"\x00c4ra"},
        {L"{S ..\\..\\x}", L"..\\..\\x"},
    };
    for (const auto& c : cases) {
        CAPTURE(c.line);
        CHECK(ParseWavName(c.line) == c.name);
    }
    CHECK(ParseWavName(std::wstring(L"a\0{S x}", 7)) == L"x");
}

TEST_CASE("a hostile name is no sound")
{
    // What is no plain file name is none; see the names of files.
    for (const wchar_t* bad : {L"..\\..\\x", L"C:\\x", L"CON", L"x.wav:stream", L"x*",
                               L"\"x\" alias y", L"a\tb", L"x ", L""}) {
        CAPTURE(bad);
        CHECK_FALSE(isSafeSoundName(bad));
    }
    CHECK_FALSE(isSafeSoundName(std::wstring(10000, L'a')));
    CHECK_FALSE(isSafeSoundName(std::wstring(L"a\0b", 3)));
    for (const wchar_t* good : {L"hello", L"Hello there", L"x alias y", L"a.b", L"con1", L"{S x"})
        CHECK(isSafeSoundName(good));
}

TEST_CASE("sizes")
{
    const NumberStyle us;
    const struct {
        std::uint64_t bytes;
        const wchar_t* text;
    } cases[] = {
        {0, L"0.0 KB"},
        {1, L"0.0 KB"},
        {511, L"0.4 KB"},
        {512, L"0.5 KB"},
        {1024, L"1.0 KB"},
        {1536, L"1.5 KB"},
        {1587, L"1.5 KB"},        // 1.550 is cut, not rounded to 1.6
        {2047, L"1.9 KB"},        // 1.99902 rounds to 1.999
        {102399, L"99.9 KB"},     // 99.99902 likewise
        {1048575, L"1,023.9 KB"}, // 1023.99902
        {1048576, L"1.0 MB"},
        {1048576 + 104334, L"1.1 MB"}, // 1.0995002 rounds to 1.100: the carry shows
        {1048576 + 104333, L"1.0 MB"}, // 1.0994997 does not
        {1073741823, L"1,024.0 MB"},
        {1073741824, L""},
    };
    for (const auto& c : cases) {
        CAPTURE(c.bytes);
        CHECK(sizeText(c.bytes, us) == c.text);
    }
    CHECK(sizeText(1048575, {L",", L".", true}) == L"1.023,9 KB");
    CHECK(sizeText(512, {L".", L",", false}) == L".5 KB");
    CHECK(sizeText(1048575, {L".", L"", true}) == L"1023.9 KB");
}

TEST_CASE("a command inside a Glintune style")
{
    CHECK(decorate(L"<{%}>", L"{S x}").line == L"<{S x}>");
    CHECK(decorate(L"a {%}", L"{S x}").line == L"a {S x}");
    CHECK(decorate(L"{%}{%}", L"{S x}").line == L"{S x}{%}");
    CHECK_FALSE(decorate(L"<{%}>", L"{S x}").newStyle);

    const Glintune builtIn = decorate(L"no place", L"{S x}");
    CHECK(builtIn.line
          == L"- \u2013 \u2014\u2022\u00a4\u2022{S x}\u2022\u00a4\u2022\u2014 \u2013 -");
    CHECK(builtIn.newStyle == std::wstring(kBuiltInGlintune));
}
