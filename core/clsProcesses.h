#pragma once
// The running processes, found by the file name of their executable.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

struct ProcessInfo {
    std::uint32_t id = 0;
    std::uint32_t parentId = 0;
    std::wstring name; ///< the executable's file name ("waol.exe")
};

class clsProcesses {
public:
    /// Takes a new list of the running processes; false when the system gives none.
    bool GetProcessInformation();
    const std::vector<ProcessInfo>& list() const { return list_; }
    /// The first process of that executable name (case is ignored).
    std::optional<ProcessInfo> find(std::wstring_view executable) const;

    /// The full path of a running executable, by its file name in a list taken now; empty when it
    /// does not run or its path cannot be had (a process with more rights than ours).
    static std::wstring FilePath(std::wstring_view executable);
    static std::wstring FilePath(std::uint32_t processId);

private:
    std::vector<ProcessInfo> list_;
};

} // namespace velora
