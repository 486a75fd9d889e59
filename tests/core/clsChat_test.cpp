#include "core/clsChat.h"

#include "support/chatScript.h"

#include <doctest/doctest.h>

#include <random>

using namespace velora;
using chatscript::Raised;

namespace {

/// A reader on a display that the test writes.
struct Room {
    chatscript::Display display;
    clsChat reader;
    Raised raised;
    int attached = 0;

    explicit Room(std::wstring text = {})
    {
        display.text = std::move(text);
        reader.ChatMsg = [this](std::wstring& name, std::wstring& message) {
            raised.emplace_back(name, message);
        };
        reader.Reattach = [this] { ++attached; };
        reader.Init(std::make_unique<chatscript::DisplayReader>(display));
    }
    /// AOL adds text and gives its notice.
    Raised add(std::wstring_view text)
    {
        display.text += text;
        return notice();
    }
    Raised notice()
    {
        raised.clear();
        display.asked = 0;
        if (reader.CheckChat() == 0)
            reader.HandleChat();
        return raised;
    }
};

std::wstring line(std::wstring_view name, std::wstring_view message)
{
    return L"\r" + std::wstring(name) + L":\t" + std::wstring(message);
}

} // namespace

TEST_CASE("the chat text joins what AOL broke")
{
    CHECK(GetChat({}) == L"");
    CHECK(GetChat({L"ABC:\thi"}) == L"\r\nABC:\thi");
    CHECK(GetChat({L"ABC:\thi", L"there", L"DEF:\tyo", L""}) == L"\r\nABC:\thi there\r\nDEF:\tyo ");
}

TEST_CASE("a display's text falls into lines")
{
    using Lines = std::vector<std::wstring>;
    CHECK(displayLines(L"").empty());
    CHECK(displayLines(L"\r\n\r\n").empty());
    CHECK(displayLines(L"a\rb\r\nc\nd\ve") == Lines{L"a", L"b", L"c", L"d", L"e"});
    CHECK(displayLines(L"\ra\r\rb\r") == Lines{L"", L"a", L"", L"b"});
    CHECK(displayLines(std::wstring_view(L"a\0b\r", 4)) == Lines{L"ab"});
}

TEST_CASE("the section is the last thousand characters")
{
    for (const std::size_t length : {0u, 1u, 999u, 1000u, 1001u, 5000u}) {
        std::wstring text;
        for (std::size_t i = 0; i < length; ++i)
            text += static_cast<wchar_t>(L'a' + i % 26);
        const std::size_t kept = std::min<std::size_t>(length, 1000);
        CHECK(LastSection(text) == text.substr(length - kept));
    }
}

TEST_CASE("lines of a text")
{
    struct Case {
        const wchar_t* text;
        const wchar_t* last;
        std::vector<std::wstring> lines;
    };
    for (const Case& c :
         {Case{L"", L"", {}}, Case{L"one", L"one", {L"one"}},
          Case{L"one\r\ntwo", L"two", {L"one", L"two"}},
          Case{L"\r\none\r\n", L"", {L"", L"one", L""}}, Case{L"a\rxb\r", L"", {L"a", L"xb", L""}},
          Case{L"a\rbc", L"c", {L"a", L"bc"}}, Case{L"a\n", L"a\n", {L"a\n"}}}) {
        CHECK(LastLine(c.text) == c.last);
        REQUIRE(LineCount(c.text) == static_cast<int>(c.lines.size()));
        for (std::size_t i = 0; i < c.lines.size(); ++i)
            CHECK(LineFromString(c.text, static_cast<int>(i) + 1) == c.lines[i]);
        CHECK(LineFromString(c.text, static_cast<int>(c.lines.size()) + 1) == L"");
        CHECK(LineFromString(c.text, 0) == L"");
        CHECK(LineFromString(c.text, -1) == L"");
    }
}

TEST_CASE("a line's screen name ends at the first colon, its message begins after the first tab")
{
    struct Case {
        const wchar_t *line, *name, *message;
    };
    for (const Case& c :
         {Case{L"ABC:\ttime: 10:30", L"ABC", L"time: 10:30"}, Case{L"Guest:", L"Guest", L""},
          Case{L"", L"", L""}, Case{L"no colon\thi", L"", L"hi"},
          Case{L"A\tB:\tx\ty", L"A\tB", L"B:\tx\ty"}, Case{L":\t", L"", L""}}) {
        CHECK(AolChatLineSN(c.line) == c.name);
        CHECK(AolChatLineMsg(c.line) == c.message);
    }
}

