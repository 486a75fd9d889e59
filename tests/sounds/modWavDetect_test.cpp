#include "sounds/modWavDetect.h"

#include <doctest/doctest.h>
#include <vector>

using namespace velora;

namespace {

struct Room {
    bool busy = false, opens = true;
    int lookups = 0;
    long perMinute = 12;
    std::vector<std::wstring> played, others, told;
    clsWavDetect detect{{
        .perMinute = [this] { return perMinute; },
        .getWavPath =
            [this](const std::wstring& name) {
                ++lookups;
                return name == L"none" ? L"" : L"C:\\" + name;
            },
        .busy = [this] { return busy; },
        .play =
            [this](const std::wstring& path) {
                if (opens)
                    played.push_back(path);
                return opens;
            },
        .playOther = [this](const std::wstring& path) { others.push_back(path); },
        .played = [this](const std::wstring& name) { told.push_back(name); },
    }};
    void say(const wchar_t* line, std::uint32_t now = 0, bool own = false)
    {
        detect.line(line, own, now);
    }
};

} // namespace

TEST_CASE("a sound said in the room plays once")
{
    Room room;
    room.say(L"hi");
    room.say(L"{S none}");
    CHECK(room.told.empty());
    room.say(L"{S a.wav}");
    room.say(L"listen {s B.MID} and {s c.wav}");
    CHECK(room.played == std::vector<std::wstring>{L"C:\\a.wav", L"C:\\B.MID"});
    room.say(L"{S song.mp3}");
    CHECK(room.others == std::vector<std::wstring>{L"C:\\song.mp3"});
    CHECK(room.told == std::vector<std::wstring>{L"a.wav", L"B.MID", L"song.mp3"});
}

TEST_CASE("one sound at a time")
{
    Room room;
    room.busy = true;
    room.say(L"{S a.wav}");
    room.say(L"{S a.mp3}");
    room.say(L"{S a.wav}", 0, true);
    CHECK(room.lookups == 0);
    CHECK(room.told.empty());
}

TEST_CASE("a flood of strangers' sounds is bounded, the user's own are not counted")
{
    Room room;
    for (int i = 0; i < 1000; ++i)
        room.say(L"{S a.wav}", 1000 + i);
    CHECK(room.played.size() == 12);
    CHECK(room.lookups == 12);
    room.say(L"{S own.wav}", 2000, true);
    CHECK(room.played.size() == 13);
    room.say(L"{S a.wav}", 60999); // the first began at 1000
    CHECK(room.played.size() == 13);
    room.say(L"{S a.wav}", 61000);
    CHECK(room.played.size() == 14);
    for (const long none : {0L, -5L}) {
        room.perMinute = none;
        room.say(L"{S a.wav}", 200000);
    }
    CHECK(room.played.size() == 14);
}

TEST_CASE("the limit survives the clock's wrap")
{
    Room room;
    room.perMinute = 3;
    for (int i = 0; i < 5; ++i)
        room.say(L"{S a.wav}", 0xFFFFFF00u + i * 0x80);
    CHECK(room.played.size() == 3);
    room.say(L"{S a.wav}", 60000);
    CHECK(room.played.size() == 4);
}

TEST_CASE("a file that does not open counts as not played")
{
    Room room;
    room.opens = false;
    for (int i = 0; i < 20; ++i)
        room.say(L"{S a.wav}");
    CHECK(room.told.empty());
    room.opens = true;
    room.say(L"{S a.wav}");
    CHECK(room.told.size() == 1);
}

TEST_CASE("hostile names reach no look-up")
{
    Room room;
    std::wstring many;
    for (int i = 0; i < 10000; ++i)
        many += L"{S ";
    for (const wchar_t* line : {L"{S ..\\..\\x}", L"{S C:\\x}", L"{S a/b}", L"{S \\\\h\\s\\x}",
                                L"{S CON}", L"{S x.wav:stream}", L"{S x }", L"{S }", L"{S x"})
        room.say(line);
    room.say(many.c_str());
    CHECK(room.lookups == 0);
}
