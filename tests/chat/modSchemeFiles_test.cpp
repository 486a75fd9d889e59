#include "chat/modSchemeFiles.h"

#include "base/files.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("schemes come with the program, are listed, saved, imported and removed")
{
    TempDir dir;
    const clsSchemes schemes(dir.path());
    CHECK(schemes.list().empty());
    schemes.provideBuiltIn();
    const std::size_t built = schemes.list().size();
    CHECK(built >= 5);
    CHECK(schemes.list().front().name == L"Campfire");
    REQUIRE(schemes.load(L"cool fade"));
    CHECK(schemes.load(L"Cool Fade")->fade.colours[0] == 0x8F2A1B);

    FadeScheme mine = *schemes.load(L"Rainbow");
    mine.Author = L"Me";
    CHECK(schemes.save(L"a/b..\\c", mine));
    CHECK(schemes.list().size() == built + 1);
    CHECK(schemes.exists(L"a/b..\\c"));
    const auto read = schemes.load(L"a/b..\\c");
    REQUIRE(read);
    CHECK(read->Author == L"Me");
    CHECK(read->DateCreated == read->Modified);

    // A scheme in the download folder is listed too, but never before one of ours.
    dir.folder(L"download");
    replaceFile(dir.file(L"download/Slate.fde"), "fadenumber=1\none=5");
    replaceFile(dir.file(L"download/Zebra.fde"), "fadenumber=1\none=5");
    CHECK(schemes.list().size() == built + 2);
    CHECK(schemes.load(L"Slate")->fade.FadeNumber == 3);
    CHECK(schemes.import(dir.file(L"download/Zebra.fde")));
    CHECK(schemes.exists(L"Zebra"));
    replaceFile(dir.file(L"broken.fde"), "MZ");
    CHECK_FALSE(schemes.import(dir.file(L"broken.fde")));

    CHECK(schemes.remove(L"Rainbow"));
    CHECK_FALSE(schemes.load(L"Rainbow").has_value());
    CHECK_FALSE(schemes.remove(L"Rainbow"));
    schemes.provideBuiltIn(); // the user's choice stays
    CHECK_FALSE(schemes.exists(L"Rainbow"));
}
