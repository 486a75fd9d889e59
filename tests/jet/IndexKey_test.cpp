#include "jet/IndexKey.h"

#include <doctest/doctest.h>

using namespace velora::jet;

namespace {

std::string hex(const std::string& bytes)
{
    static const char digits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        text += digits[static_cast<Byte>(c) >> 4];
        text += digits[c & 15];
    }
    return text;
}

std::string text(std::wstring_view value, bool ascending = true)
{
    std::string key;
    addTextKey(key, value, ascending);
    return key;
}

std::string number(std::int32_t value, bool ascending = true)
{
    std::string key;
    addLongKey(key, value, ascending);
    return key;
}

} // namespace

TEST_CASE("text keys follow the General sort order's figures")
{
    struct Case {
        const wchar_t* value;
        const char* key;
    };
    // 7F, the inline bytes, 01, the extra bytes, [01 01 01, the unprintable ones], 00.
    static const Case cases[] = {
        {L"", "7F0100"},
        {L"a", "7F4A0100"},
        {L"A", "7F4A0100"},
        {L"ab  ", "7F4A4C0100"},
        {L" a b", "7F074A074C0100"},
        {L"\t", "7F08030100"},
        {L"^_", "7F2B022B030100"},
        {L"\u00A3", "7F34A70100"},
        {L"\u00E9", "7F51010E00"},
        {L"e\u00E9e", "7F51515101020E00"},
        {L"\u00E9\u00E8", "7F5151010E0F00"},
        {L"\u00C6\u00E9", "7F4A515101020E00"},
        {L"\u02C6", "7F2B02010300"},
        {L"\u2122\u0152", "7F6E0464510100"},
        {L"'", "7F0101010180070680 00"},
        {L"a-b", "7F4A4C01010101800B068200"},
        {L"\u00E9'", "7F51010E010101800B068000"},
        {L"x\u00ADy\u2013", "7F757601010101800B0683800F068900"},
        {L"\x01z", "7F7801010101800706 0300"},
    };
    for (const Case& c : cases) {
        CAPTURE(hex(text(c.value)));
        std::string wanted;
        for (const char* p = c.key; *p; ++p)
            if (*p != ' ')
                wanted += *p;
        CHECK(hex(text(c.value)) == wanted);
    }
    CHECK(hex(text(std::wstring(1, L'\0'))) == "7F0100");
}

TEST_CASE("descending keys are complemented up to their end, and then end once more")
{
    CHECK(hex(text(L"a", false)) == "80B5FEFF00");
    CHECK(hex(number(1, false)) == "807FFFFFFE");
    std::string null;
    addNullKey(null);
    addNullKey(null, false);
    CHECK(hex(null) == "00FF");
}

TEST_CASE("numbers sort by value")
{
    CHECK(hex(number(0)) == "7F80000000");
    CHECK(hex(number(-1)) == "7F7FFFFFFF");
    CHECK(hex(number(0x0F000001)) == "7F8F000001");
    CHECK(number(INT32_MIN) < number(-5));
    CHECK(number(-5) < number(7));
    CHECK(number(7, false) < number(-5, false));
}

TEST_CASE("texts sort as their users expect")
{
    // Ascending, each strictly below the next.
    static const wchar_t* order[] = {L"",     L" a",     L"_x",    L"10",    L"9",
                                     L"Anna", L"ann-a",  L"Bert",  L"co-op", L"coop2",
                                     L"Z",    L"\u0416", L"\u0417"};
    for (std::size_t i = 1; i < std::size(order); ++i) {
        CAPTURE(i);
        CHECK(text(order[i - 1]) < text(order[i]));
    }
    CHECK(text(L"resume") < text(L"r\u00E9sum\u00E9"));
    CHECK(text(L"r\u00E9sum\u00E9") < text(L"resumf"));
    CHECK(text(L"stra\u00DFe") == text(L"STRA\u00DFE"));
}

TEST_CASE("only the first 255 characters count, and no key outgrows its bound")
{
    const std::wstring most(255, L'm');
    CHECK(text(most + L"x") == text(most + L"y"));
    CHECK(text(most.substr(1) + L"x") != text(most.substr(1) + L"y"));
    CHECK(text(std::wstring(254, L'm') + L"  q") == text(std::wstring(254, L'm')));
    for (const wchar_t c : {L'a', L'\u00E9', L'\'', L'\u0416', L'^', L'\u02C6'})
        CHECK(text(std::wstring(300, c)).size() <= kMaxTextKey);
}

TEST_CASE("no key is the beginning of another")
{
    static const wchar_t* values[] = {L"",   L"a",     L"aa", L"a'", L"\u00E9", L"\u00E9'",
                                      L"a-", L"a'-\t", L"'a", L"''", L"\u0416", L"\u0416a"};
    for (const wchar_t* a : values)
        for (const wchar_t* b : values)
            if (a != b)
                CHECK_FALSE(text(a).starts_with(text(b)));
}

TEST_CASE("row numbers at an entry's end")
{
    std::string entry;
    addRowId(entry, {0x123456, 0x78});
    CHECK(hex(entry) == "12345678");
    CHECK(rowIdAt(Bytes(entry), 0) == RowId{0x123456, 0x78});
}
