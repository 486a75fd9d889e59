#include "core/modMarkup.h"

#include <doctest/doctest.h>

#include <ostream>

using namespace velora;

namespace {

MarkupRun run(std::wstring text, bool bold = false, MarkupColour colour = kMarkupNormal,
              bool newLine = false)
{
    MarkupRun r;
    r.text = std::move(text);
    r.style.bold = bold;
    r.style.colour = colour;
    r.newLine = newLine;
    return r;
}

// Every character 10 wide, bold ones 12.
int measure(std::wstring_view text, const MarkupStyle& style)
{
    return static_cast<int>(text.size()) * (style.bold ? 12 : 10);
}

MarkupPlan plan(std::wstring_view markup, MarkupSurface surface)
{
    return planMarkup(parseMarkup(markup), surface, measure);
}

// The lines of a plan as text.
std::vector<std::wstring> lines(const MarkupPlan& plan, int lineHeight)
{
    std::vector<std::wstring> result(static_cast<std::size_t>(plan.lines));
    for (const MarkupWord& word : plan.words)
        result[static_cast<std::size_t>(word.y / lineHeight)] += word.text;
    return result;
}

} // namespace

TEST_CASE("the first words are bold and red and the rest plain and black")
{
    CHECK(parseMarkup(L"~B~CRCannot start program!~B~CN It is gone.")
          == std::vector<MarkupRun>{run(L"Cannot start program!", true, kMarkupRed),
                                    run(L" It is gone.")});
}

TEST_CASE("each code, in both cases")
{
    struct Case {
        const wchar_t* markup;
        MarkupStyle style;
    };
    const Case cases[] = {
        {L"~Bx", {true, false, false, 0}},
        {L"~bx", {true, false, false, 0}},
        {L"~Ix", {false, true, false, 0}},
        {L"~ix", {false, true, false, 0}},
        {L"~Ux", {false, false, true, 0}},
        {L"~ux", {false, false, true, 0}},
        {L"~CRx", {false, false, false, 0xFF}},
        {L"~crx", {false, false, false, 0xFF}},
        {L"~CGx", {false, false, false, 0x8000}},
        {L"~cGx", {false, false, false, 0x8000}},
        {L"~CBx", {false, false, false, 0xC00000}},
        {L"~Cbx", {false, false, false, 0xC00000}},
        {L"~CYx", {false, false, false, 0x8080}},
        {L"~cyx", {false, false, false, 0x8080}},
        {L"~CR~CNx", {}},
        {L"~cr~cnx", {}},
        {L"~B~I~Ux", {true, true, true, 0}},
        {L"~B~bx", {}},
    };
    for (const Case& c : cases) {
        const auto runs = parseMarkup(c.markup);
        CAPTURE(c.style.colour);
        REQUIRE(runs.size() == 1);
        CHECK(runs[0].text == L"x");
        CHECK(runs[0].style == c.style);
    }
}

TEST_CASE("markers that are none")
{
    struct Case {
        const wchar_t* markup;
        const wchar_t* shown;
    };
    const Case cases[] = {
        {L"a~Zb", L"a~Zb"}, {L"a~", L"a~"},     {L"~~", L"~~"},   {L"a ~ b", L"a ~ b"},
        {L"~1", L"~1"},     {L"a~CXb", L"ab"},  {L"a~C", L"a"},   {L"a~C b", L"a b"},
        {L"~C~Bb", L"b"},   {L"a~C5b", L"a5b"}, {L"~~Bx", L"~x"}, {L"", L""},
    };
    for (const Case& c : cases) {
        CAPTURE(c.shown);
        CHECK(plainText(c.markup) == c.shown);
    }
    // An unknown colour leaves the one before it.
    CHECK(parseMarkup(L"~CRa~CXb") == std::vector<MarkupRun>{run(L"ab", false, kMarkupRed)});
}

TEST_CASE("new lines, from markers and from line ends in the text")
{
    CHECK(plainText(L"a~Nb") == L"a\r\nb");
    CHECK(plainText(L"a~N ~Nb") == L"a\r\n \r\nb");
    CHECK(plainText(L"a~n~nb") == L"a\r\n\r\nb");
    CHECK(plainText(L"a\r\nb\nc\rd") == L"a\r\nb\r\nc\r\nd");
    CHECK(plainText(L"~Na~N") == L"\r\na\r\n");
}

