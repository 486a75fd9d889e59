// The stand-in's own small pictures, on a grid of 32 by 32.
#include "aolhost/Art.h"
#include "aolhost/Canvas.h"

namespace aolhost {
namespace {

constexpr COLORREF kInk = RGB(28, 44, 96);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kPaper = RGB(252, 250, 238);
constexpr COLORREF kRed = RGB(212, 52, 44);
constexpr COLORREF kGreen = RGB(52, 148, 84);
constexpr COLORREF kTeal = RGB(64, 156, 176);
constexpr COLORREF kSun = RGB(248, 204, 72);
constexpr COLORREF kOrange = RGB(232, 132, 40);
constexpr COLORREF kSkin = RGB(246, 208, 168);
constexpr COLORREF kSteel = RGB(176, 188, 208);
constexpr COLORREF kSea = RGB(84, 144, 220);

void envelope(Canvas& c, double left, double top, double right, double bottom)
{
    const double middle = (left + right) / 2, fold = top + (bottom - top) * 0.58;
    c.colors(kPaper, kInk).box(left, top, right, bottom, 1);
    c.colors(Canvas::kNone, kInk, 1)
        .line({{left, bottom}, {middle - 3, fold - 2}})
        .line({{right, bottom}, {middle + 3, fold - 2}});
    c.colors(kWhite, kInk).polygon({{left, top + .5}, {middle, fold}, {right, top + .5}});
}

void sheet(Canvas& c, double left, double top, double right, double bottom)
{
    c.colors(kPaper, kInk)
        .polygon(
            {{left, top}, {right - 5, top}, {right, top + 5}, {right, bottom}, {left, bottom}});
    c.colors(kSteel, kInk, 1).polygon({{right - 5, top}, {right - 5, top + 5}, {right, top + 5}});
    c.colors(Canvas::kNone, kSteel, 1);
    for (double y = top + 8; y < bottom - 2; y += 4)
        c.line({{left + 3, y}, {right - 3, y}});
}

void pencil(Canvas& c)
{
    c.colors(kSun, kInk, 1).polygon({{26, 4}, {30, 8}, {17, 23}, {12, 19}});
    c.colors(kSkin, kInk, 1).polygon({{12, 19}, {17, 23}, {10, 27}});
    c.colors(kInk, Canvas::kNone).polygon({{11, 24}, {12.6, 25.6}, {10, 27}});
    c.colors(kRed, kInk, 1).polygon({{26, 4}, {28, 2}, {31.5, 5.5}, {30, 8}});
}

void person(Canvas& c, double x, double y, double size, COLORREF shirt)
{
    c.colors(shirt, kInk).ellipse(x - 7 * size, y + 5 * size, x + 7 * size, y + 25 * size);
    c.colors(kSkin, kInk).circle(x, y, 5.5 * size);
}

void bubble(Canvas& c, double left, double top, double right, double bottom, COLORREF fill,
            bool tailLeft)
{
    c.colors(fill, kInk).box(left, top, right, bottom, 4);
    const double x = tailLeft ? left + 5 : right - 5, out = tailLeft ? -3 : 3;
    c.colors(fill, kInk)
        .polygon({{x - 2, bottom - .6}, {x + out, bottom + 5}, {x + 3, bottom - .6}});
    c.colors(fill, Canvas::kNone).box(x - 2, bottom - 2.5, x + 3.4, bottom - .4);
}

void arrow(Canvas& c, bool left, COLORREF fill)
{
    const auto x = [&](double value) { return left ? value : 32 - value; };
    c.colors(fill, kInk)
        .polygon({{x(3), 15},
                  {x(14), 5},
                  {x(14), 11},
                  {x(24), 12},
                  {x(29), 26},
                  {x(22), 19},
                  {x(14), 19},
                  {x(14), 25}});
}

void straightArrow(Canvas& c, bool left)
{
    const auto x = [&](double value) { return left ? value : 32 - value; };
    c.colors(kGreen, kInk)
        .polygon({{x(4), 16},
                  {x(15), 6},
                  {x(15), 12},
                  {x(28), 12},
                  {x(28), 20},
                  {x(15), 20},
                  {x(15), 26}});
}

void star(Canvas& c, double x, double y, double r, COLORREF fill)
{
    c.colors(fill, kInk)
        .polygon({{x, y - r},
                  {x + .26 * r, y - .32 * r},
                  {x + .95 * r, y - .31 * r},
                  {x + .42 * r, y + .14 * r},
                  {x + .59 * r, y + .81 * r},
                  {x, y + .42 * r},
                  {x - .59 * r, y + .81 * r},
                  {x - .42 * r, y + .14 * r},
                  {x - .95 * r, y - .31 * r},
                  {x - .26 * r, y - .32 * r}});
}

void globe(Canvas& c, double x, double y, double r)
{
    c.colors(kSea, kInk).circle(x, y, r);
    c.colors(kGreen, Canvas::kNone)
        .polygon({{x - .6 * r, y - .6 * r},
                  {x, y - .75 * r},
                  {x + .1 * r, y - .2 * r},
                  {x - .3 * r, y + .1 * r},
                  {x - .7 * r, y - .1 * r}})
        .polygon({{x + .1 * r, y + .1 * r},
                  {x + .6 * r, y},
                  {x + .5 * r, y + .5 * r},
                  {x + .15 * r, y + .75 * r}});
    c.colors(Canvas::kNone, RGB(220, 236, 255), .7)
        .ellipse(x - .5 * r, y - r, x + .5 * r, y + r)
        .line({{x - r, y}, {x + r, y}});
    c.colors(Canvas::kNone, kInk).circle(x, y, r);
}

/// The stand-in's own emblem: a sun that rises over the sea.
void emblem(Canvas& c)
{
    c.colors(RGB(24, 60, 136), kInk, .8).circle(16, 16, 15);
    c.colors(kSun, Canvas::kNone).circle(16, 18, 7);
    c.colors(Canvas::kNone, kSun, 1.4)
        .line({{16, 8}, {16, 4}})
        .line({{9, 11}, {6, 8}})
        .line({{23, 11}, {26, 8}})
        .line({{6.4, 17}, {3, 16}})
        .line({{25.6, 17}, {29, 16}});
    c.colors(kSea, Canvas::kNone)
        .polygon({{2.6, 20},
                  {8, 18.6},
                  {13, 20.4},
                  {19, 18.6},
                  {24, 20.4},
                  {29.4, 19},
                  {27, 25},
                  {21, 30},
                  {11, 30},
                  {5, 26}});
    c.colors(Canvas::kNone, RGB(200, 224, 255), 1)
        .line({{8, 24}, {13, 23}, {18, 24.4}, {24, 23.2}})
        .line({{11, 27.5}, {16, 26.6}, {21, 27.6}});
}

void office(Canvas& c, Picture picture)
{
    switch (picture) {
    case Picture::mailRead:
        envelope(c, 3, 8, 29, 26);
        c.colors(kRed, kInk, 1).circle(16, 19, 3);
        break;
    case Picture::mailWrite:
        sheet(c, 4, 5, 24, 30);
        pencil(c);
        break;
    case Picture::mailCenter:
        c.colors(RGB(132, 92, 60), kInk, 1).box(14, 20, 18, 31);
        c.colors(kTeal, kInk).box(3, 8, 29, 21, 6);
        c.colors(kInk, Canvas::kNone).box(6, 12, 15, 14.4, 1);
        c.colors(kRed, kInk, 1).polygon({{23, 13}, {23, 2}, {30, 2}, {30, 6}, {25, 6}, {25, 13}});
        break;
    case Picture::printer:
        c.colors(kPaper, kInk).box(9, 3, 23, 14);
        c.colors(kSteel, kInk).box(3, 12, 29, 25, 2);
        c.colors(kPaper, kInk).box(8, 20, 24, 30);
        c.colors(Canvas::kNone, kSteel, 1).line({{11, 24}, {21, 24}}).line({{11, 27}, {21, 27}});
        c.colors(kGreen, Canvas::kNone).circle(25.5, 15.5, 1.4);
        break;
    case Picture::files:
        c.colors(kOrange, kInk).polygon({{3, 7}, {12, 7}, {15, 10}, {28, 10}, {28, 27}, {3, 27}});
        c.colors(kPaper, kInk, 1).box(8, 8, 24, 22);
        c.colors(kSun, kInk).polygon({{3, 27}, {7, 14}, {31, 14}, {28, 27}});
        break;
    case Picture::attach:
        sheet(c, 8, 4, 27, 30);
        c.colors(Canvas::kNone, kSea, 1.8)
            .line({{5, 20}, {5, 7}, {8, 4}, {11, 7}, {11, 19}, {9, 21}, {8, 19}, {8, 9}});
        break;
    case Picture::address:
        c.colors(kSea, kInk).box(6, 3, 27, 29, 2);
        c.colors(kPaper, kInk, 1).box(10, 7, 24, 25, 1);
        person(c, 17, 12, .5, kRed);
        c.colors(kPaper, kPaper, 1).box(11, 20, 23, 24);
        c.colors(Canvas::kNone, kSteel, 1).line({{12, 22}, {22, 22}});
        break;
    case Picture::later:
        c.colors(kWhite, kInk, 1.8).circle(16, 16, 12);
        c.colors(Canvas::kNone, kRed, 1.8).line({{16, 16}, {16, 8}}).line({{16, 16}, {22, 19}});
        break;
    case Picture::send:
        c.colors(kWhite, kInk).polygon({{2, 15}, {30, 4}, {22, 27}, {14, 19}});
        c.colors(kSteel, kInk, 1).polygon({{14, 19}, {30, 4}, {13, 28}});
        break;
    case Picture::trash:
        c.colors(kSteel, kInk).polygon({{7, 10}, {25, 10}, {23, 29}, {9, 29}});
        c.colors(kSteel, kInk).box(5, 7, 27, 11, 1).box(12, 3, 20, 7, 1);
        c.colors(Canvas::kNone, kInk, 1).line({{13, 14}, {13.6, 26}}).line({{19, 14}, {18.4, 26}});
        break;
    default: break;
    }
}

void places(Canvas& c, Picture picture)
{
    switch (picture) {
    case Picture::heart:
        c.colors(kRed, kInk)
            .polygon({{16, 28},
                      {4, 15},
                      {4, 9},
                      {8, 5},
                      {13, 6},
                      {16, 10},
                      {19, 6},
                      {24, 5},
                      {28, 9},
                      {28, 15}});
        c.colors(RGB(255, 196, 188), Canvas::kNone).circle(9.5, 10.5, 2);
        break;
    case Picture::star: star(c, 16, 17, 14, kSun); break;
    case Picture::globe: globe(c, 16, 16, 13); break;
    case Picture::channels:
        c.colors(Canvas::kNone, kInk, 1.4).line({{11, 2}, {16, 8}, {22, 2}});
        c.colors(RGB(132, 92, 60), kInk).box(3, 8, 29, 28, 3);
        c.colors(kSea, kInk, 1).box(6, 11, 22, 25, 2);
        c.colors(kSun, Canvas::kNone).circle(14, 18, 4);
        c.colors(kSteel, Canvas::kNone).circle(25.4, 14, 1.5).circle(25.4, 19, 1.5);
        break;
    case Picture::chart:
        c.colors(kWhite, kInk).box(3, 4, 29, 28, 1);
        c.colors(kSea, Canvas::kNone).box(7, 18, 11, 26).box(13, 14, 17, 26).box(19, 10, 23, 26);
        c.colors(Canvas::kNone, kRed, 1.6).line({{6, 17}, {13, 11}, {18, 13}, {26, 6}});
        break;
    case Picture::find:
        c.colors(Canvas::kNone, RGB(132, 92, 60), 3.4).line({{19, 20}, {28, 29}});
        c.colors(RGB(216, 236, 255), kInk, 1.8).circle(13, 13, 9);
        c.colors(Canvas::kNone, kWhite, 1.6).line({{8, 12}, {10, 9}, {13, 8}});
        break;
    case Picture::door:
        c.colors(RGB(132, 92, 60), kInk).box(7, 2, 25, 30);
        c.colors(RGB(176, 128, 88), kInk, 1).box(10, 5, 15, 14).box(17, 5, 22, 14);
        c.colors(RGB(176, 128, 88), kInk, 1).box(10, 17, 15, 27).box(17, 17, 22, 27);
        c.colors(kSun, kInk, .8).circle(22, 16, 1.3);
        break;
    case Picture::bell:
        c.colors(kOrange, kInk).circle(16, 26, 3);
        c.colors(kSun, kInk)
            .polygon({{4, 25},
                      {8, 20},
                      {9, 11},
                      {13, 6},
                      {16, 4},
                      {19, 6},
                      {23, 11},
                      {24, 20},
                      {28, 25}});
        break;
    case Picture::phone:
        c.colors(kRed, kInk)
            .polygon({{3, 9},
                      {9, 4},
                      {23, 4},
                      {29, 9},
                      {27, 14},
                      {22, 12},
                      {22, 9},
                      {10, 9},
                      {10, 12},
                      {5, 14}});
        c.colors(kRed, kInk).polygon({{11, 12}, {21, 12}, {27, 27}, {5, 27}});
        c.colors(kWhite, kInk, 1).circle(16, 20, 4.4);
        break;
    case Picture::wrench:
        c.colors(kSteel, kInk)
            .polygon({{20, 9},
                      {24, 3},
                      {28, 4},
                      {25, 8},
                      {28, 11},
                      {31, 8},
                      {31, 13},
                      {25, 16},
                      {10, 30},
                      {5, 30},
                      {4, 26}});
        break;
    case Picture::key:
        c.colors(kSun, kInk).box(14, 13, 30, 18).box(23, 17, 26, 23).circle(9, 16, 7);
        c.colors(kWhite, kInk, 1).circle(8, 16, 2.4);
        break;
    case Picture::emblem: emblem(c); break;
    default: break;
    }
}

void talk(Canvas& c, Picture picture)
{
    switch (picture) {
    case Picture::people:
        person(c, 21, 10, .95, kTeal);
        person(c, 11, 14, .95, kRed);
        break;
    case Picture::person: person(c, 16, 10, 1.15, kSea); break;
    case Picture::chat:
        bubble(c, 11, 3, 30, 15, kSun, false);
        bubble(c, 2, 11, 21, 24, kWhite, true);
        c.colors(Canvas::kNone, kSteel, 1.4).line({{6, 16}, {17, 16}}).line({{6, 20}, {14, 20}});
        break;
    case Picture::smile:
        c.colors(kSun, kInk).circle(16, 16, 12);
        c.colors(kInk, Canvas::kNone).circle(11.5, 13, 1.9).circle(20.5, 13, 1.9);
        c.colors(Canvas::kNone, kInk, 1.8)
            .line({{9, 19}, {11.5, 22.5}, {16, 24}, {20.5, 22.5}, {23, 19}});
        break;
    case Picture::reply: arrow(c, true, kSea); break;
    case Picture::forward: arrow(c, false, kGreen); break;
    case Picture::back: straightArrow(c, true); break;
    case Picture::next: straightArrow(c, false); break;
    case Picture::cancel:
    case Picture::stop:
        c.colors(kRed, kInk).circle(16, 16, 12.5);
        c.colors(Canvas::kNone, kWhite, 3.2).line({{11, 11}, {21, 21}}).line({{21, 11}, {11, 21}});
        break;
    default: break;
    }
}

void letters(Canvas& c, Picture picture)
{
    switch (picture) {
    case Picture::bold: c.letter(L'B', 26, 16, 25, kInk); break;
    case Picture::italic: c.letter(L'I', 26, 16, 25, kInk, false, true); break;
    case Picture::underline:
        c.letter(L'U', 22, 16, 22, kInk, false);
        c.colors(Canvas::kNone, kInk, 2).line({{7, 28}, {25, 28}});
        break;
    case Picture::colors:
        c.letter(L'A', 22, 16, 21, kInk);
        c.colors(kRed, Canvas::kNone).box(5, 24, 12, 30);
        c.colors(kGreen, Canvas::kNone).box(12, 24, 20, 30);
        c.colors(kSea, Canvas::kNone).box(20, 24, 27, 30);
        break;
    case Picture::bigger:
        c.letter(L'A', 27, 13, 26, kInk);
        c.colors(kGreen, Canvas::kNone).polygon({{26, 6}, {30, 12}, {22, 12}});
        break;
    case Picture::smaller:
        c.letter(L'A', 19, 12, 26, kInk);
        c.colors(kRed, Canvas::kNone).polygon({{26, 12}, {30, 6}, {22, 6}});
        break;
    case Picture::link:
        c.colors(Canvas::kNone, kSea, 2.6).box(4, 11, 18, 20, 4).box(14, 13, 28, 22, 4);
        break;
    case Picture::image:
        c.colors(RGB(200, 226, 255), kInk).box(3, 5, 29, 27);
        c.colors(kSun, Canvas::kNone).circle(23, 11, 3);
        c.colors(kGreen, Canvas::kNone).polygon({{4, 26}, {12, 13}, {18, 21}, {22, 17}, {28, 26}});
        break;
    case Picture::spell:
        c.letter(L'a', 18, 8, 16, kInk).letter(L'b', 18, 18, 16, kInk);
        c.colors(Canvas::kNone, kGreen, 3).line({{9, 23}, {14, 28}, {26, 17}});
        break;
    default: break;
    }
}

} // namespace

void drawPicture(HDC dc, const RECT& area, Picture picture)
{
    Canvas canvas(dc, area);
    office(canvas, picture);
    places(canvas, picture);
    talk(canvas, picture);
    letters(canvas, picture);
}

} // namespace aolhost
