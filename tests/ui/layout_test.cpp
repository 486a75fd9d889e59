#include "ui/Layout.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {
struct Thing : Placeable {
    explicit Thing(Size s) : size(s) {}
    Size preferredSize() const override { return size; }
    void place(const Rect& where) override { at = where; }
    bool takesSpace() const override { return shown; }
    Size size;
    Rect at;
    bool shown = true;
};
} // namespace

TEST_CASE("a column stacks its children with gaps and stretches them across")
{
    Thing a({50, 10}), b({80, 20});
    const Box box = rows({a, b}, 7).margins(11);
    CHECK(box.preferredSize() == Size{80 + 22, 10 + 7 + 20 + 22});
    box.arrange({0, 0, 200, 100});
    CHECK(a.at == Rect{11, 11, 189, 21});
    CHECK(b.at == Rect{11, 28, 189, 48});
}

TEST_CASE("what is left over goes to the growing children by weight, to the last pixel")
{
    Thing a({10, 10}), b({10, 10}), c({10, 10});
    columns({grow(a), grow(b, 2), c}, 0).arrange({0, 0, 131, 10});
    CHECK(a.at == Rect{0, 0, 43, 10});
    CHECK(b.at == Rect{43, 0, 121, 10});
    CHECK(c.at == Rect{121, 0, 131, 10});
}

TEST_CASE("with too little room the growing child gives way, never below nothing")
{
    Thing list({100, 100}), button({75, 23});
    const Box box = rows({grow(list), button}, 7);
    box.arrange({0, 0, 100, 60});
    CHECK(list.at.height() == 30);
    CHECK(button.at == Rect{0, 37, 100, 60});
    box.arrange({0, 0, 100, 10});
    CHECK(list.at.height() == 0);
}

TEST_CASE("a hidden control leaves neither room nor gap")
{
    Thing a({10, 10}), hidden({10, 10}), b({10, 10});
    hidden.shown = false;
    const Box box = rows({a, columns({hidden}), hidden, b}, 5);
    CHECK(box.preferredSize() == Size{10, 25});
    box.arrange({0, 0, 10, 25});
    CHECK(b.at == Rect{0, 15, 10, 25});
    CHECK(hidden.at == Rect{});
}

TEST_CASE("buttons of a row get one width and stand at the right end")
{
    Thing ok({75, 23}), cancel({90, 23});
    buttonRow({ok, cancel}).arrange({0, 0, 300, 23});
    CHECK(ok.at == Rect{114, 0, 204, 23});
    CHECK(cancel.at == Rect{210, 0, 300, 23});
    buttonRowCentred({ok, cancel}).arrange({0, 0, 300, 23});
    CHECK(ok.at == Rect{57, 0, 147, 23});
    CHECK(cancel.at == Rect{153, 0, 243, 23});
}

TEST_CASE("alignment across the direction")
{
    Thing label({40, 13}), edit({100, 21});
    columns({Box(label).align(Align::middle), grow(edit)}, 4).arrange({0, 0, 200, 21});
    CHECK(label.at == Rect{0, 4, 40, 17});
    CHECK(edit.at == Rect{44, 0, 200, 21});
    rows({Box(label).align(Align::end)}).arrange({0, 0, 200, 13});
    CHECK(label.at == Rect{160, 0, 200, 13});
    rows({Box(label).align(Align::start)}).arrange({0, 0, 30, 13});
    CHECK(label.at == Rect{0, 0, 30, 13}); // never wider than the room
}

TEST_CASE("a frame stands behind the whole node")
{
    Thing frame({0, 0}), inner({50, 20});
    const Box group = rows({inner}).margins(10, 18, 10, 10).framedBy(frame);
    CHECK(group.preferredSize() == Size{70, 48});
    group.arrange({5, 5, 105, 60});
    CHECK(frame.at == Rect{5, 5, 105, 60});
    CHECK(inner.at == Rect{15, 23, 95, 43});
}

TEST_CASE("least sizes and blanks count")
{
    Thing a({10, 10});
    CHECK(Box(a).atLeast({60, 0}).preferredSize() == Size{60, 10});
    CHECK(rows({a, blank(9), a}, 0).preferredSize() == Size{10, 29});
    CHECK(columns({}).preferredSize() == Size{0, 0});
}
