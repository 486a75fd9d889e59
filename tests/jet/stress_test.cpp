#include "support/jet_stress.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("10,000 random operations leave what a simple model says")
{
    Stress stress(20, 24, 60);
    stress.run(10000);
}

TEST_CASE("long names make deep trees, long texts more than 512 pages")
{
    Stress stress(7, 250, 255);
    stress.run(5000);
    CHECK(stress.pages() > 512);
    std::size_t levels = 0;
    CHECK(checkJetFile(stress.files(), kStressPath, &levels) == "");
    CHECK(levels >= 3);
    const JetContent before = readJetFile(stress.files(), kStressPath);

    clsJetDatabase::compactDatabase(kStressPath, L"small.mdb", stress.files());
    CHECK(checkJetFile(stress.files(), L"small.mdb") == "");
    CHECK(readJetFile(stress.files(), L"small.mdb") == before);
    CHECK(stress.files().files.at(L"small.mdb")->size()
          <= stress.files().files.at(kStressPath)->size());

    const auto repaired = clsJetDatabase::repairDatabase(kStressPath, stress.files());
    CHECK(repaired.lost == 0);
    CHECK(checkJetFile(stress.files(), kStressPath) == "");
    CHECK(readJetFile(stress.files(), kStressPath) == before);
}
