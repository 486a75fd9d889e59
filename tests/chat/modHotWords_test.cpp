#include "chat/modHotWords.h"

#include "settings/Options.h"
#include "support/memory_store.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("hot words are found by the letter, or whatever their case")
{
    const std::vector<std::wstring> words = {L"", L"  ", L"Velora", L"\u00C4rger"};
    CHECK(findHotWord(L"try VELORA now", words, false) == L"Velora");
    CHECK_FALSE(findHotWord(L"try VELORA now", words, true).has_value());
    CHECK(findHotWord(L"no \u00E4rger", words, false) == L"\u00C4rger");
    CHECK_FALSE(findHotWord(L"nothing", words, false).has_value());
}

TEST_CASE("the settings' values are the words")
{
    auto former = setSettingsStore(std::make_unique<MemoryStore>());
    writeSetting(L"Chat HotWords", L"1", L"cat");
    writeSetting(L"Chat HotWords", L"dog", L" ");
    CHECK(hotWords() == std::vector<std::wstring>{L"cat", L"dog"});
    setSettingsStore(std::move(former));
}

TEST_CASE("one alert every ten seconds, also when the counter wraps")
{
    clsAlertLimit limit;
    const std::uint32_t start = 0xFFFFF000u;
    CHECK(limit.mayAlert(start));
    CHECK_FALSE(limit.mayAlert(start + 9999));
    CHECK(limit.mayAlert(start + 10000));
    CHECK_FALSE(limit.mayAlert(start + 10001));
}
