#pragma once
// The programs beside the tests, and processes of them.
#include "base/handles.h"

#include <string>

namespace velora::test {

/// The folder of the test program, where the build has put velora.exe and its modules.
std::wstring buildFolder();

/// A process that a test started; ended at once when it goes out of scope.
class Process {
public:
    Process() = default;
    /// Throws std::runtime_error when it does not start. `arguments` follow the quoted path as they
    /// are.
    Process(const std::wstring& executable, const std::wstring& arguments,
            const std::wstring& folder = {});
    ~Process();
    Process(Process&&) = default;
    Process& operator=(Process&&) = default;

    HANDLE handle() const { return process_.get(); }
    DWORD id() const { return id_; }
    bool running() const;
    /// True when it has ended within that time; messages of this thread are served meanwhile.
    bool ended(unsigned ms = 20000) const;
    DWORD exitCode() const;
    /// As a crash or the task manager would.
    void kill();

private:
    KernelHandle process_;
    DWORD id_ = 0;
};

} // namespace velora::test
