#include "support/aolhost_win.h"

#include "base/files.h"
#include "base/text.h"

#include <doctest/doctest.h>

using namespace velora::test;

namespace {

bool answers(HWND window, UINT ms)
{
    DWORD_PTR result = 0;
    return SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, ms, &result) != 0;
}

} // namespace

TEST_CASE("a hang stops the windows, not the pipe, and passes")
{
    AolHost aol;
    aol.command(L"hang 1500");
    CHECK_FALSE(answers(aol.frame(), 200));
    CHECK(aol.status()[L"online"] == L"1");
    CHECK(answers(aol.frame(), 5000));
}

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

TEST_CASE("the frame's close message ends it")
{
    AolHost aol;
    aol.enterRoom();
    PostMessageW(aol.frame(), WM_CLOSE, 0, 0);
    CHECK(aol.ended());
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
    AolHost::Options options;
    options.run = false;
    AolHost aol(options);
    const std::wstring pipe = L"aolhost-ini-" + std::to_wstring(GetCurrentProcessId());
    velora::replaceFile(aol.folder() + L"\\aol.ini",
                        "signon=Joe Smith\r\npipe=" + velora::toUtf8(pipe) + "\r\n");
    std::wstring line = L"\"" + aol.folder() + L"\\aol.exe\"";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION info{};
    REQUIRE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                           &start, &info));
    CloseHandle(info.hThread);
    velora::KernelHandle launcher(info.hProcess);
    CHECK(WaitForSingleObject(launcher.get(), 30000) == WAIT_OBJECT_0);
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
