#include "core/clsProcesses.h"

#include "base/handles.h"
#include "base/text.h"
#include "base/trap.h"

#include <psapi.h>
#include <tlhelp32.h>

namespace velora {
namespace {

constexpr char kModule[] = "clsProcesses";

std::wstring imageName(HANDLE process)
{
    // From Vista on this works with the fewest rights; the other way is for XP.
    using Query = BOOL(WINAPI*)(HANDLE, DWORD, LPWSTR, PDWORD);
    static const auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "QueryFullProcessImageNameW")));
    std::wstring path(32768, L'\0');
    DWORD length = static_cast<DWORD>(path.size());
    if (!query || !query(process, 0, path.data(), &length))
        length =
            GetModuleFileNameExW(process, nullptr, path.data(), static_cast<DWORD>(path.size()));
    path.resize(length);
    return path;
}

} // namespace

bool clsProcesses::GetProcessInformation()
{
    return trap(
        kModule,
        [&] {
            list_.clear();
            const FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
            PROCESSENTRY32W entry;
            entry.dwSize = sizeof entry;
            if (!snapshot || !Process32FirstW(snapshot.get(), &entry))
                return false;
            do
                list_.push_back({entry.th32ProcessID, entry.th32ParentProcessID, entry.szExeFile});
            while (Process32NextW(snapshot.get(), &entry));
            return true;
        },
        false);
}

std::optional<ProcessInfo> clsProcesses::find(std::wstring_view executable) const
{
    for (const ProcessInfo& process : list_)
        if (equalNoCase(process.name, executable))
            return process;
    return std::nullopt;
}

std::wstring clsProcesses::FilePath(std::wstring_view executable)
{
    return trap(
        kModule,
        [&] {
            clsProcesses processes;
            processes.GetProcessInformation();
            const auto process = processes.find(executable);
            return process ? FilePath(process->id) : std::wstring();
        },
        std::wstring());
}

std::wstring clsProcesses::FilePath(std::uint32_t processId)
{
    constexpr DWORD kQueryLimited = 0x1000; // PROCESS_QUERY_LIMITED_INFORMATION, Vista
    KernelHandle process(
        OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, processId));
    if (!process)
        process.reset(OpenProcess(kQueryLimited, FALSE, processId));
    return process ? imageName(process.get()) : std::wstring();
}

} // namespace velora
