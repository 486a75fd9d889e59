#include "ui/Placement.h"

#include <doctest/doctest.h>

#include <climits>

using namespace velora;

namespace {
const Rect kFirst{0, 0, 1280, 984};
const Rect kLeftOfIt{-1024, 0, 0, 768};
} // namespace

TEST_CASE("a remembered place is used where the title bar can be grabbed")
{
    struct Case {
        Rect wanted;
        std::vector<Rect> monitors;
        bool used;
    };
    const Case cases[] = {
        {{100, 100, 500, 400}, {kFirst}, true},
        {{100, 100, 500, 400}, {}, false},
        // On a monitor that is no longer there; on the one at the left.
        {{-900, 100, -500, 400}, {kFirst}, false},
        {{-900, 100, -500, 400}, {kFirst, kLeftOfIt}, true},
        // Just enough and just too little of the title across the right edge.
        {{1200, 100, 1600, 400}, {kFirst}, true},
        {{1201, 100, 1601, 400}, {kFirst}, false},
        {{-320, 100, 80, 400}, {kFirst}, true},
        {{-321, 100, 79, 400}, {kFirst}, false},
        // The title must be visible in its whole height: a window above the screen cannot be moved.
        {{100, -1, 500, 300}, {kFirst}, false},
        {{100, 960, 500, 1300}, {kFirst}, true},
        {{100, 961, 500, 1301}, {kFirst}, false},
        // Halves on two monitors do not add up to a title that can be grabbed.
        {{-70, 100, 70, 400}, {kFirst, kLeftOfIt}, false},
        // Narrow windows: all of it.
        {{100, 100, 150, 200}, {kFirst}, true},
        {{1250, 100, 1300, 200}, {kFirst}, false},
        // Damaged numbers.
        {{0, 0, 0, 0}, {kFirst}, false},
        {{500, 100, 100, 400}, {kFirst}, false},
        {{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {kFirst}, false},
        {{-32000, -32000, -31840, -31972}, {kFirst}, false}, // how a minimised window is reported
    };
    for (const Case& c : cases) {
        CAPTURE(c.wanted.left);
        CAPTURE(c.wanted.top);
        CHECK(usablePlace(c.wanted, c.monitors).has_value() == c.used);
    }
}

TEST_CASE("a place larger than the monitor shrinks to it")
{
    CHECK(usablePlace({10, 10, 3000, 3000}, {kFirst}) == Rect{10, 10, 1290, 994});
    CHECK(usablePlace({10, 10, 300, 300}, {kFirst}) == Rect{10, 10, 300, 300});
}

TEST_CASE("a popup is moved wholly into the area")
{
    CHECK(movedInto({1200, 900, 1400, 1100}, kFirst) == Rect{1080, 784, 1280, 984});
    CHECK(movedInto({-50, -50, 50, 50}, kFirst) == Rect{0, 0, 100, 100});
    CHECK(movedInto({-50, -50, 2000, 50}, kFirst) == Rect{0, 0, 1280, 100});
    CHECK(movedInto({10, 10, 20, 20}, kFirst) == Rect{10, 10, 20, 20});
}
