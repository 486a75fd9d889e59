#include "core/modScreenNames.h"

#include "core/modCaptions.h"

#include <doctest/doctest.h>

#include <random>

using namespace velora;
using Names = std::vector<std::wstring>;
using namespace std::string_literals;

TEST_CASE("the form of a screen name")
{
    for (const wchar_t* good : {L"abc", L"Joe Smith", L"A12", L"Sixteen Letters1"})
        CHECK(IsScreenName(good));
    for (const wchar_t* bad : {L"", L"ab", L"1abc", L" abc", L"Seventeen Letters", L"a-b", L"joe.s",
                               L"Ren\u00E9e", L"abc\t", L"ab:"})
        CHECK_FALSE(IsScreenName(bad));
    CHECK_FALSE(IsScreenName(std::wstring(5000, L'a')));
}

TEST_CASE("names in the index stand between NULs")
{
    const std::string index =
        "\1\2\0Joe Smith\0\0\0garbage\xFF\0Mary99   \0ab\0 Lead\0Seventeen Letters\0"
        "joesmith\0Guest\0Last One"s;
    CHECK(screenNamesInIndex(index, kUnitedStates) == Names{L"Joe Smith", L"Mary99"});
    CHECK(screenNamesInIndex(index + '\0', kUnitedStates)
          == Names{L"Joe Smith", L"Mary99", L"Last One"});
    // Without a NUL before it the first piece is no name.
    CHECK(screenNamesInIndex("Joe Smith\0"s, kUnitedStates).empty());
}

TEST_CASE("each edition has its own guest")
{
    const std::string index = "\0Guest\0Gast\0Invit\0Joe Smith\0"s;
    CHECK(screenNamesInIndex(index, kAustralia) == Names{L"Gast", L"Invit", L"Joe Smith"});
    CHECK(screenNamesInIndex(index, kGermany) == Names{L"Guest", L"Invit", L"Joe Smith"});
    CHECK(screenNamesInIndex(index, kFrance) == Names{L"Guest", L"Gast", L"Joe Smith"});
}

TEST_CASE("only New User means no account")
{
    CHECK(onlyNewUser(screenNamesInIndex("\0Guest\0New User\0"s, kUnitedStates)));
    CHECK_FALSE(onlyNewUser(screenNamesInIndex("\0New User\0Joe Smith\0"s, kUnitedStates)));
    CHECK_FALSE(onlyNewUser({}));
}

TEST_CASE("a garbled or huge index is harmless")
{
    CHECK(screenNamesInIndex("", kUnitedStates).empty());
    CHECK(screenNamesInIndex("\0"s, kUnitedStates).empty());
    CHECK(screenNamesInIndex("\0"s + std::string(5000, 'a') + "\0Joe Smith\0"s, kUnitedStates)
          == Names{L"Joe Smith"});
    CHECK(screenNamesInIndex(std::string(1 << 20, 'a'), kUnitedStates).empty());
    std::string many;
    for (int i = 0; i < 100000; ++i)
        many += "\0Name"s + std::to_string(i);
    CHECK(screenNamesInIndex(many, kUnitedStates).size() == kMostScreenNames);
    std::mt19937 random(7);
    for (int run = 0; run < 200; ++run) {
        std::string bytes(2000, '\0');
        for (char& b : bytes)
            b = static_cast<char>(random() % 3 ? random() % 128 : 0);
        for (const std::wstring& name : screenNamesInIndex(bytes, run % kEditions))
            CHECK(IsScreenName(name));
    }
}

TEST_CASE("the welcome caption names who is signed on")
{
    CHECK(welcomedName(L"Welcome, Joe Smith!") == L"Joe Smith");
    CHECK(welcomedName(L"Welcome,  Joe Smith  ") == L"Joe Smith");
    CHECK(welcomedName(L"Willkommen, Joe! Sie haben Post!") == L"Joe");
    CHECK(welcomedName(L"Bienvenue, Joe, encore!") == L"Joe, encore");
    CHECK(welcomedName(L"Welcome") == L"");
    CHECK(welcomedName(L"Hi! Welcome, Joe") == L"Joe");
}
