// The chat reader on the stand-in's display, through the code inside AOL and without it.
#include "core/clsChat.h"

#include "base/text.h"
#include "core/modAOL.h"
#include "core/modChatDisplay.h"
#include "hook/AgentLink.h"
#include "support/aolhost_win.h"

#include <doctest/doctest.h>

#include <string>

using namespace velora;
using velora::test::AolHost;
using velora::test::waitFor;

namespace {

using Raised = std::vector<std::pair<std::wstring, std::wstring>>;

/// AOL with a room, and a reader on its display.
struct Reading {
    AolHost host;
    HWND room = nullptr;
    clsChat reader;
    Raised raised;

    explicit Reading(const AolHost::Options& options, bool inside = true) : host(options)
    {
        aol() = {};
        aol().version = options.version;
        aol().edition = options.edition;
        if (inside)
            REQUIRE(connectAol());
        room = host.enterRoom();
        reader.ChatMsg = [this](std::wstring& name, std::wstring& message) {
            raised.emplace_back(name, message);
        };
        reader.Init(chatDisplayReader(chatDisplay(room)));
        REQUIRE_FALSE(reader.missed());
    }
    ~Reading()
    {
        reader.Release();
        aolLink().disconnect();
        aol() = {};
    }
    void look()
    {
        if (reader.CheckChat() == 0)
            reader.HandleChat();
    }
    /// Looks until that many lines have been raised in all.
    bool raises(std::size_t count)
    {
        return waitFor([&] {
            look();
            return raised.size() >= count;
        });
    }
};

AolHost::Options optionsFor(int edition, int version, bool unicode = false)
{
    return {.edition = edition, .version = version, .unicodeEdits = unicode};
}

std::wstring words(std::size_t length)
{
    std::wstring text;
    while (text.size() < length)
        text += L"word" + std::to_wstring(text.size()) + L" ";
    text.resize(length);
    text.back() = L'.';
    return text;
}

} // namespace

TEST_CASE("lines of every length arrive whole, in order, once")
{
    struct Sort {
        AolHost::Options options;
        bool inside;
    };
    for (const Sort& sort : {Sort{optionsFor(0, 5), true}, Sort{optionsFor(0, 7), true},
                             Sort{optionsFor(4, 6, true), true}, Sort{optionsFor(5, 4), true},
                             Sort{optionsFor(0, 5), false}, Sort{optionsFor(1, 7, true), false}}) {
        CAPTURE(sort.options.version);
        CAPTURE(sort.inside);
        Reading reading(sort.options, sort.inside);
        Raised expected;
        reading.look();
        CHECK(reading.raised.empty());
        for (const std::size_t length : {2u, 60u, 238u, 239u, 250u, 251u, 1000u, 1u}) {
            const std::wstring message = words(length);
            reading.host.command(L"say Joe Smith: " + message);
            expected.emplace_back(L"Joe Smith", message);
            const std::wstring shown = L"Joe Smith:\t" + message;
            if (shown.size() >= 251) {
                // Held back until a short line ends the display.
                reading.look();
                reading.host.command(L"say Mary99: yes: \u00E9");
                expected.emplace_back(L"Mary99", L"yes: \u00E9");
            }
            REQUIRE(reading.raises(expected.size()));
        }
        CHECK(reading.raised == expected);
        CHECK(reading.host.command(L"leave") == L"");
        reading.look();
        CHECK(reading.raised == expected);
    }
}

TEST_CASE("two thousand lines in one burst are raised once each")
{
    for (const int version : {5, 7}) {
        Reading reading(optionsFor(0, version));
        reading.host.command(L"burst 2000");
        REQUIRE(reading.raises(2000));
        reading.look();
        REQUIRE(reading.raised.size() == 2000);
        for (std::size_t i = 0; i < 2000; ++i)
            REQUIRE(reading.raised[i].second == L"line " + std::to_wstring(i + 1));
    }
}

TEST_CASE("a display that AOL trims or clears raises nothing twice")
{
    Reading reading(optionsFor(0, 5));
    reading.host.command(L"burst 100");
    REQUIRE(reading.raises(100));
    reading.host.command(L"trim 1500");
    reading.look();
    CHECK(reading.raised.size() == 100);
    reading.host.command(L"say Joe Smith: after the cut");
    REQUIRE(reading.raises(101));
    CHECK(reading.raised.back()
          == std::pair<std::wstring, std::wstring>{L"Joe Smith", L"after the cut"});
    reading.host.command(L"clear");
    reading.look();
    CHECK(reading.raised.size() == 101);
    reading.host.command(L"say Joe Smith: after the clearing");
    REQUIRE(reading.raises(102));
    CHECK(reading.raised.back().second == L"after the clearing");
}

TEST_CASE("a room that closes, an AOL that hangs or ends: no lines, no waiting")
{
    SUBCASE("closed between two looks, and in a handler")
    {
        Reading reading(optionsFor(0, 6));
        reading.reader.ChatMsg = [&](std::wstring& name, std::wstring& message) {
            if (reading.raised.empty())
                reading.host.command(L"leave");
            reading.raised.emplace_back(name, message);
        };
        reading.host.command(L"burst 3");
        CHECK(reading.raises(3));
        CHECK(waitFor([&] { return !IsWindow(reading.room); }));
        CHECK(reading.reader.CheckChat() == 1);
        CHECK(reading.reader.missed());
    }
    SUBCASE("hanging")
    {
        Reading reading(optionsFor(0, 5));
        reading.host.command(L"say Joe Smith: before");
        reading.host.command(L"hang 5000");
        // AOL answers no more for five seconds, so an answer of "missed" is one that didn't wait.
        CHECK(reading.reader.CheckChat() == 1);
        CHECK(reading.reader.missed());
        CHECK(reading.raises(1));
    }
    SUBCASE("killed")
    {
        Reading reading(optionsFor(0, 5));
        reading.host.kill();
        CHECK(reading.reader.CheckChat() == 1);
        CHECK(reading.reader.missed());
    }
}
