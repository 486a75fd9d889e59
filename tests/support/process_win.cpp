#include "support/process_win.h"

#include "ui/MessageLoop.h"

#include <stdexcept>

namespace velora::test {

std::wstring buildFolder()
{
    wchar_t path[MAX_PATH];
    const std::wstring file(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    return file.substr(0, file.rfind(L'\\'));
}

Process::Process(const std::wstring& executable, const std::wstring& arguments,
                 const std::wstring& folder)
{
    std::wstring line = L"\"" + executable + L"\"" + (arguments.empty() ? L"" : L" ") + arguments;
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(executable.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        folder.empty() ? nullptr : folder.c_str(), &startup, &started))
        throw std::runtime_error("cannot start the program");
    CloseHandle(started.hThread);
    process_.reset(started.hProcess);
    id_ = started.dwProcessId;
}

Process::~Process()
{
    kill();
}

bool Process::running() const
{
    return process_ && WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT;
}

bool Process::ended(unsigned ms) const
{
    return waitUntil([this] { return !running(); }, ms);
}

DWORD Process::exitCode() const
{
    DWORD code = STILL_ACTIVE;
    GetExitCodeProcess(process_.get(), &code);
    return code;
}

void Process::kill()
{
    if (running()) {
        TerminateProcess(process_.get(), 99);
        WaitForSingleObject(process_.get(), 10000);
    }
}

} // namespace velora::test
