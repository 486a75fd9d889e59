#include "chat/modIcons.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace velora {
namespace {

struct P {
    double x, y;
};
struct Colour {
    double r, g, b;
};
constexpr Colour rgb(std::uint32_t c)
{
    return {(c >> 16 & 255) / 255.0, (c >> 8 & 255) / 255.0, (c & 255) / 255.0};
}

/// The distance of a point from a shape's edge in units of the 24 x 24 grid, negative inside.
using Shape = std::function<double(P)>;

double length(double x, double y)
{
    return std::sqrt(x * x + y * y);
}

Shape disc(P centre, double radius)
{
    return [=](P p) { return length(p.x - centre.x, p.y - centre.y) - radius; };
}

Shape box(double left, double top, double right, double bottom, double corner)
{
    return [=](P p) {
        const double dx = std::abs(p.x - (left + right) / 2) - (right - left) / 2 + corner;
        const double dy = std::abs(p.y - (top + bottom) / 2) - (bottom - top) / 2 + corner;
        return length(std::max(dx, 0.0), std::max(dy, 0.0)) + std::min(std::max(dx, dy), 0.0)
               - corner;
    };
}

double segmentDistance(P p, P a, P b)
{
    const double bx = b.x - a.x, by = b.y - a.y, px = p.x - a.x, py = p.y - a.y;
    const double along = std::clamp((px * bx + py * by) / (bx * bx + by * by), 0.0, 1.0);
    return length(px - bx * along, py - by * along);
}

/// A line through points with round ends.
Shape stroke(std::vector<P> points, double width)
{
    return [points = std::move(points), width](P p) {
        double nearest = 1e9;
        for (std::size_t i = 0; i + 1 < points.size(); ++i)
            nearest = std::min(nearest, segmentDistance(p, points[i], points[i + 1]));
        return nearest - width / 2;
    };
}

Shape polygon(std::vector<P> points, double corner = 0)
{
    return [points = std::move(points), corner](P p) {
        double nearest = 1e9;
        bool inside = false;
        for (std::size_t i = 0, j = points.size() - 1; i < points.size(); j = i++) {
            const P a = points[i], b = points[j];
            nearest = std::min(nearest, segmentDistance(p, a, b));
            if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
                inside = !inside;
        }
        return (inside ? -nearest : nearest) - corner;
    };
}

/// Part of a ring; angles in degrees, 0 to the right, 90 down.
Shape arc(P centre, double radius, double width, double from, double to)
{
    std::vector<P> points;
    for (int i = 0; i <= 24; ++i) {
        const double angle = (from + (to - from) * i / 24) * 3.14159265358979 / 180;
        points.push_back(
            {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)});
    }
    return stroke(std::move(points), width);
}

Shape both(Shape a, Shape b)
{
    return [a = std::move(a), b = std::move(b)](P p) { return std::min(a(p), b(p)); };
}
Shape without(Shape a, Shape b)
{
    return [a = std::move(a), b = std::move(b)](P p) { return std::max(a(p), -b(p)); };
}

class Canvas {
public:
    explicit Canvas(int size) : size_(size), scale_(24.0 / size), pixels_(size * size) {}

    /// `stops` are the colours from the top of the icon to its bottom (or from left to right).
    void fill(const Shape& shape, const std::vector<Colour>& stops, bool across = false)
    {
        for (int y = 0; y < size_; ++y)
            for (int x = 0; x < size_; ++x) {
                const P p{(x + 0.5) * scale_, (y + 0.5) * scale_};
                const double coverage = std::clamp(0.5 - shape(p) / scale_, 0.0, 1.0);
                if (coverage > 0)
                    blend(pixels_[y * size_ + x], at(stops, (across ? p.x : p.y) / 24), coverage);
            }
    }

    /// The shape with a thin darker line around it.
    void outlined(const Shape& shape, const std::vector<Colour>& stops, Colour line)
    {
        // In small sizes a full line would leave nothing of the fill.
        const double width = std::max(0.55, std::min(1.0, 20.0 / size_));
        fill([&](P p) { return shape(p) - width * 0.5; }, {line});
        fill([&](P p) { return shape(p) + width * 0.5; }, stops);
    }

