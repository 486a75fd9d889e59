#include "chat/modKeyword.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("which chat texts are keyword texts")
{
    struct Row {
        const wchar_t* text;
        bool keyword;
    };
    for (const Row& row :
         {Row{L"/Wav List", true}, Row{L"/x/y", false}, Row{L"/", true}, Row{L"hello", false},
          Row{L" /x", false}, Row{L"", false}, Row{L"//", false}, Row{L"/http://a/b", true},
          Row{L"/go HTTP://a/b/c", true}, Row{L"/https://a/b", false}}) {
        CAPTURE(row.text);
        CHECK(isKeywordText(row.text) == row.keyword);
    }
}

TEST_CASE("keywords are found whatever their case and blanks")
{
    struct Row {
        const wchar_t* text;
        Keyword keyword;
        const wchar_t* argument;
    };
    for (const Row& row :
         {Row{L"Wav List", Keyword::WavList, L""}, Row{L"adv", Keyword::Advertise, L""},
          Row{L"ADVERTISE ", Keyword::Advertise, L""}, Row{L"updates", Keyword::Update, L""},
          Row{L"opt", Keyword::Options, L""}, Row{L" F a d e O n ", Keyword::FadeOn, L""},
          Row{L"profile:", Keyword::Profile, L""},
          Row{L"Profile: Joe Smith ", Keyword::Profile, L"Joe Smith"},
          Row{L"e mail:x@y.z", Keyword::Email, L"x@y.z"}, Row{L"im:Joe", Keyword::Im, L"Joe"},
          Row{L"log: two  blanks ", Keyword::Log, L" two  blanks "},
          // Anywhere in the text, and in the table's order.
          Row{L"my log:x", Keyword::Log, L"x"}, Row{L"x:profile:y", Keyword::Profile, L"profile:y"},
          Row{L"hushkits", Keyword::Other, L"hushkits"}, Row{L"My Word", Keyword::Other, L"MyWord"},
          Row{L"", Keyword::Other, L""}}) {
        CAPTURE(row.text);
        const KeywordText got = parseKeyword(row.text);
        CHECK(got.keyword == row.keyword);
        CHECK(got.argument == row.argument);
    }
}

TEST_CASE("web addresses go to the browser")
{
    for (const wchar_t* web : {L"http://x", L"HTTPS://x", L"www.x.y"})
        CHECK(isWebAddress(web));
    for (const wchar_t* other : {L"aol", L"file:///c:/x", L"c:\\x.exe", L"xwww.", L"javascript:x"})
        CHECK_FALSE(isWebAddress(other));
}