TEST_CASE("a value is shown as it is")
{
    const std::wstring value = L"~B~CRmy ~N file~.wav~";
    CHECK(plainText(L"Cannot find ~B" + literal(value) + L"~B!") == L"Cannot find " + value + L"!");
    const auto runs = parseMarkup(literal(value));
    REQUIRE(runs.size() == 1);
    CHECK(runs[0].style == MarkupStyle{});
    // A name can neither begin lines of ours nor end the text.
    CHECK(plainText(literal(std::wstring(L"a\r\nb\0c\td", 8))) == L"a  b c d");
    // Nor does its last "~" join with what follows.
    CHECK(plainText(L"x" + literal(L"~") + L"Bx") == L"x~Bx");
}

TEST_CASE("words wrap at the surface's width and lose the blank at the line's start")
{
    const MarkupSurface surface{51, 151, 0, 13}; // ten characters
    CHECK(lines(plan(L"12345 7890", surface), 13) == std::vector<std::wstring>{L"12345 7890"});
    CHECK(lines(plan(L"12345 78901", surface), 13)
          == std::vector<std::wstring>{L"12345", L"78901"});
    CHECK(lines(plan(L"a b c d e f g", surface), 13)
          == std::vector<std::wstring>{L"a b c d e", L"f g"});
    CHECK(lines(plan(L"one~Ntwo~N ~Nthree", surface), 13)
          == std::vector<std::wstring>{L"one", L"two", L"", L"three"});
    // However many blanks stand at a break.
    CHECK(lines(plan(L"1234567890  b", surface), 13)
          == std::vector<std::wstring>{L"1234567890", L"b"});
}

TEST_CASE("every line begins at the left margin")
{
    const auto p = plan(L"12345 78901~Nx", {51, 151, 0, 13});
    REQUIRE(p.words.size() == 3);
    for (int i = 0; i < 3; ++i) {
        CHECK(p.words[static_cast<std::size_t>(i)].x == 51);
        CHECK(p.words[static_cast<std::size_t>(i)].y == 13 * i);
    }
    CHECK(p.right == 101);
}

TEST_CASE("a word of several styles stays together")
{
    // "name" is bold; the full stop after it must not stand alone on the next line.
    const auto p = plan(L"1234 ~Bname~B.", {0, 100, 0, 13});
    CHECK(lines(p, 13) == std::vector<std::wstring>{L"1234", L"name."});
    REQUIRE(p.words.size() == 3);
    CHECK(p.words[1].style.bold);
    CHECK(p.words[2].x == 48);
    CHECK(p.words[2].y == 13);
}

TEST_CASE("a word longer than a line is broken and nothing is lost")
{
    const std::wstring path(47, L'x');
    const auto p = plan(L"in " + path, {51, 151, 0, 13});
    std::wstring all;
    for (const auto& line : lines(p, 13)) {
        CHECK(line.size() <= 10);
        all += line;
    }
    CHECK(all == L"in" + path);
    // Not even room for one character: one each line.
    CHECK(plan(L"abc", {51, 40, 0, 13}).lines == 3);
    // Halves of a pair stay together.
    const std::wstring pairs = L"\xD83D\xDE00\xD83D\xDE00\xD83D\xDE00";
    for (const auto& line : lines(plan(pairs, {0, 30, 0, 13}), 13))
        CHECK(line.size() % 2 == 0);
}

TEST_CASE("the surface grows by whole lines when the next would pass its bottom")
{
    struct Case {
        const wchar_t* text;
        int height, grown;
    };
    const Case cases[] = {
        {L"a", 40, 40},          {L"a~Nb~Nc", 40, 40}, // three lines of 13 end at 39
        {L"a~Nb~Nc~Nd", 40, 53}, {L"a~Nb~Nc~Nd~Ne", 40, 66}, {L"", 0, 13},
        {L"a", 0, 13},           {L"a~N", 13, 26},
    };
    for (const Case& c : cases) {
        CAPTURE(c.height);
        CAPTURE(c.grown);
        CHECK(plan(c.text, {51, 400, c.height, 13}).height == c.grown);
    }
}

TEST_CASE("a huge text is placed in bounded time")
{
    const auto p = plan(std::wstring(65536, L'W'), {51, 451, 0, 13});
    CHECK(p.lines == (65536 + 39) / 40);
}