    std::vector<std::uint32_t> pixels() const
    {
        std::vector<std::uint32_t> out;
        out.reserve(pixels_.size());
        for (const Pixel& pixel : pixels_)
            out.push_back(byte(pixel.alpha) << 24 | byte(pixel.colour.r) << 16
                          | byte(pixel.colour.g) << 8 | byte(pixel.colour.b));
        return out;
    }

private:
    struct Pixel {
        Colour colour{0, 0, 0};
        double alpha = 0;
    };

    static std::uint32_t byte(double value)
    {
        return static_cast<std::uint32_t>(std::lrint(std::clamp(value, 0.0, 1.0) * 255));
    }

    static Colour mix(Colour a, Colour b, double t)
    {
        return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
    }

    static Colour at(const std::vector<Colour>& stops, double where)
    {
        const double place = std::clamp(where, 0.0, 1.0) * (static_cast<double>(stops.size()) - 1);
        const std::size_t first = std::min(static_cast<std::size_t>(place), stops.size() - 1);
        const std::size_t second = std::min(first + 1, stops.size() - 1);
        return mix(stops[first], stops[second], place - static_cast<double>(first));
    }

    static void blend(Pixel& under, Colour colour, double alpha)
    {
        const double total = alpha + under.alpha * (1 - alpha);
        under.colour = mix(under.colour, colour, alpha / total);
        under.alpha = total;
    }

    int size_;
    double scale_;
    std::vector<Pixel> pixels_;
};

constexpr Colour kWhite = rgb(0xFFFFFF);
constexpr Colour kSteel = rgb(0x4A5A70);

void drawWavs(Canvas& c)
{
    const Colour line = rgb(0x1F4E8C);
    c.outlined(polygon({{2.5, 9}, {6.5, 9}, {12, 4}, {12, 20}, {6.5, 15}, {2.5, 15}}, 0.6),
               {rgb(0x8FC4F7), rgb(0x2E7BD6)}, line);
    const P mouth{11.5, 12};
    c.fill(arc(mouth, 4.6, 1.9, -42, 42), {rgb(0x3E8EE0)});
    c.fill(arc(mouth, 8, 1.9, -46, 46), {rgb(0x6AAEF0)});
    c.fill(arc(mouth, 11.2, 1.7, -46, 46), {rgb(0xA3CFF8)});
}

void drawIMs(Canvas& c)
{
    const Shape back =
        both(box(9, 8.5, 22.5, 17.5, 3.5), polygon({{17, 16}, {21, 16}, {20.5, 21.5}}));
    c.outlined(back, {rgb(0xD8F3C2), rgb(0x6DBB45)}, rgb(0x3B7A1E));
    const Shape front =
        both(box(1.5, 2.5, 16, 12.5, 3.5), polygon({{4, 11}, {8.5, 11}, {4, 16.5}}));
    c.outlined(front, {rgb(0xFFF3B8), rgb(0xFFC93C)}, rgb(0x9A6A00));
    for (const double x : {5.0, 8.8, 12.6})
        c.fill(disc({x, 7.5}, 1.15), {rgb(0x8A5E00)});
}

void drawMail(Canvas& c)
{
    const Colour line = rgb(0x7A5A2A);
    c.outlined(box(1.8, 5, 22.2, 19.5, 1.6), {rgb(0xFFFFFF), rgb(0xF3DDB0)}, line);
    c.fill(stroke({{3, 18.2}, {9.6, 12.4}}, 0.9), {rgb(0xC9A565)});
    c.fill(stroke({{21, 18.2}, {14.4, 12.4}}, 0.9), {rgb(0xC9A565)});
    c.fill(stroke({{2.6, 6.4}, {12, 14}, {21.4, 6.4}}, 1.2), {line});
    c.outlined(disc({18.8, 17.6}, 3.1), {rgb(0xFF8A7A), rgb(0xD8301E)}, rgb(0x8A1A0E));
}

void bust(Canvas& c, P head, double size, const std::vector<Colour>& shirt, Colour line)
{
    const double wide = size * 1.75, top = head.y + size * 1.35;
    c.outlined(without(box(head.x - wide, top, head.x + wide, top + size * 4, size * 1.5),
                       box(-20, 21.6, 44, 44, 0)),
               shirt, line);
    c.outlined(disc(head, size), {rgb(0xFFE3C4), rgb(0xF6BF8B)}, rgb(0x8A5A2C));
}

