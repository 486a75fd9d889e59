#include "chat/modSendRules.h"

#include "base/random.h"
#include "base/text.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("what becomes of a typed text")
{
    const SendOptions plain{.useMultiline = false};
    const SendOptions fading{.fader = true};
    struct Row {
        const wchar_t* typed;
        SendOptions options;
        SendAction action;
    };
    for (const Row& row :
         {Row{L"hello", plain, SendAction::pass}, Row{L"hello", fading, SendAction::fade},
          Row{L"", fading, SendAction::pass}, Row{L"   ", fading, SendAction::pass},
          Row{L"/Wav List", fading, SendAction::keyword}, Row{L"/x/y", fading, SendAction::pass},
          Row{L"/http://a/b", plain, SendAction::keyword},
          Row{L"/wavlist", {.keywords = false, .fader = true}, SendAction::fade},
          Row{L"hello", {.fader = true, .fadeWavOnly = true}, SendAction::pass}}) {
        CAPTURE(row.typed);
        CHECK(decideSend(row.typed, row.options).action == row.action);
    }
    CHECK(decideSend(L"/log:Hi there", plain).keyword == L"log:Hi there");
}

TEST_CASE("long plain text goes out in lines")
{
    const SendOptions options{.charsInLine = 20};
    CHECK(decideSend(std::wstring(20, L'a'), options).action == SendAction::pass);
    const auto decision = decideSend(L"one two three four five six", options);
    CHECK(decision.action == SendAction::lines);
    CHECK(decision.lines == std::vector<std::wstring>{L"one two three four", L"five six"});
    CHECK(decideSend(L"one two three four five six", {.fader = true, .charsInLine = 20}).action
          == SendAction::fade);
    CHECK(breakLines(std::wstring(25, L'x') + L" y", 10)
          == std::vector<std::wstring>{std::wstring(10, L'x'), std::wstring(10, L'x'), L"xxxxx y"});
    CHECK(breakLines(L"a\r\n\r\n b ", 20) == std::vector<std::wstring>{L"a", L"b"});
    CHECK(breakLines(L"0123456789 x", 10) == std::vector<std::wstring>{L"0123456789", L"x"});
}

TEST_CASE("breaking loses no word and makes no line too long")
{
    SystemRandom random(8);
    for (int round = 0; round < 500; ++round) {
        std::wstring text;
        for (int n = static_cast<int>(random.rnd() * 60); n >= 0; --n)
            text += std::wstring(static_cast<std::size_t>(random.rnd() * 15), L'w') + L" ";
        const int longest = 10 + static_cast<int>(random.rnd() * 40);
        std::wstring joined;
        for (const std::wstring& line : breakLines(text, longest)) {
            CHECK(line.size() <= static_cast<std::size_t>(longest));
            CHECK_FALSE(line.empty());
            joined += line;
        }
        CHECK(without(joined, L' ') == without(text, L' '));
    }
}

TEST_CASE("pauses between lines")
{
    CHECK(pauseMs(L"1.50") == 1500);
    CHECK(pauseMs(L"2,25") == 2250);
    CHECK(pauseMs(L".5") == 500);
    CHECK(pauseMs(L"0") == 100);
    CHECK(pauseMs(L"60") == 60000);
    for (const wchar_t* bad : {L"", L"x", L"-1", L"61", L"1.x", L"99999999999"})
        CHECK(pauseMs(bad) == 1500);
}
