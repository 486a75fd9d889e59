#include "chat/modChatLog.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {
constexpr DateTime kEvening{2026, 11, 22, 23, 59, 0};
constexpr DateTime kMorning{2026, 11, 23, 0, 1, 0};
} // namespace

TEST_CASE("only the host's own words name a room")
{
    CHECK(roomFromHostLine(L"OnlineHost", L"*** You are in \"Town Square\". ***")
          == L"Town Square");
    for (const auto& [name, text] : {std::pair{L"Joe", L"*** You are in \"x\". ***"},
                                     std::pair{L"onlinehost", L"*** You are in \"x\". ***"},
                                     std::pair{L"OnlineHost", L"*** You are in \"x\""},
                                     std::pair{L"OnlineHost", L"*** You are in \"\". ***"},
                                     std::pair{L"OnlineHost", L"Joe has entered the room."}})
        CHECK_FALSE(roomFromHostLine(name, text).has_value());
}

TEST_CASE("the room's name in a caption")
{
    CHECK(SplitRoomName(L" Town Square - Lobby 27 ") == L"Town Square - Lobby 27");
    CHECK(SplitRoomName(L"Cats (12)") == L"Cats");
    CHECK(SplitRoomName(L"(12)") == L"(12)");
    CHECK(SplitRoomName(L"").empty());
}

TEST_CASE("paths by date and by room, names made safe")
{
    CHECK(chatLogPath(L"C:\\v\\chat logs", L"Joe Smith", L"a/b", true, kEvening)
          == L"C:\\v\\chat logs\\Joe Smith\\a%2Fb\\11-22-26.log");
    CHECK(chatLogPath(L"C:\\v\\chat logs", L"..", L"CON", false, kEvening)
          == L"C:\\v\\chat logs\\%2E%2E\\%43ON.log");
}

TEST_CASE("leaving a room for another writes its exit before the other's entry")
{
    clsChatLog log(L"L", L"Me");
    log.enter(L"One", true, kEvening);
    const auto writes = log.line(L"OnlineHost", L"*** You are in \"Two\". ***", true, kEvening);
    REQUIRE(writes.size() == 3);
    CHECK(writes[0].path == L"L\\Me\\One\\11-22-26.log");
    CHECK(writes[0].text.starts_with(L"Log Entry:\tExited room on "));
    CHECK(writes[1].path == L"L\\Me\\Two\\11-22-26.log");
    CHECK(writes[1].text.starts_with(L"Log Entry:\tEntered \"Two\" on "));
    CHECK(writes[2].text == L"OnlineHost:\t*** You are in \"Two\". ***\r\n");
    CHECK(log.line(L"OnlineHost", L"*** You are in \"Two\". ***", true, kEvening).size() == 1);
    CHECK(log.leave(kEvening).size() == 1);
    CHECK(log.leave(kEvening).empty());
}

TEST_CASE("midnight starts a new day's file")
{
    clsChatLog log(L"L", L"Me");
    log.enter(L"R", true, kEvening);
    CHECK(log.line(L"Joe", L"hi", true, kEvening)[0].path == L"L\\Me\\R\\11-22-26.log");
    CHECK(log.line(L"Joe", L"hi", true, kMorning)[0].path == L"L\\Me\\R\\11-23-26.log");
    CHECK(log.line(L"Joe", L"hi", false, kMorning)[0].path == L"L\\Me\\R.log");
}

TEST_CASE("records are one line and cannot be forged")
{
    CHECK(lineRecord(L"Joe", L"a\r\nLog Entry:\tx") == L"Joe:\ta  Log Entry:\tx\r\n");
    CHECK(lineRecord(L"log entry", L"Exited room") == L" log entry:\tExited room\r\n");
    CHECK(noteRecord(L"hello") == L"Log Note:\thello\r\n");
    clsChatLog log(L"L", L"Me");
    CHECK(log.line(L"Joe", std::wstring(L"a\0b", 3), false, kEvening)[1].text == L"Joe:\ta b\r\n");
    CHECK(log.room() == L"Chat");
}

TEST_CASE("64 KB of anything is one record, kept whole")
{
    constexpr std::size_t kLong = 65536;
    for (const wchar_t c : {L'a', L'\r', L'\n', L'\0', L'\t', L'"', L'{'}) {
        const std::wstring record = lineRecord(L"Joe", std::wstring(kLong, c));
        CHECK(record.size() == kLong + 7); // "Joe:", the tab and the line end
        CHECK(record.find(L"\r\n") == record.size() - 2);
        CHECK(record.find_first_of(std::wstring(L"\r\n\0", 3)) == record.size() - 2);
    }
}