void drawPeople(Canvas& c)
{
    bust(c, {16.6, 6.6}, 3.3, {rgb(0xFFC58A), rgb(0xE8731A)}, rgb(0x92420A));
    bust(c, {8.2, 9}, 3.7, {rgb(0x9CC9F8), rgb(0x2F78CF)}, rgb(0x1D4A85));
}

void quoteMark(Canvas& c, double x)
{
    const Shape mark = both(disc({x, 14}, 4), arc({x + 2.6, 14.2}, 6.2, 2.4, 182, 262));
    c.outlined(mark, {rgb(0xD5B3F5), rgb(0x7A3FC4)}, rgb(0x4A2380));
}

void drawQuotes(Canvas& c)
{
    quoteMark(c, 6.4);
    quoteMark(c, 17);
}

void drawHugs(Canvas& c)
{
    const Shape heart =
        both(both(disc({7.6, 8.9}, 5), disc({16.4, 8.9}, 5)),
             polygon({{3.6, 11.6}, {7.6, 8}, {12, 9.6}, {16.4, 8}, {20.4, 11.6}, {12, 20.8}}, 0.5));
    c.outlined(heart, {rgb(0xFF9DB0), rgb(0xDC1F45)}, rgb(0x8C0F28));
    c.fill(arc({8, 9}, 2.9, 1.3, 185, 265), {rgb(0xFFE3E8)});
}

void drawFade(Canvas& c)
{
    const Shape letter =
        both(both(stroke({{4.2, 20}, {12, 3.8}}, 4), stroke({{12, 3.8}, {19.8, 20}}, 4)),
             stroke({{8, 14.6}, {16, 14.6}}, 3.2));
    c.fill([&](P p) { return letter(p) - 0.45; }, {rgb(0x4A3A6A)});
    c.fill(
        [&](P p) { return letter(p) + 0.45; },
        {rgb(0xFF3B30), rgb(0xFF9500), rgb(0xFFD60A), rgb(0x34C759), rgb(0x2E9BFF), rgb(0xAF52DE)},
        true);
}

/// A lock; open, its shackle stands out at the right.
void drawLock(Canvas& c, bool open)
{
    const Colour line = rgb(0x7F5A00);
    const double body = open ? -2.4 : 0.0, top = open ? 7.0 : 8.6, side = open ? 16.2 : 12.0;
    const Shape shackle =
        both(arc({side, top}, 4.7, 2.3, 180, 360),
             both(stroke({{side - 4.7, top}, {side - 4.7, 12}}, 2.3),
                  stroke({{side + 4.7, top}, {side + 4.7, open ? 10.0 : 12.0}}, 2.3)));
    c.outlined(shackle, {rgb(0xE3E9F0), rgb(0x9FADBD)}, kSteel);
    c.outlined(box(4.2 + body, 10.6, 19.8 + body, 21.4, 2), {rgb(0xFFE38A), rgb(0xF0A818)}, line);
    c.fill(both(disc({12 + body, 15}, 1.7), stroke({{12 + body, 15}, {12 + body, 18.4}}, 1.5)),
           {rgb(0x6A4A00)});
}

void drawMenu(Canvas& c)
{
    Shape gear = disc({12, 12}, 7);
    for (int i = 0; i < 8; ++i) {
        const double angle = i * 3.14159265358979 / 4;
        gear = both(gear, stroke({{12 + 6 * std::cos(angle), 12 + 6 * std::sin(angle)},
                                  {12 + 9.2 * std::cos(angle), 12 + 9.2 * std::sin(angle)}},
                                 3.2));
    }
    c.outlined(without(gear, disc({12, 12}, 3.1)), {rgb(0xDCE4EE), rgb(0x8496AC)}, kSteel);
}

void drawPlus(Canvas& c)
{
    c.outlined(disc({12, 12}, 9.6), {rgb(0xB4EBA0), rgb(0x3BA32A)}, rgb(0x226A16));
    c.fill(both(stroke({{7, 12}, {17, 12}}, 3), stroke({{12, 7}, {12, 17}}, 3)), {kWhite});
}

void drawPlay(Canvas& c)
{
    c.outlined(polygon({{7, 4.5}, {19.5, 12}, {7, 19.5}}, 1.2), {rgb(0xA6E594), rgb(0x2F9A22)},
               rgb(0x1F6414));
}

