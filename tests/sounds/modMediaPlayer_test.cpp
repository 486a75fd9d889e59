#include "sounds/modMediaPlayer.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("Media Player counts from version 6.4 on")
{
    const struct {
        std::uint32_t most, least;
        bool usable;
    } cases[] = {
        {0x00060004, 0x00090465, true}, // 6.4.9.1125
        {0x00060004, 0, true},
        {0x00060003, 0xFFFFFFFF, false}, // 6.3
        {0x00060001, 0, false},
        {0x00070000, 0, true},
        {0x000C0000, 0, true}, // 12.0
        {0x0006000A, 0, true}, // 6.10
        {0, 0, false},
    };
    for (const auto& c : cases) {
        CAPTURE(c.most);
        CHECK(isMediaPlayerVersion(versionNumber(c.most, c.least)) == c.usable);
    }
    CHECK_FALSE(isMediaPlayerVersion(L""));
    CHECK_FALSE(isMediaPlayerVersion(L"x4"));
}
