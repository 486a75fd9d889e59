#include "chat/clsChatLogger.h"

#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "settings/Options.h"
#include "support/memory_store.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

int g_reports = 0;

struct Logging : StoreScope {
    Logging() { opt::General::ChatLog.set(true); }
    std::wstring content(const wchar_t* room) const
    {
        return from1252(
            readFile(dir.path() + L"\\chat logs\\Me\\" + room + L".log").value_or("(none)"));
    }
    TempDir dir;
    clsChatLogger logger{dir.path() + L"\\chat logs", [] { return std::wstring(L"Me"); }};
};

} // namespace

TEST_CASE("rooms, lines and notes reach their files at once")
{
    Logging t;
    t.logger.enterRoom(L"Town Square (23)");
    t.logger.AppendChatLog(L"Joe", L"hi");
    CHECK(t.logger.note(L"remember"));
    CHECK(t.content(L"Town Square").starts_with(L"Log Entry:\tEntered \"Town Square\" on "));
    CHECK(t.content(L"Town Square").ends_with(L"Joe:\thi\r\nLog Note:\tremember\r\n"));
    t.logger.enterRoom(L"..\\Other");
    CHECK(t.content(L"Town Square").find(L"Log Entry:\tExited room on ") != std::wstring::npos);
    CHECK(t.content(L"%2E.%5COther").starts_with(L"Log Entry:\tEntered"));
    t.logger.leaveRoom();
    t.logger.leaveRoom();
    const std::wstring other = t.content(L"%2E.%5COther");
    CHECK(other.find(L"Exited") == other.rfind(L"Exited"));
}

TEST_CASE("nothing is written while the log is off, and a log switched on later has its entry")
{
    Logging t;
    opt::General::ChatLog.set(false);
    t.logger.enterRoom(L"Lobby");
    CHECK_FALSE(t.logger.note(L"x"));
    CHECK(t.content(L"Lobby") == L"(none)");
    opt::General::ChatLog.set(true);
    t.logger.AppendChatLog(L"Joe", L"hi");
    CHECK(t.content(L"Lobby").starts_with(L"Log Entry:\tEntered \"Lobby\""));
}

TEST_CASE("a folder that cannot be written is reported once, and chat goes on")
{
    Logging t;
    replaceFile(t.dir.path() + L"\\chat logs", "a file where the folder should be");
    g_reports = 0;
    const auto former = setErrorSink([](const ErrorRecord&) noexcept { ++g_reports; });
    for (int i = 0; i < 5; ++i)
        t.logger.AppendChatLog(L"Joe", L"hi");
    setErrorSink(former);
    CHECK(g_reports == 1);
}