void drawStop(Canvas& c)
{
    c.outlined(box(5, 5, 19, 19, 2.4), {rgb(0xFF9F92), rgb(0xD2321E)}, rgb(0x861B0E));
}

void drawSend(Canvas& c)
{
    const Colour line = rgb(0x1F4E8C);
    c.outlined(polygon({{2, 11}, {22, 3}, {15, 21.5}, {10.5, 14}}, 0.5),
               {rgb(0xA9D3FA), rgb(0x2E7BD6)}, line);
    c.fill(stroke({{10.5, 14}, {20.6, 4.2}}, 1.1), {line});
}

/// A note; the kinds of sounds differ in its colour.
void drawNote(Canvas& c, Colour light, Colour dark, Colour line)
{
    const Shape note =
        both(both(disc({7, 18}, 3.4), disc({17, 16}, 3.4)),
             both(both(stroke({{9.6, 18}, {9.6, 6}}, 1.9), stroke({{19.6, 16}, {19.6, 4}}, 1.9)),
                  stroke({{9.6, 6.4}, {19.6, 4.4}}, 3)));
    c.outlined(note, {light, dark}, line);
}

void drawLocate(Canvas& c)
{
    c.outlined(stroke({{14.6, 14.6}, {20, 20}}, 3.6), {rgb(0xD9A86A), rgb(0x9A6424)},
               rgb(0x5E3A10));
    c.outlined(disc({9.8, 9.8}, 6.8), {rgb(0xE3F1FE), rgb(0x8FC4F7)}, rgb(0x1F4E8C));
    c.fill(arc({9.8, 9.8}, 4.3, 1.4, 185, 265), {kWhite});
}

/// A bell.
void drawNotify(Canvas& c)
{
    const Colour line = rgb(0x8A6208);
    c.outlined(disc({12, 19.6}, 2), {rgb(0xE0A91E)}, line);
    c.outlined(both(both(disc({12, 9.4}, 5.6), box(6.4, 9, 17.6, 16.4, 0.6)),
                    box(3.8, 15.4, 20.2, 18.4, 1.4)),
               {rgb(0xFFEFA0), rgb(0xF0B92A)}, line);
}

/// A card with a portrait.
void drawProfile(Canvas& c)
{
    c.outlined(box(2.4, 4.4, 21.6, 19.6, 1.8), {kWhite, rgb(0xE4ECF6)}, kSteel);
    bust(c, {8, 9.4}, 2.4, {rgb(0x9CC9F8), rgb(0x2F78CF)}, rgb(0x1D4A85));
    for (const double y : {8.6, 12.0, 15.4})
        c.fill(stroke({{14.2, y}, {19, y}}, 1.5), {rgb(0x8FA1B8)});
}

void drawIgnore(Canvas& c)
{
    c.outlined(both(without(disc({12, 12}, 9), disc({12, 12}, 5.8)),
                    stroke({{6.6, 6.6}, {17.4, 17.4}}, 3)),
               {rgb(0xFF8A7A), rgb(0xCE2A18)}, rgb(0x861B0E));
}

/// A sheet of paper with lines of writing.
void sheet(Canvas& c, double left, double top, const std::vector<Colour>& stops, Colour line,
           int lines)
{
    c.outlined(box(left, top, left + 13, top + 16, 1.2), stops, line);
    for (int i = 0; i < lines; ++i)
        c.fill(stroke({{left + 3, top + 4 + 4 * i},
                       {left + (i + 1 < lines ? 10 : 7), top + 4 + 4 * i}},
                      1.4),
               {line});
}

void drawNotes(Canvas& c)
{
    sheet(c, 5, 4, {rgb(0xFFF8BE), rgb(0xF5DD62)}, rgb(0xA07C10), 3);
}

void drawCopy(Canvas& c)
{
    sheet(c, 2.6, 2.2, {kWhite, rgb(0xE4ECF6)}, kSteel, 3);
    sheet(c, 8.4, 5.8, {kWhite, rgb(0xD3E4F8)}, rgb(0x1F4E8C), 3);
}

