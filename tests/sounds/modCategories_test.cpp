#include "sounds/modCategories.h"

#include "base/files.h"
#include "settings/Options.h"
#include "sounds/modWavSources.h"
#include "support/memory_store.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("categories are kept by their names, as a folder or a group")
{
    StoreScope settings;
    writeSetting(L"Categories", L"Zoo", L"D:\\zoo\\");
    writeSetting(L"Categories", L"cartoons", L"Group: My Cartoons ");
    writeSetting(L"Categories", L"Drive", L"D:\\");
    writeSetting(L"Categories", L"Windows Directory", L"");
    writeSetting(L"Categories", L"empty", L"");
    writeSetting(L"Categories", L"empty group", L"group:");
    writeSetting(L"Categories", L"FavWavs", L"D:\\x");
    writeSetting(L"Categories", L"a number", 5);
    const std::vector<WavCategory> loaded = loadCategories(L"C:\\windows");
    CHECK(loaded
          == std::vector<WavCategory>{{L"cartoons", L"", L"My Cartoons"},
                                      {L"Drive", L"D:\\", L""},
                                      {L"Windows Directory", L"C:\\windows", L""},
                                      {L"Zoo", L"D:\\zoo", L""}});
    CHECK(categoryData(loaded[0]) == L"group:My Cartoons");

    const auto sources = wavSources(L"C:\\AOL", L"C:\\V", loaded);
    REQUIRE(sources.size() == 7);
    CHECK(sources[0].name == L"AOL Sounds");
    CHECK(sources[2].name == L"FavWavs");
    CHECK(sources[3].path == groupFile(L"C:\\V", L"My Cartoons"));
    CHECK(sources[3].listFile);
    CHECK(sources[6].path == L"D:\\zoo");
    std::vector<std::wstring> order;
    for (const WavSource& source : lookupOrder(sources))
        order.push_back(source.name);
    CHECK(order
          == std::vector<std::wstring>{L"FavWavs", L"AOL Sounds", L"cartoons", L"Drive",
                                       L"Windows Directory", L"Zoo", L"AOL Directory"});
    CHECK(wavSources(L"", L"C:\\V", {}).size() == 1);
}

TEST_CASE("a category's name is its own, and a renamed group keeps its list")
{
    StoreScope settings;
    const WavCategory group{L"Bells", L"", L"Bells"};
    saveCategory(group);
    saveCategory({L"Zoo", L"D:\\zoo", L""});
    std::vector<WavCategory> present = loadCategories(L"");
    for (const wchar_t* taken : {L"zoo", L"BELLS", L"FavWavs", L"aol sounds"}) {
        CAPTURE(taken);
        CHECK(categoryNameFault(taken, present).find(L"already exists!") != std::wstring::npos);
    }
    CHECK(categoryNameFault(L"ZOO", present, L"Zoo").empty());
    CHECK(categoryNameFault(L"New", present).empty());
    CHECK_FALSE(categoryNameFault(L"a\tb", present).empty());
    CHECK_FALSE(categoryNameFault(std::wstring(101, L'x'), present).empty());

    renameCategory(group, L"Chimes");
    present = loadCategories(L"");
    CHECK(present[0] == WavCategory{L"Chimes", L"", L"Bells"});
    CHECK(freeGroupName(L"bells", present) == L"bells 2");
    CHECK(freeGroupName(L"Other", present) == L"Other");
    renameCategory(present[0], L"CHIMES");
    CHECK(loadCategories(L"")[0].name == L"CHIMES");
    deleteCategory(present[1]);
    CHECK(loadCategories(L"").size() == 1);
}

TEST_CASE("a group's list stays in its folder")
{
    const std::wstring folder = joinPath(joinPath(L"P", L"data"), L"wav groups");
    CHECK(groupFile(L"P", L"My Bells") == joinPath(folder, L"My Bells.dat"));
    for (const wchar_t* hostile : {L"..\\..\\x", L"C:\\x", L"../x", L"CON", L"x:stream", L".."}) {
        CAPTURE(hostile);
        const std::wstring file = groupFile(L"P", hostile);
        REQUIRE(file.starts_with(folder));
        const std::wstring name = file.substr(folder.size() + 1);
        CHECK(name.find_first_of(L"\\/:") == std::wstring::npos);
        CHECK(name != L"CON.dat");
    }
}
