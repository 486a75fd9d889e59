#include "aolhost/Aol.h"
#include "aolhost/Commands.h"
#include "aolhost/Frame.h"
#include "aolhost/Text.h"

#include <algorithm>
#include <cstdio>
#include <memory>

namespace aolhost {
namespace {

struct Source {
    std::wstring path;
    HWND frame;
};

constexpr DWORD kUntilLimit = 120000;

std::wstring execute(const std::wstring& line, HWND frame);

/// "until COMMAND = TEXT": asks again until the answer holds the text.
std::wstring executeUntil(const std::wstring& condition, HWND frame)
{
    const std::size_t equals = condition.find(L" = ");
    if (equals == std::wstring::npos)
        return L"error COMMAND = TEXT is what this command takes";
    const std::wstring wanted = condition.substr(equals + 3);
    const DWORD start = GetTickCount();
    while (GetTickCount() - start < kUntilLimit) {
        const std::wstring answer = execute(condition.substr(0, equals), frame);
        if (answer.find(wanted) != std::wstring::npos)
            return answer;
        if (!IsWindow(frame))
            return answer;
        Sleep(30);
    }
    return L"error it did not come to that";
}

std::wstring executeBurst(long lines, HWND frame)
{
    constexpr long packet = 20;
    for (long from = 1; from <= lines; from += packet) {
        const std::wstring answer =
            execute(L"burstlines " + std::to_wstring(from) + L"-"
                        + std::to_wstring(std::min(lines, from + packet - 1)),
                    frame);
        if (!startsNoCase(answer, L"ok"))
            return answer;
    }
    return L"ok";
}

/// Runs one line and waits for its answer, however long the window thread hangs; an answer that
/// cannot come any more, because the frame is gone, is an error.
std::wstring execute(const std::wstring& line, HWND frame)
{
    // A pause belongs to the one who asked for it: the windows go on meanwhile.
    if (startsNoCase(line, L"wait ")) {
        Sleep(static_cast<DWORD>(numberOr(line.substr(5), 0)));
        return L"ok";
    }
    // A burst comes in packets, between which AOL does what else there is to do.
    if (startsNoCase(line, L"burst "))
        return executeBurst(numberOr(line.substr(6), 0), frame);
    if (startsNoCase(line, L"until "))
        return executeUntil(line.substr(6), frame);
    Request request{line, {}, CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    bool answered = PostMessageW(frame, kRunRequest, 0, reinterpret_cast<LPARAM>(&request)) != 0;
    while (answered && WaitForSingleObject(request.answered, 200) == WAIT_TIMEOUT)
        answered = IsWindow(frame) != 0;
    CloseHandle(request.answered);
    return answered ? request.answer : L"error AOL's window is gone";
}

void endIfAsked(const std::wstring& line, HWND frame)
{
    if (endsAol(line))
        PostMessageW(frame, kEnd, sameNoCase(line, L"crash"), 0);
}

/// Answers the lines of one client until it goes.
void serve(HANDLE pipe, HWND frame)
{
    std::string pending;
    char buffer[4096];
    DWORD got = 0;
    while (ReadFile(pipe, buffer, sizeof buffer, &got, nullptr) && got > 0) {
        pending.append(buffer, got);
        for (std::size_t end; (end = pending.find('\n')) != std::string::npos;) {
            std::string line = pending.substr(0, end);
            pending.erase(0, end + 1);
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            const std::string answer = toUtf8(execute(fromUtf8(line), frame)) + "\n";
            DWORD put = 0;
            if (!WriteFile(pipe, answer.data(), static_cast<DWORD>(answer.size()), &put, nullptr))
                return;
            endIfAsked(fromUtf8(line), frame);
        }
    }
}

DWORD WINAPI pipeThread(void* parameter) noexcept
{
    const std::unique_ptr<Source> source(static_cast<Source*>(parameter));
    const std::wstring name = L"\\\\.\\pipe\\" + source->path;
    for (;;) {
        const HANDLE pipe = CreateNamedPipeW(name.c_str(), PIPE_ACCESS_DUPLEX,
                                             PIPE_TYPE_BYTE | PIPE_READMODE_BYTE | PIPE_WAIT,
                                             PIPE_UNLIMITED_INSTANCES, 65536, 65536, 0, nullptr);
        if (pipe == INVALID_HANDLE_VALUE) {
            std::fprintf(stderr, "waol: no pipe, error %lu\n", GetLastError());
            return 1;
        }
        if (ConnectNamedPipe(pipe, nullptr) || GetLastError() == ERROR_PIPE_CONNECTED)
            serve(pipe, source->frame);
        FlushFileBuffers(pipe);
        DisconnectNamedPipe(pipe);
        CloseHandle(pipe);
    }
}

std::string readWhole(const std::wstring& path)
{
    std::string all;
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return all;
    char buffer[4096];
    for (DWORD got = 0; ReadFile(file, buffer, sizeof buffer, &got, nullptr) && got > 0;)
        all.append(buffer, got);
    CloseHandle(file);
    return all;
}

DWORD WINAPI scriptThread(void* parameter) noexcept
{
    const std::unique_ptr<Source> source(static_cast<Source*>(parameter));
    const std::wstring script = fromUtf8(readWhole(source->path));
    for (const std::wstring& raw : splitAt(script, L'\n')) {
        const std::wstring line = trimmed(raw);
        if (line.empty() || line[0] == L'#')
            continue;
        const std::wstring answer = execute(line, source->frame);
        if (!startsNoCase(answer, L"ok"))
            aol().transcript.add(L"script", line, answer);
        endIfAsked(line, source->frame);
    }
    aol().transcript.add(L"script", L"", L"end");
    return 0;
}

void start(LPTHREAD_START_ROUTINE routine, const std::wstring& path, HWND frame)
{
    auto* source = new Source{path, frame};
    if (const HANDLE thread = CreateThread(nullptr, 0, routine, source, 0, nullptr))
        CloseHandle(thread);
    else
        delete source;
}

} // namespace

int tell(const std::wstring& pipe, const std::vector<std::wstring>& lines)
{
    const std::wstring path = L"\\\\.\\pipe\\" + pipe;
    HANDLE end = INVALID_HANDLE_VALUE;
    // AOL may still be starting.
    for (int tries = 0; tries < 300 && end == INVALID_HANDLE_VALUE; ++tries) {
        end = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0,
                          nullptr);
        if (end == INVALID_HANDLE_VALUE)
            Sleep(100);
    }
    if (end == INVALID_HANDLE_VALUE) {
        std::fprintf(stderr, "waol: no pipe of that name\n");
        return 1;
    }
    bool good = true;
    for (const std::wstring& line : lines) {
        const std::string bytes = toUtf8(line) + "\n";
        std::string answer;
        DWORD count = 0;
        WriteFile(end, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
        for (char c; ReadFile(end, &c, 1, &count, nullptr) && count == 1 && c != '\n';)
            answer += c;
        std::printf("%s\n", answer.c_str());
        good = good && answer.compare(0, 2, "ok") == 0;
    }
    CloseHandle(end);
    return good ? 0 : 1;
}

void startPipe(const std::wstring& name, HWND frame)
{
    start(pipeThread, name, frame);
}

void startScript(const std::wstring& path, HWND frame)
{
    start(scriptThread, path, frame);
}

} // namespace aolhost
