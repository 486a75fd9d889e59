#include "base/text.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("every Windows-1252 byte survives the way to text and back")
{
    std::string all;
    for (int b = 0; b < 256; ++b)
        all += static_cast<char>(b);
    const std::wstring text = from1252(all);
    CHECK(text[0x80] == 0x20AC);
    CHECK(text[0x9F] == 0x178);
    CHECK(to1252(text) == all);
    CHECK(fits1252(text));
    CHECK(encodeFileText(text) == all);
}

TEST_CASE("file text keeps what Windows-1252 lacks")
{
    const std::wstring smile = fromUtf8("a\xF0\x9F\x98\x80z");
    CHECK(to1252(smile) == "a?z");
    CHECK(encodeFileText(smile)
          == "\xEF\xBB\xBF"
             "a\xF0\x9F\x98\x80z");
    for (const std::wstring& text : {smile, std::wstring(L"plain"),
                                     from1252("\xEF\xBB\xBF"
                                              "x")})
        CHECK(decodeFileText(encodeFileText(text)) == text);
    CHECK(fromUtf16le(toUtf16le(smile)) == smile);
    CHECK(toUtf16le(smile).size() == 8);
}

TEST_CASE("malformed UTF-8 becomes one replacement for each byte")
{
    for (const char* bytes :
         {"\x80", "\xC0\x80", "\xE2\x82", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
        CAPTURE(bytes);
        CHECK(fromUtf8(bytes) == std::wstring(std::string_view(bytes).size(), 0xFFFD));
    }
}

TEST_CASE("lines end at CR LF, CR or LF")
{
    CHECK(splitLines(L"a\r\nb\rc\nd") == std::vector<std::wstring>{L"a", L"b", L"c", L"d"});
    CHECK(splitLines(L"a\n\nb\r\n") == std::vector<std::wstring>{L"a", L"", L"b"});
    CHECK(splitLines(L"").empty());
}

TEST_CASE("numbers are whole, decimal and fit")
{
    CHECK(parseLong(L"-2147483648") == -2147483647L - 1);
    CHECK(parseLong(L"+7") == 7);
    for (const wchar_t* bad : {L"", L"-", L" 1", L"1 ", L"0x1", L"2147483648", L"99999999999"})
        CHECK_FALSE(parseLong(bad).has_value());
}

TEST_CASE("screen names compare without blanks and case")
{
    CHECK(screenNameKey(L" Joe Smith ") == L"joesmith");
    CHECK(screenNameKey(L"\u00C4rger") == L"\u00E4rger");
}
