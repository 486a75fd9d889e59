#include "core/modAOLRules.h"

#include "core/modCaptions.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <initializer_list>

using namespace velora;

TEST_CASE("the edition follows from the marker files, in their order")
{
    struct Case {
        std::vector<std::wstring> files;
        int edition;
    };
    for (const Case& c :
         {Case{{}, kUnitedStates}, Case{{L"aolau.dat"}, kAustralia},
          Case{{L"aolger.dat"}, kGermany}, Case{{L"aolfr.dat"}, kFrance},
          Case{{L"aoluk.dat"}, kUnitedKingdom}, Case{{L"aolfr.dat", L"aoluk.dat"}, kCanada},
          Case{{L"aolau.dat", L"aolger.dat"}, kAustralia},
          Case{{L"aolger.dat", L"aolfr.dat", L"aoluk.dat"}, kGermany}}) {
        CHECK(DetectEdition([&](std::wstring_view name) {
                  return std::find(c.files.begin(), c.files.end(), name) != c.files.end();
              })
              == c.edition);
    }
}

TEST_CASE("the major version is the answer's first character")
{
    CHECK(majorVersion(L"7.0") == 7);
    CHECK(majorVersion(L" 5.") == 5);
    CHECK(majorVersion(L"9") == 9);
    for (const wchar_t* none : {L"", L"   ", L"x.7", L"-1"})
        CHECK(majorVersion(none) == 0);
    CHECK(majorVersion(std::wstring_view(L"\0\0\0", 3)) == 0);
    for (int version = 0; version <= 9; ++version)
        CHECK(isSupportedVersion(version) == (version >= 3 && version <= 7));
}

TEST_CASE("AOL's folder is where waol.exe lies")
{
    CHECK(folderOfAol(L"C:\\AOL 7.0\\waol.exe") == L"C:\\AOL 7.0");
    CHECK(folderOfAol(L"C:\\aol\\WAOL.EXE") == L"C:\\aol");
    for (const wchar_t* other :
         {L"", L"\\waol.exe", L"waol.exe", L"C:\\aol\\aol.exe", L"C:\\xwaol.exe"})
        CHECK(folderOfAol(other) == L"");
}

TEST_CASE("what makes a window a chat room")
{
    const ControlInfo list{L"_AOL_LISTBOX", L""}, combo{L"_aol_combobox", L""};
    const ControlInfo count{L"_AOL_Static", L"23"}, label{L"_AOL_STATIC", L"people here"};
    CHECK(isChatRoom(L"AOL Child", {list, combo, label, count}));
    CHECK(isChatRoom(L"aol_chat_form", {list, combo}));
    CHECK_FALSE(isChatRoom(L"AOL Child", {list, combo, label}));
    CHECK_FALSE(isChatRoom(L"AOL Child", {list, count}));
    CHECK_FALSE(isChatRoom(L"AOL Child", {combo, count}));
    CHECK_FALSE(isChatRoom(L"AOL Child", {list, combo, {L"Edit", L"23"}}));
    CHECK_FALSE(isChatRoom(L"AOL_CHAT_FORM", {}));

    // The head count is looked for in the first twenty of the texts.
    for (const std::size_t before : {19u, 20u}) {
        std::vector<ControlInfo> children{list, combo};
        children.insert(children.end(), before, label);
        children.push_back(count);
        CHECK(isChatRoom(L"AOL Child", children) == (before == 19));
    }
    for (const wchar_t* number : {L"0", L"23", L" 7 "})
        CHECK(isHeadCount(number));
    for (const wchar_t* other : {L"", L" ", L"23 people", L"-1", L"1.5", L"2\u00B2"})
        CHECK_FALSE(isHeadCount(other));
}

TEST_CASE("what the versions want")
{
    for (int version = 3; version <= 7; ++version) {
        CHECK(iconPress(version) == (version >= 6 ? IconPress::enter : IconPress::click));
        CHECK(chatDisplayClass(version) == (version == 7 ? L"RICHCNTLREADONLY" : L"RICHCNTL"));
    }
}
