#include "sounds/clsSoundScan.h"

#include "base/files.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("a search finds the sounds of all folders, step by step")
{
    const TempDir dir;
    const std::wstring deep = dir.folder(joinPath(L"a", L"deep"));
    dir.folder(L"empty");
    for (const std::wstring& file :
         {dir.file(L"Top.WAV"), joinPath(deep, L"x.mp3"), joinPath(deep, L"b.mid")})
        replaceFile(file, "x");
    replaceFile(dir.file(L"notes.txt"), "x");

    clsSoundScan scan({dir.path() + (deep.find(L'\\') == deep.npos ? L"/" : L"\\")});
    double before = 0;
    while (scan.step()) {
        CHECK(scan.progress() >= before);
        before = scan.progress();
    }
    CHECK(before == 1);
    CHECK(scan.current().empty());
    CHECK(scan.folders() == 4);
    CHECK(scan.files() == 3);
    REQUIRE(scan.found().size() == 2);
    CHECK(scan.found()[0].folder == dir.path());
    CHECK(scan.found()[1].files == std::vector<std::wstring>{L"b.mid", L"x.mp3"});
    CHECK(scan.fileNamed(L"top") == dir.file(L"Top.WAV"));
    CHECK(scan.fileNamed(L"notes").empty());

    clsSoundScan nothing({dir.file(L"not there")});
    CHECK(nothing.step());
    CHECK_FALSE(nothing.step());
    CHECK(nothing.files() == 0);
}
