#include "core/modHotWordList.h"

#include "settings/Options.h"
#include "support/memory_store.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("the settings' values are the words; those that stay are left as they are")
{
    StoreScope scope;
    writeSetting(L"Chat HotWords", L"1", L"cat");
    writeSetting(L"Chat HotWords", L"dog", L" ");
    writeSetting(L"Chat HotWords", L"Rose", L"lily");
    CHECK(hotWords() == std::vector<std::wstring>{L"cat", L"lily", L"dog"});

    setHotWords({L"cat", L"lily", L"rose"});
    const auto& kept = scope.store->data[L"Chat HotWords"];
    CHECK(kept.size() == 3);
    CHECK(textOf(kept.at(L"1")) == L"cat");
    CHECK(textOf(kept.at(L"Rose")) == L"lily"); // names are one whatever their case
    CHECK(textOf(kept.at(L"rose 2")) == L"rose");
    setHotWords({});
    CHECK(hotWords().empty());
}