TEST_CASE("new lines are raised once, in order; what stood there before never")
{
    Room room(line(L"OnlineHost", L"*** You are in Lobby ***") + line(L"Joe", L"old"));
    CHECK(room.notice().empty());
    CHECK(room.attached == 0);
    CHECK(room.add(line(L"ABC", L"hi")) == Raised{{L"ABC", L"hi"}});
    CHECK(room.attached == 1);
    CHECK(room.notice().empty());
    CHECK(room.add(line(L"DEF", L"one") + line(L"ABC", L"time: 10:30"))
          == Raised{{L"DEF", L"one"}, {L"ABC", L"time: 10:30"}});
}

TEST_CASE("which lines are none")
{
    Room room(line(L"Joe", L"old"));
    // The last line decides whether anything is looked at: here a good one follows the bad.
    for (const std::wstring& bad :
         {line(L"AB", L"hi"), std::wstring(L"\rGuest:"), std::wstring(L"\rGuest: no tab"),
          line(L"Guest", L""), std::wstring(L"\r"), std::wstring(L"\r\tmessage alone")}) {
        CHECK(room.add(bad).empty());
        CHECK(room.add(line(L"ABC", L"good")) == Raised{{L"ABC", L"good"}});
    }
}

TEST_CASE("an unsettled last line waits for the next change")
{
    for (const auto& [length, waits] :
         {std::pair{60, false}, {250, false}, {251, true}, {1000, true}, {1500, true}}) {
        CAPTURE(length);
        Room room(line(L"Joe", L"old"));
        const std::wstring message(static_cast<std::size_t>(length) - 5, L'x');
        const Raised itself{{L"ABC", message}};
        const int before = room.attached;
        CHECK(room.add(line(L"ABC", message)) == (waits ? Raised{} : itself));
        CHECK(room.attached == before + 1);
        Raised both = waits ? itself : Raised{};
        both.emplace_back(L"DEF", L"short");
        CHECK(room.add(line(L"DEF", L"short")) == both);
    }
}

TEST_CASE("lines that AOL broke arrive whole")
{
    Room room(line(L"Joe", L"old"));
    CHECK(room.add(L"\rABC:\tone two\rthree\rfour" + line(L"DEF", L"end"))
          == Raised{{L"ABC", L"one two three four"}, {L"DEF", L"end"}});
}

TEST_CASE("the first lines of an empty room are raised")
{
    for (const wchar_t* empty : {L"", L"\r", L"\r\n\r\n"}) {
        Room room(empty);
        CHECK(room.add(line(L"ABC", L"hi all")) == Raised{{L"ABC", L"hi all"}});
    }
}

TEST_CASE("a cleared display starts anew")
{
    Room room(line(L"Joe", std::wstring(300, L'o')));
    room.display.text.clear();
    CHECK(room.notice().empty());
    CHECK(room.add(line(L"ABC", L"again")) == Raised{{L"ABC", L"again"}});
}

TEST_CASE("two thousand lines at once come once each, in order")
{
    for (const bool cut : {false, true}) {
        CAPTURE(cut);
        Room room;
        std::wstring burst;
        Raised expected;
        for (int i = 0; i < 2000; ++i) {
            if (i == 1) {
                room.add(burst);
                burst.clear();
            }
            burst += line(L"Member", L"line " + std::to_wstring(i));
            expected.emplace_back(L"Member", L"line " + std::to_wstring(i));
        }
        expected.erase(expected.begin());
        // AOL cut the head of the first line away while the rest came.
        if (cut)
            room.display.text.erase(0, 6);
        CHECK(room.add(burst) == expected);
        CHECK(room.display.asked == 2);
        CHECK(room.add(line(L"ABC", L"next")).size() == 1);
        CHECK(room.display.asked == 1);
    }
}

TEST_CASE("lines that stayed when AOL cut the display aren't raised again")
{
    Room room;
    const auto say = [](int from, int to) {
        std::wstring text;
        for (int i = from; i < to; ++i)
            text += line(L"Member", L"this is line number " + std::to_wstring(i));
        return text;
    };
    room.add(say(0, 200));
    // Of the section seen last only the last three lines are left, and half of one before them.
    for (const bool amidLine : {false, true}) {
        const int base = amidLine ? 397 : 197;
        room.display.text = (amidLine ? L"number 396" : L"") + say(base, base + 203);
        const Raised got = room.notice();
        REQUIRE(got.size() == 200);
        CHECK(got.front().second == L"this is line number " + std::to_wstring(base + 3));
    }
}

