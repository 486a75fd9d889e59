#include "chat/modIcons.h"

#include <doctest/doctest.h>
#include <set>

using namespace velora;

TEST_CASE("every icon is a picture of its own on a see-through ground")
{
    for (const int size : {16, 20, 24, 32}) {
        std::set<std::vector<std::uint32_t>> seen;
        for (int i = 0; i < static_cast<int>(IconId::count); ++i) {
            CAPTURE(i);
            CAPTURE(size);
            const auto pixels = drawIcon(static_cast<IconId>(i), size);
            REQUIRE(pixels.size() == static_cast<std::size_t>(size) * size);
            CHECK(seen.insert(pixels).second);
            int solid = 0, clear = 0;
            for (const std::uint32_t pixel : pixels) {
                solid += pixel >> 24 == 255;
                clear += pixel >> 24 == 0;
            }
            CHECK(solid > size * size / 10);
            CHECK(clear > size * size / 10);
            CHECK(pixels.front() < 0x01000000u);
            CHECK(pixels.back() < 0x80000000u);
        }
    }
}
