#include "chat/clsEditorModel.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

clsEditorModel styles()
{
    return {EditorList::Hugs, {{{}, L"( {%} )"}, {{}, L"[ {%} ]"}, {{}, L"< {%} >"}}, L"[ {%} ]"};
}

} // namespace

TEST_CASE("what the editor takes and refuses")
{
    clsEditorModel commands(EditorList::Commands, {{L"home", L"www.example.com"}}, {});
    CHECK_FALSE(commands.changed());
    CHECK(commands.add({L"HOME", L"mail"}) == -1); // the store knows no case
    CHECK(commands.add({L"two words", L"mail"}) == -1);
    CHECK(commands.add({L"", L"mail"}) == -1);
    CHECK_FALSE(commands.changed());
    CHECK(commands.add({L"news", L"news"}) == 1);
    CHECK(commands.changed());
    CHECK(commands.replace(0, {L"home", L"www.example.org"})); // its own name is no clash
    CHECK_FALSE(commands.replace(0, {L"News", L"x"}));
    CHECK(commands.remove(1));
    CHECK_FALSE(commands.remove(1));
    CHECK(commands.replace(0, {L"home", L"www.example.com"}));
    CHECK_FALSE(commands.changed()); // all is as it was
    CHECK_FALSE(commands.makeCurrent(0));

    clsEditorModel aliases(EditorList::Aliases, {{L"joesmith", L"Joe"}}, {});
    CHECK(aliases.add({L"Joe Smith", L"Joey"}) == -1);
    CHECK(aliases.add({L"Rose 3", L"Rose"}) == 1);
}

TEST_CASE("styles move, and the one in use is followed")
{
    clsEditorModel hugs = styles();
    CHECK(hugs.move(0, -1) == 0);
    CHECK(hugs.move(2, 1) == 2);
    CHECK(hugs.move(1, 1) == 2);
    CHECK(hugs.entries()[2].text == L"[ {%} ]");
    CHECK(hugs.current() == L"[ {%} ]");
    CHECK(hugs.replace(2, {{}, L"[[ {%} ]]"}));
    CHECK(hugs.current() == L"[[ {%} ]]");
    CHECK(hugs.replace(0, {{}, L"(( {%} ))"}));
    CHECK(hugs.current() == L"[[ {%} ]]");
    CHECK(hugs.makeCurrent(0));
    CHECK(hugs.current() == L"(( {%} ))");
    CHECK_FALSE(hugs.makeCurrent(7));
    CHECK(hugs.add({{}, L"no name"}) == -1);
    CHECK(hugs.move(0, 7) == 0);
    CHECK(hugs.changed());
}

TEST_CASE("a list is not endless")
{
    clsEditorModel hugs = styles();
    int added = 0;
    for (int i = 0; i < 1000; ++i)
        added += hugs.add({{}, L"{%} " + std::to_wstring(i)}) >= 0;
    CHECK(added == 497);
    CHECK_FALSE(hugs.fault({{}, L"{%} one more"}).empty());
    CHECK(hugs.fault({{}, L"{%} mended"}, 0).empty());
}