TEST_CASE("reading doesn't grow with the chat")
{
    Room room;
    for (int i = 0; i < 5000; ++i)
        room.display.text += line(L"Member", L"something said " + std::to_wstring(i));
    room.notice();
    // Long lines that hold back the check push the section further and further from the end.
    for (int i = 0; i < 40; ++i) {
        CHECK(room.add(line(L"Member", std::wstring(900, L'x') + std::to_wstring(i))).empty());
        CHECK(room.display.asked == 1);
    }
    CHECK(room.add(line(L"ABC", L"short")).size() == 41);
    CHECK(room.display.asked == 1);
}

TEST_CASE("AOL that doesn't answer costs nothing but time")
{
    Room room;
    room.display.silentFor = 1;
    room.display.text = line(L"Joe", L"said before");
    room.reader.Init(std::make_unique<chatscript::DisplayReader>(room.display));
    CHECK(room.reader.missed());
    CHECK(room.notice().empty());
    CHECK_FALSE(room.reader.missed());
    room.display.silentFor = 1;
    CHECK(room.add(line(L"ABC", L"hi")).empty());
    CHECK(room.reader.missed());
    CHECK(room.notice() == Raised{{L"ABC", L"hi"}});
}

TEST_CASE("a handler may release or destroy the reader, or throw")
{
    const std::wstring two = line(L"ABC", L"one") + line(L"ABC", L"two");
    SUBCASE("released, it raises no more")
    {
        Room room(line(L"Joe", L"old"));
        room.reader.ChatMsg = [&](std::wstring& name, std::wstring& message) {
            room.raised.emplace_back(name, message);
            room.reader.Release();
        };
        CHECK(room.add(two).size() == 1);
        CHECK(room.attached == 0);
        CHECK_FALSE(room.reader.active());
    }
    SUBCASE("destroyed, it raises no more")
    {
        chatscript::Display display;
        auto reader = std::make_unique<clsChat>();
        int count = 0;
        reader->ChatMsg = [&](std::wstring&, std::wstring&) {
            ++count;
            reader.reset();
        };
        reader->Init(std::make_unique<chatscript::DisplayReader>(display));
        display.text = two;
        REQUIRE(reader->CheckChat() == 0);
        clsChat* const raw = reader.get();
        raw->HandleChat();
        CHECK(count == 1);
        CHECK(reader == nullptr);
    }
    SUBCASE("a throwing handler loses only its own line")
    {
        Room room(line(L"Joe", L"old"));
        int calls = 0;
        room.reader.ChatMsg = [&](std::wstring&, std::wstring&) {
            ++calls;
            throw std::runtime_error("handler");
        };
        room.add(two);
        CHECK(calls == 2);
        CHECK(room.attached == 1);
        CHECK(room.notice().empty());
    }
    SUBCASE("a handler that pumps can't start a second reading")
    {
        Room room(line(L"Joe", L"old"));
        room.reader.ChatMsg = [&](std::wstring& name, std::wstring& message) {
            room.raised.emplace_back(name, message);
            room.display.text += line(L"Nested", L"reply");
            CHECK(room.reader.CheckChat() == 1);
            room.reader.HandleChat();
        };
        CHECK(room.add(two).size() == 2);
        CHECK(room.notice().size() == 2);
    }
}

TEST_CASE("half a line at the cut isn't taken for a line")
{
    // The section seen last reads " ab". It isn't in the text any more, but where the display is
    // cut for reading, the rest of a line reads so. The lengths tried hold the one that cuts there.
    for (std::size_t length = 4000; length < 4200; ++length) {
        Room room(L"ab");
        room.display.text = line(L"ABC", L"zab") + line(L"DEF", std::wstring(100, L'x'));
        const std::wstring end = line(L"GHI", L"end");
        const std::size_t fill = length - 2 - (room.display.text.size() - 9) - end.size();
        room.display.text += L"\r" + std::wstring(fill - 1, L'y') + end;
        CAPTURE(length);
        REQUIRE(room.notice().size() == 3);
    }
}

TEST_CASE("reading the end agrees with reading all, on random chats")
{
    std::mt19937 random(20260101);
    std::size_t lines = 0;
    int looks = 0, wholeReads = 0;
    for (int run = 0; run < 2000; ++run) {
        std::vector<std::uint8_t> script(20 + random() % 180);
        for (std::uint8_t& b : script)
            b = static_cast<std::uint8_t>(random());
        chatscript::Run chat;
        const std::string fault = chat(script);
        CAPTURE(run);
        REQUIRE(fault == "");
        lines += chat.raisedLines();
        looks += chat.looks();
        wholeReads += chat.wholeReads();
    }
    // The runs were no idle ones, and both ways of reading were taken often.
    CHECK(lines > 30000);
    CHECK(wholeReads > 400);
    CHECK(looks - wholeReads > 4000);
}