void drawLog(Canvas& c)
{
    c.outlined(box(4, 3, 20, 21, 1.8), {rgb(0xA8D8A0), rgb(0x3E9A48)}, rgb(0x1F5E28));
    c.outlined(box(8, 3, 20, 21, 1.2), {kWhite, rgb(0xEAF2E6)}, rgb(0x1F5E28));
    for (const double y : {8.0, 12.0, 16.0})
        c.fill(stroke({{11, y}, {17, y}}, 1.4), {rgb(0x7F9A84)});
}

/// A bubble with an arrow that goes back.
void drawAnswer(Canvas& c)
{
    c.outlined(both(box(2, 3, 22, 16.6, 3.4), polygon({{6, 15}, {12, 15}, {6, 21.6}}, 0.4)),
               {rgb(0xC4EEB6), rgb(0x4FAE42)}, rgb(0x1F6414));
    c.fill(both(stroke({{17.4, 12.6}, {17.4, 9.6}, {8, 9.6}}, 2),
                polygon({{9.6, 5.6}, {9.6, 13.6}, {5, 9.6}})),
           {kWhite});
}

/// An arrow that goes back, and a quotation mark.
void drawReplyQuote(Canvas& c)
{
    const Shape arrow = both(stroke({{8, 6.6}, {15, 6.6}, {19.4, 9}, {21, 13}}, 3.4),
                             polygon({{9, 1.2}, {9, 12}, {2, 6.6}}, 0.4));
    c.outlined(arrow, {rgb(0xA6E594), rgb(0x2F9A22)}, rgb(0x1F6414));
    const auto mark = [](double x) {
        return both(disc({x, 18.6}, 2.5), arc({x + 1.9, 18.4}, 4.2, 1.7, 182, 262));
    };
    c.outlined(both(mark(5), mark(12.6)), {rgb(0xB98AE6), rgb(0x7A3FC4)}, rgb(0x4A2380));
}

/// A speaking-trumpet.
void drawAdvertise(Canvas& c)
{
    const Colour line = rgb(0x92420A);
    c.outlined(polygon({{6, 14}, {10.6, 13.4}, {12.4, 21}, {8.4, 21}}, 0.5), {rgb(0xD0D8E2)},
               kSteel);
    c.outlined(
        polygon({{2.6, 8.8}, {6.4, 8.4}, {18.6, 2.6}, {18.6, 19.4}, {6.4, 14.6}, {2.6, 14}}, 0.6),
        {rgb(0xFFC58A), rgb(0xE8731A)}, line);
    c.fill(arc({16.4, 11}, 5.4, 1.8, -50, 50), {rgb(0xE8731A)});
}

} // namespace

std::vector<std::uint32_t> drawIcon(IconId id, int size)
{
    Canvas c(size);
    switch (id) {
    case IconId::wavs: drawWavs(c); break;
    case IconId::ims: drawIMs(c); break;
    case IconId::mail: drawMail(c); break;
    case IconId::people: drawPeople(c); break;
    case IconId::quotes: drawQuotes(c); break;
    case IconId::hugs: drawHugs(c); break;
    case IconId::fade: drawFade(c); break;
    case IconId::encrypt: drawLock(c, false); break;
    case IconId::menu: drawMenu(c); break;
    case IconId::plus: drawPlus(c); break;
    case IconId::play: drawPlay(c); break;
    case IconId::stop: drawStop(c); break;
    case IconId::send: drawSend(c); break;
    case IconId::soundWav: drawNote(c, rgb(0x8FC4F7), rgb(0x2E7BD6), rgb(0x1F4E8C)); break;
    case IconId::soundMid: drawNote(c, rgb(0xD5B3F5), rgb(0x7A3FC4), rgb(0x4A2380)); break;
    case IconId::soundMp3: drawNote(c, rgb(0xFFC58A), rgb(0xE8731A), rgb(0x92420A)); break;
    case IconId::locate: drawLocate(c); break;
    case IconId::notify: drawNotify(c); break;
    case IconId::profile: drawProfile(c); break;
    case IconId::ignore: drawIgnore(c); break;
    case IconId::notes: drawNotes(c); break;
    case IconId::copy: drawCopy(c); break;
    case IconId::log: drawLog(c); break;
    case IconId::answer: drawAnswer(c); break;
    case IconId::replyQuote: drawReplyQuote(c); break;
    case IconId::decrypt: drawLock(c, true); break;
    case IconId::advertise: drawAdvertise(c); break;
    case IconId::count: break;
    }
    return c.pixels();
}

} // namespace velora
