#include "chat/modHotWords.h"

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

TEST_CASE("one alert every ten seconds, also when the counter wraps")
{
    clsAlertLimit limit;
    const std::uint32_t start = 0xFFFFF000u;
    CHECK(limit.mayAlert(start));
    CHECK_FALSE(limit.mayAlert(start + 9999));
    CHECK(limit.mayAlert(start + 10000));
    CHECK_FALSE(limit.mayAlert(start + 10001));
}
