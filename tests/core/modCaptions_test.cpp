#include "core/modCaptions.h"

#include <doctest/doctest.h>

using namespace velora;

// The captions that are alike in all versions are judged by the stand-in, which has its own list.
TEST_CASE("an edition that is none has the first one's captions")
{
    for (const auto lookup : {writeMailCaption, frameCaption, aolName, signOnCaption, attachCaption,
                              attachmentsCaption, welcomePrefix, profileCaption}) {
        CHECK(lookup(-1) == lookup(0));
        CHECK(lookup(kEditions) == lookup(0));
    }
}

TEST_CASE("captions that differ by version")
{
    const auto about = [](int edition, int version) { return aboutMenuCaption(edition, version); };
    for (int version = 3; version <= 7; ++version) {
        CHECK(about(kUnitedStates, version) == L"&About America Online");
        CHECK(about(kUnitedKingdom, version) == L"&About AOL");
        CHECK(about(kAustralia, version) == L"&About AOL");
        CHECK(about(kFrance, version) == L"A &propos d'AOL");
        CHECK(about(kCanada, version) == (version == 7 ? L"&About AOL" : L"&About AOL Canada"));
        CHECK(signOffCaption(kUnitedStates, version) == L"Goodbye from America Online!");
        CHECK(signOffCaption(kCanada, version) == L"Goodbye from AOL Canada!");
        CHECK(signOffCaption(kAustralia, version) == L"Goodbye from AOL");
        CHECK(signOffCaption(kGermany, version) == L"Bis bald!");
        CHECK(signOffCaption(kFrance, version) == L"A bient\u00F4t sur AOL");
    }
    CHECK(about(kGermany, 5) == L"&\u00DCber AOL 5.0");
    CHECK(about(kGermany, 6) == L"&\u00DCber AOL 6.0");
    CHECK(about(kGermany, 7) == L"&\u00DCber AOL 7.0");
    CHECK(signOffCaption(kUnitedKingdom, 5) == L"Goodbye from AOL!");
    CHECK(signOffCaption(kUnitedKingdom, 6) == L"Goodbye from AOL");
    CHECK(signOffCaption(kUnitedKingdom, 7) == L"Goodbye from AOL! ");
}
