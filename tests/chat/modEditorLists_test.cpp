#include "chat/modEditorLists.h"

#include "base/files.h"
#include "settings/Options.h"
#include "support/memory_store.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("commands and aliases live in the settings; removed ones go")
{
    const StoreScope settings;
    const TempDir dir;
    saveEditorList(EditorList::Commands, dir.path(), {{L"news", L"http://x /y"}, {L"mail", L"m"}});
    CHECK(commandTarget(L"news") == L"http://x/y");
    CHECK(commandTarget(L"NEWS2") == L"NEWS2");
    saveEditorList(EditorList::Commands, dir.path(), {{L"news", L"n"}});
    CHECK(loadEditorList(EditorList::Commands, dir.path())
          == std::vector<EditorEntry>{{L"news", L"n"}});

    saveEditorList(EditorList::Aliases, dir.path(), {{L"Joe Smith", L" My friend "}});
    CHECK(CheckForAlias(L"joe SMITH") == L"My friend");
    CHECK(CheckForAlias(L"Ann") == L"Ann");
    CHECK(CheckForAlias(L"").empty());
}

TEST_CASE("styles come with the program until the user has a list")
{
    const TempDir dir;
    CHECK(loadEditorList(EditorList::Hugs, dir.path()).size() >= 3);
    const std::vector<EditorEntry> mine = {{L"", L"<{%}>"}, {L"", L"\u2022{%}"}};
    saveEditorList(EditorList::Glintunes, dir.path(), mine);
    CHECK(loadEditorList(EditorList::Glintunes, dir.path()) == mine);
    saveEditorList(EditorList::Glintunes, dir.path(), {});
    CHECK(loadEditorList(EditorList::Glintunes, dir.path()).empty());
    CHECK(hugText(L"<{%}>", L"Joe") == L"<Joe>");
    CHECK(hugText(L"hug", L"Joe") == L"hug Joe");
}

TEST_CASE("what cannot be an entry is said")
{
    struct Row {
        EditorList list;
        const wchar_t* name;
        const wchar_t* text;
        bool good;
    };
    for (const Row& row :
         {Row{EditorList::Commands, L"news", L"x", true},
          Row{EditorList::Commands, L"a b", L"x", false},
          Row{EditorList::Commands, L"", L"x", false},
          Row{EditorList::Commands, L"a:", L"x", false},
          Row{EditorList::Aliases, L"Joe Smith", L"x", true},
          Row{EditorList::Aliases, L"Joe", L"  ", false}, Row{EditorList::Hugs, L"", L"{%}", true},
          Row{EditorList::Hugs, L"", L"hug", false},
          Row{EditorList::Glintunes, L"", L"{%}\r\nx", false}}) {
        CAPTURE(row.name);
        CAPTURE(row.text);
        CHECK(entryFault(row.list, {row.name, row.text}).empty() == row.good);
    }
}
