#include "im_mail/modIMLog.h"

#include "base/random.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {
constexpr DateTime kNow{2026, 11, 22, 15, 5, 0};
}

TEST_CASE("both layouts of the log folder")
{
    CHECK(imLogPath(L"P\\im logs", L"Joe Smith", true, kNow)
          == L"P\\im logs\\11-22-26\\Joe Smith.log");
    CHECK(imLogPath(L"P\\im logs", L"..\\x", false, kNow) == L"P\\im logs\\%2E.%5Cx\\11-22-26.log");
}

TEST_CASE("records")
{
    const std::wstring date = shortDate(kNow), time = mediumTime(kNow);
    CHECK(beginRecord(kNow) == L"Begin IM - " + date + L" " + time + L"\r\n");
    CHECK(endRecord(kNow) == L"\r\nEnd IM - " + date + L"\t" + time + L"\r\n");
    CHECK(answeredEntry(std::wstring(L"a") + std::wstring(70000, L' ') + L"b", kNow)
          == L"Answered IM - " + date + L"\t" + time + L"\r\na  b" + endRecord(kNow));
}

TEST_CASE("each word of a growing conversation is written once")
{
    clsIMLogWriter log;
    std::wstring file = log.update(L"Begin\r\n");
    file += log.update(L"Begin\r\nJoe: hi");
    file += log.update(L"Begin\r\nJoe: hi");
    CHECK(log.begun());
    file += log.finish(L"Begin\r\nJoe: hi\r\nMe: yo", kNow);
    CHECK(file == L"Begin\r\nJoe: hi\r\nMe: yo" + endRecord(kNow));
    CHECK_FALSE(log.begun());
    CHECK(log.update(L"new") == L"new");
}

TEST_CASE("a conversation that AOL trims at its head loses and repeats nothing")
{
    SystemRandom random(3);
    for (int round = 0; round < 200; ++round) {
        clsIMLogWriter log;
        std::wstring all, shown, file;
        for (int step = 0; step < 60; ++step) {
            std::wstring line = L"line " + std::to_wstring(step) + L" ";
            line.append(static_cast<std::size_t>(random.rnd() * 120), L'.');
            all += line;
            shown += line;
            // Trimming takes at most what was logged before, as AOL trims old text.
            if (shown.size() > 3000)
                shown.erase(0, static_cast<std::size_t>(random.rnd() * 2500));
            file += log.update(shown);
        }
        CHECK(file == all);
    }
}
