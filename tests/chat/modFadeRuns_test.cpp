#include "chat/modFadeRuns.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("faded text is read back as runs")
{
    Fade fade;
    fade.FadeNumber = 2;
    fade.colours = {0, 0x0000FF};
    fade.Wavy = fade.Bold = true;
    std::wstring text = L"a<b :-)\r\n{S x}";
    const std::wstring plain = L"a<b :-)\n{S x}";
    FadeEngine(text, fade, false, true);
    const auto runs = fadeRuns(text);
    std::wstring all;
    for (const FadeRun& run : runs) {
        all += run.text;
        CHECK(run.bold);
    }
    CHECK(all == plain);
    CHECK(runs.back().colour == 0);
    CHECK(runs.back().text == L"{S x}");
    CHECK(runs.back().shift == 0);
    CHECK(runs[1].shift == -1);
    CHECK(runs[1].colour > runs[0].colour);
}

TEST_CASE("contrast tells what is hard to read")
{
    CHECK(contrast(0, 0xFFFFFF) == doctest::Approx(21));
    CHECK(contrast(0x123456, 0x123456) == doctest::Approx(1));
    const auto yellow = fadeRuns(L"<FONT COLOR=#FFFF00>ab<FONT COLOR=#000080>c d");
    CHECK(hardToRead(yellow, 0xFFFFFF) == doctest::Approx(0.5));
    CHECK(hardToRead(yellow, 0) == doctest::Approx(0.5));
    CHECK(hardToRead({}, 0) == 0);
}
