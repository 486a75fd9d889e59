// The rules that run inside AOL, without AOL: filter, key presses, line ends, captions, settling.
#include "hook/agent/filter.h"
#include "hook/agent/settle.h"
#include "hook/agent/text.h"

#include <doctest/doctest.h>
#include <string>
#include <vector>

using namespace velora;
using namespace velora::agent;

namespace {

constexpr std::uint32_t kKeyDown = 0x100, kKeyUp = 0x101, kChar = 0x102, kSysKeyDown = 0x104;
constexpr std::uint32_t kLeftDown = 0x201, kLeftUp = 0x202;

wire::Slot slotWith(std::uint32_t mode)
{
    wire::Slot slot = {};
    slot.window = 0x1234;
    slot.cookie = 7;
    slot.ruleCount = 1;
    slot.rules[0] = {kKeyDown, 13, 13, mode};
    return slot;
}

} // namespace

TEST_CASE("a rule holds for its message and its range of wParam, ends included")
{
    const wire::Rule rule{kKeyDown, 8, 13, wire::kVerdict};
    CHECK(holds(rule, kKeyDown, 8));
    CHECK(holds(rule, kKeyDown, 13));
    CHECK_FALSE(holds(rule, kKeyDown, 7));
    CHECK_FALSE(holds(rule, kKeyDown, 14));
    CHECK_FALSE(holds(rule, kChar, 13));
    CHECK(holds({5143, 0, 0xFFFFFFFF, wire::kPostedAfter}, 5143, 0xFFFFFFFF));
}

TEST_CASE("a slot that is not sound is not taken")
{
    CHECK(sound(slotWith(wire::kVerdict)));
    CHECK(sound(slotWith(wire::kPostedBefore)));
    CHECK(sound(slotWith(wire::kPostedAfter | wire::kCoalesce)));
    CHECK_FALSE(sound(slotWith(0)));
    CHECK_FALSE(sound(slotWith(wire::kVerdict | wire::kPostedAfter)));
    CHECK_FALSE(sound(slotWith(16)));
    for (const auto spoil :
         {+[](wire::Slot& s) { s.window = 0; }, +[](wire::Slot& s) { s.cookie = 0; },
          +[](wire::Slot& s) { s.ruleCount = wire::kRulesPerSlot + 1; }}) {
        wire::Slot slot = slotWith(wire::kVerdict);
        spoil(slot);
        CHECK_FALSE(sound(slot));
    }
}

TEST_CASE("answers carry the verdict and the event code")
{
    for (const bool swallow : {false, true})
        for (const int code : {0, 1, 6, 255}) {
            const std::uint32_t answer = wire::answer(swallow, code);
            CHECK(wire::swallows(answer) == swallow);
            CHECK(wire::eventCode(answer) == code);
        }
    CHECK(wire::answer(false, 0) == 0);
    CHECK(wire::eventCode(wire::kSwallow | 0x500) == 0);
}

TEST_CASE("what follows a press that was taken from AOL goes with it")
{
    /// A message to AOL's box: of the user, or the program's own; a press may be `taken`.
    struct Event {
        std::uint32_t message, wParam;
        bool swallowed;
        bool taken = false, users = true;
    };
    const struct {
        const char* what;
        std::vector<Event> events;
    } cases[] = {
        {"a key takes its character and its release along, once",
         {{kKeyDown, 13, false, true},
          {kChar, 13, true},
          {kChar, 13, false},
          {kKeyUp, 13, true},
          {kKeyUp, 13, false}}},
        {"a posted press and release overtake the character",
         {{kKeyDown, 13, false, true},
          {kKeyUp, 13, true},
          {kChar, 'a', false}, // none of Enter's
          {kChar, 13, true},
          {kKeyDown, 32, false, true},
          {kChar, 13, false},
          {kChar, 32, true},
          {kKeyDown, 65, false, true},
          {kChar, 0xE4, true}}},
        {"the program's own Enter is no part of the user's press",
         {{kKeyDown, 13, false, true}, {kChar, 13, false, false, false}, {kChar, 13, true}}},
        {"a new press ends the old one; another key's release is its own",
         {{kKeyDown, 13, false, true},
          {kKeyUp, 65, false},
          {kKeyDown, 66, false},
          {kChar, 'b', false},
          {kKeyUp, 13, false}}},
        {"a click takes its release along, and no character",
         {{kLeftDown, 1, false, true},
          {kChar, 'x', false},
          {kLeftUp, 0, true},
          {kLeftUp, 0, false}}},
    };
    for (const auto& c : cases) {
        CAPTURE(c.what);
        PressPair press;
        for (const Event& event : c.events) {
            CAPTURE(&event - c.events.data());
            CHECK(press.next(event.message, event.wParam, event.users).swallow == event.swallowed);
            if (event.taken)
                press.pressed(event.message, event.wParam, 1, true);
        }
    }
}

