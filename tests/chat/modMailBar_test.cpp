#include "chat/modMailBar.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

/// A mail of 400 x 300 with a sizing border of 4, a title bar of 18 and its line, three boxes.
TitledWindow mailAt(int left, int top, int width = 400)
{
    return {rectOf({left, top}, {width, 300}), rectOf({left + 4, top + 23}, {width - 8, 273}), 3,
            18};
}

} // namespace

TEST_CASE("the kind of a window decides its buttons")
{
    using enum MailButton;
    const struct {
        MailTraits traits;
        MailKind kind;
        std::vector<MailButton> buttons;
    } cases[] = {
        {{.read = true}, MailKind::mail, {reply, decrypt}},
        {{.read = true, .standalone = true}, MailKind::board, {reply}},
        {{.writes = true, .fields = 3}, MailKind::writeMail, {fade, encrypt, advertise, tools}},
        {{.writes = true, .fields = 3, .reply = true},
         MailKind::writeMail,
         {fade, encrypt, advertise, tools}},
        {{.writes = true, .fields = 1, .reply = true}, MailKind::boardReply, {fade}},
        {{.writes = true, .fields = 1}, MailKind::none, {}}, // an instant message is begun
        {{.reply = true}, MailKind::none, {}},
    };
    for (const auto& c : cases) {
        CAPTURE(&c - cases);
        CHECK(mailKind(c.traits) == c.kind);
        const auto buttons = mailButtons(c.kind);
        CHECK(std::vector<MailButton>(buttons.begin(), buttons.end()) == c.buttons);
    }
}

TEST_CASE("the bar stands in the title bar, before the boxes and behind the title's beginning")
{
    constexpr Size bar{82, 18};
    const Rect line = titleLine(mailAt(100, 50));
    const auto place = mailBarPlace(line, {}, bar);
    REQUIRE(place);
    // 500 - border - three boxes - a little room.
    CHECK(*place == rectOf({500 - 4 - 54 - 4 - 82, 54}, bar));
    const auto moved = mailBarPlace(titleLine(mailAt(130, -60)), {}, bar);
    CHECK(moved == rectOf({place->left + 30, place->top - 110}, bar));
    // As narrow as it may be, and narrower.
    const int least = 400 - (place->left - line.left);
    CHECK(mailBarPlace(titleLine(mailAt(100, 50, least)), {}, bar)->left == line.left);
    CHECK_FALSE(mailBarPlace(titleLine(mailAt(100, 50, least - 1)), {}, bar));
}

TEST_CASE("what lies in the line is not covered")
{
    constexpr Rect line{0, 0, 600, 20};
    constexpr Size bar{82, 18};
    const auto left = [&](std::vector<Rect> inTheWay) {
        const auto place = mailBarPlace(line, std::move(inTheWay), bar);
        return place ? place->left : -1;
    };
    CHECK(left({}) == 518);
    CHECK(left({{400, 0, 520, 30}}) == 314);                    // at its left
    CHECK(left({{400, 0, 510, 30}}) == 518);                    // there is room at its right
    CHECK(left({{400, 30, 520, 60}}) == 518);                   // below the line
    CHECK(left({{300, 0, 420, 30}, {400, 0, 550, 20}}) == 214); // each in turn
    CHECK(left({{60, 0, 120, 20}, {190, 0, 560, 20}}) == -1);   // no gap is wide enough
    CHECK_FALSE(mailBarPlace({}, {}, bar));
}

TEST_CASE("a mail with the line about Velora is known by it")
{
    CHECK(holdsAdvertisement(L"Dear Rose,\r\n" + mailAdvertisement()));
    CHECK_FALSE(holdsAdvertisement(L"Written with love"));
}
