#include "support/aolhost_win.h"

#include "base/files.h"
#include "base/text.h"

#include <doctest/doctest.h>

using namespace velora::test;

TEST_CASE("a crash and an orderly exit end the process; it starts again from its folder")
{
    AolHost aol;
    aol.command(L"crash");
    CHECK(aol.ended());
    CHECK_THROWS(aol.command(L"status"));
    aol.start();
    CHECK(aol.status()[L"online"] == L"1");
    aol.command(L"exit");
    CHECK(aol.ended());
    DWORD code = 99;
    GetExitCodeProcess(aol.process(), &code);
    CHECK(code == 0);
}

TEST_CASE("the transcript says who said what")
{
    AolHost aol;
    aol.enterRoom();
    aol.command(L"say Rose3: tab\\there");
    const HWND input = aol.inputWindow();
    SendMessageW(input, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"{S welcome}"));
    SendMessageW(input, WM_CHAR, VK_RETURN, 0);
    aol.command(L"im Joe: psst");
    const std::string text = velora::readFile(aol.transcriptPath()).value_or("");
    for (const char* record : {"\tsignon\tOrv Tester\t\r\n", "\troom\tOrv Tester\tTown Square\r\n",
                               "\tsaid\tRose3\ttab\\there\r\n",
                               "\tsent\tOrv Tester\t{S welcome}\r\n", "\tim\tJoe\tpsst\r\n"}) {
        CAPTURE(record);
        CHECK(text.find(record) != std::string::npos);
    }
}

TEST_CASE("commands that make no sense are refused and change nothing")
{
    AolHost aol;
    for (const wchar_t* line :
         {L"say Rose3: nobody hears", L"dance", L"mdi sideways", L"signon", L"late -1",
          L"edition 3", L"mail half", L"leave", L"imtext Nobody"}) {
        CAPTURE(line);
        CHECK_THROWS(aol.command(line));
    }
    CHECK(aol.status()[L"documents"] == L"1");
}

TEST_CASE("aol.exe starts the waol.exe beside it with its arguments and aol.ini")
{
    AolHost aol({.run = false});
    const std::wstring pipe = L"aolhost-ini-" + std::to_wstring(GetCurrentProcessId());
    velora::replaceFile(aol.folder() + L"\\aol.ini",
                        "signon=Joe Smith\r\npipe=" + velora::toUtf8(pipe) + "\r\n");
    const Process launcher(aol.folder() + L"\\aol.exe", {});
    CHECK(launcher.ended(30000));
    velora::FileHandle client;
    CHECK(waitFor([&] {
        client.reset(CreateFileW((L"\\\\.\\pipe\\" + pipe).c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                 nullptr, OPEN_EXISTING, 0, nullptr));
        return static_cast<bool>(client);
    }));
    DWORD count = 0;
    char answer[2048] = "";
    WriteFile(client.get(), "status\nexit\n", 12, &count, nullptr);
    ReadFile(client.get(), answer, sizeof answer - 1, &count, nullptr);
    CHECK(std::string(answer).find("name=Joe Smith") != std::string::npos);
    const HWND frame = FindWindowW(L"AOL Frame25", nullptr);
    CHECK(waitFor([&] { return !IsWindow(frame); }));
}