TEST_CASE("who was asked at the press is not asked again at the character, but at the release")
{
    PressPair press;
    press.next(kSysKeyDown, 13, true);
    press.pressed(kSysKeyDown, 13, 0b101, false);
    const auto character = press.next(kChar, 13, true);
    CHECK_FALSE(character.swallow);
    CHECK(character.asked == 0b101);
    const auto release = press.next(kKeyUp, 13, true);
    CHECK_FALSE(release.swallow);
    CHECK(release.asked == 0);
    // Nobody was asked: nothing is remembered.
    press.next(kKeyDown, 13, true);
    press.pressed(kKeyDown, 13, 0, false);
    CHECK(press.next(kChar, 13, true).asked == 0);
}

TEST_CASE("line ends")
{
    struct Case {
        std::u16string raw;
        bool last, hardEnded;
        int units;
        bool soft;
    };
    const std::vector<Case> cases = {
        {u"text\r", false, false, 4, false},  {u"text\r\n", false, false, 4, false},
        {u"text \r", false, false, 5, false}, // a blank of the line's own
        {u"text\v", false, false, 4, false},  {u"text ", false, false, 4, true},
        {u"text  ", false, false, 5, true}, // one blank is the wrap's
        {u"longword", false, false, 8, true}, {u"text ", true, false, 5, false},
        {u"text ", false, true, 5, false}, // an edit control's
        {u"", false, true, 0, false},         {u"", true, false, 0, false},
        {u"\r", false, false, 0, false},      {u" ", false, false, 0, true},
        {u"\r", true, false, 0, false},
    };
    for (const Case& c : cases) {
        const LineEnd end =
            splitLineEnd(c.raw.data(), static_cast<int>(c.raw.size()), c.last, c.hardEnded);
        CAPTURE(&c - cases.data());
        CHECK(end.units == c.units);
        CHECK(end.softWrapped == c.soft);
    }
}

TEST_CASE("menu captions are compared as the user sees them")
{
    const auto same = [](const char16_t* a, const char16_t* b) { return sameCaption(a, b); };
    CHECK(same(u"&About America Online", u"about america online"));
    CHECK(same(u"E&xit\tAlt+F4", u"Exit"));
    CHECK(same(u"&\xDC"
               u"ber AOL 5.0",
               u"\xFC"
               u"ber aol 5.0"));
    CHECK(same(u"Save && Exit", u"save && exit"));
    CHECK(same(u"at end &", u"at end &"));
    CHECK_FALSE(same(u"Exit", u"Exit all"));
    CHECK_FALSE(same(u"Exit all", u"Exit"));
    CHECK_FALSE(same(u"\xD7", u"\xF7")); // signs, not letters
    CHECK_FALSE(same(u"", u""));         // separators have none
    CHECK_FALSE(same(u"\tAlt", u""));
}

TEST_CASE("a window settles after it was left alone, and is told in any case in the end")
{
    SettleList list;
    CHECK(list.empty());
    CHECK(list.touch(1, 1000));
    CHECK(list.touch(2, 1010));
    CHECK(list.takeSettled(1079, 80) == 0);
    CHECK(list.touch(1, 1079));
    CHECK(list.takeSettled(1090, 80) == 2);
    CHECK(list.takeSettled(1090, 80) == 0);
    CHECK(list.takeSettled(1159, 80) == 1);
    CHECK(list.empty());

    for (std::uint32_t now = 0; now < SettleList::kLongest; now += 50)
        list.touch(3, now);
    CHECK(list.takeSettled(SettleList::kLongest - 1, 80) == 0);
    CHECK(list.takeSettled(SettleList::kLongest, 80) == 3);

    CHECK(list.touch(4, 0xFFFFFFF0)); // the counter wraps
    CHECK(list.takeSettled(0x00000010, 80) == 0);
    CHECK(list.takeSettled(0x00000040, 80) == 4);

    list.touch(5, 0);
    list.remove(5);
    list.remove(99);
    CHECK(list.empty());
}

TEST_CASE("a full list refuses, and keeps what it holds")
{
    SettleList list;
    for (std::uint32_t i = 1; i <= SettleList::kSize; ++i)
        CHECK(list.touch(i, i));
    CHECK_FALSE(list.touch(1000, 70));
    CHECK(list.touch(1, 70));
    std::vector<std::uint32_t> told;
    while (const std::uint32_t window = list.takeSettled(2000, 80))
        told.push_back(window);
    CHECK(told.size() == SettleList::kSize);
}
