#include "chat/modPanel.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

constexpr Rect kFrame{100, 50, 900, 650};
constexpr Size kPanel{120, 28};

} // namespace

TEST_CASE("the panel keeps its distance from the frame's upper right corner")
{
    CHECK(panelPlace(kFrame, kPanel, {10, 20}) == Rect{770, 70, 890, 98});
    Rect wider = kFrame;
    wider.right += 200;
    CHECK(panelPlace(wider, kPanel, {10, 20}).right == wider.right - 10);
}

TEST_CASE("it stays over the frame")
{
    const struct {
        PanelOffset offset;
        Point corner;
    } cases[] = {
        {{5000, 20}, {100, 70}},  // too far left
        {{10, 5000}, {770, 622}}, // too far down
        {{100000, 100000}, {100, 622}},
    };
    for (const auto& c : cases) {
        const Rect place = panelPlace(kFrame, kPanel, c.offset);
        CHECK(place.left == c.corner.x);
        CHECK(place.top == c.corner.y);
        CHECK(place.size() == kPanel);
    }
    // A frame smaller than the panel: its upper left corner counts.
    const Rect tiny{100, 50, 150, 60};
    CHECK(panelPlace(tiny, kPanel, {10, 20}).left == 100);
    CHECK(panelPlace(tiny, kPanel, {10, 20}).top == 50);
}

TEST_CASE("a dragged panel is kept, inside the frame")
{
    const Rect dragged{400, 300, 520, 328};
    CHECK(panelPlace(kFrame, kPanel, panelOffset(kFrame, dragged)) == dragged);
    CHECK(panelOffset(kFrame, {2000, 300, 2120, 328}) == PanelOffset{0, 250});
    CHECK(panelOffset(kFrame, {-500, -100, -380, -72}) == PanelOffset{680, 0});
}

TEST_CASE("the setting")
{
    CHECK(parsePanelOffset(panelOffsetText({12, 34})) == PanelOffset{12, 34});
    for (const wchar_t* bad :
         {L"", L"12", L"12,", L",5", L"a,b", L"-1,5", L"5,-1", L"1,2,3", L"99999999,1", L"1 ,2"})
        CHECK_FALSE(parsePanelOffset(bad));
}

TEST_CASE("the names of hidden buttons")
{
    std::wstring names = withName(withName(L"", L"Wav List"), L"Hugs");
    CHECK(names == L"Wav List,Hugs");
    CHECK(withName(names, L"hugs") == L"Wav List,hugs");
    CHECK(holdsName(names, L"HUGS"));
    CHECK_FALSE(holdsName(names, L"Wav"));
    CHECK_FALSE(holdsName(names, L""));
    CHECK(withoutName(L" , Wav List,,Hugs ,Wav List", L"Wav List") == L"Hugs");
}
