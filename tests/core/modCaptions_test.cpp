#include "core/modCaptions.h"

#include "base/wildcard.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

// \u escapes where AOL's captions have accents, so that the file's own encoding can't change them.
struct Row {
    const char* purpose;
    std::wstring (*lookup)(int edition);
    const wchar_t* captions[kEditions];
};

const Row kRows[] = {
    {"write mail",
     writeMailCaption,
     {L"Write Mail", L"Write Email", L"Write Mail", L"Write e-mail", L"eMail schreiben",
      L"R\u00E9diger un courrier"}},
    {"frame",
     frameCaption,
     {L"America  Online", L"AOL", L"AOL Canada", L"AOL", L"AOL", L"AOL est un service de Cegetel"}},
    {"name", aolName, {L"America Online", L"AOL", L"AOL Canada", L"AOL", L"AOL", L"AOL"}},
    {"sign on",
     signOnCaption,
     {L"Sign On", L"Sign On", L"Sign On", L"Sign On", L"Anmelden", L"Connexion"}},
    {"attach",
     attachCaption,
     {L"Attach", L"Attach", L"Attach", L"Attach", L"Anh\u00E4ngen", L"Fichier"}},
    {"attachments",
     attachmentsCaption,
     {L"Attachments", L"Attachments", L"Attachments", L"Attachments", L"eMail-Anhang",
      L"Fichiers joints"}},
    {"welcome",
     welcomePrefix,
     {L"Welcome,", L"Welcome,", L"Welcome,", L"Welcome,", L"Willkommen,", L"Bienvenue,"}},
    {"profile",
     profileCaption,
     {L"Member Profile", L"Member Profile", L"Member Profile", L"Member Profile", L"Member Profile",
      L"Carte de visite"}},
};

} // namespace

TEST_CASE("each edition's captions")
{
    for (const Row& row : kRows) {
        CAPTURE(row.purpose);
        for (int edition = 0; edition < kEditions; ++edition)
            CHECK(row.lookup(edition) == row.captions[edition]);
        CHECK(row.lookup(-1) == row.captions[0]);
        CHECK(row.lookup(kEditions) == row.captions[0]);
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

TEST_CASE("patterns of Instant Message windows")
{
    for (const int edition : {kUnitedStates, kUnitedKingdom, kCanada, kAustralia}) {
        CHECK(imReceivedPattern(edition, 5) == L"*Instant Message From: *");
        CHECK(imReceivedPattern(edition, 6) == L"*IM From: *");
        CHECK(imSentPattern(edition, 5) == L"*Instant Message To: *");
        CHECK(imSentPattern(edition, 7) == L"*IM To: *");
        CHECK(internetImPattern(edition, 6) == L"*Internet Message From: *");
        CHECK(internetImPattern(edition, 5) == L"*Instant Message From: *");
    }
    for (const int version : {4, 5, 6, 7}) {
        CHECK(imReceivedPattern(kGermany, version) == L"*Telegramm von: *");
        CHECK(imReceivedPattern(kFrance, version) == L"*Message \u00E9clair de: *");
        CHECK(imSentPattern(kFrance, version) == L"*Message \u00E9clair de: *");
        CHECK(imSentPattern(kGermany, version)
              == (version == 6 ? L"*Telegramm an: *" : L"*Telegramm von: *"));
        CHECK(internetImPattern(kGermany, version) == L"*Telegramm von: *");
        CHECK(internetImPattern(kFrance, version) == L"*Message \u00E9clair de: *");
    }
    CHECK(wildcardMatch(imReceivedPattern(kUnitedStates, 6), L">IM From: Joe Smith"));
}

TEST_CASE("the letter that opens the find window")
{
    CHECK(findWindowLetter(kGermany) == L'r');
    CHECK(findWindowLetter(kFrance) == L'c');
    for (const int edition : {kUnitedStates, kUnitedKingdom, kCanada, kAustralia})
        CHECK(findWindowLetter(edition) == L'f');
}
