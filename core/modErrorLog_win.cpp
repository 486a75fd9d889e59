#include "core/modErrorLog.h"

#include "base/files.h"
#include "base/handles.h"
#include "base/product.h"

#include <shlobj.h>

namespace velora {
namespace {

std::wstring g_folder;

std::wstring logFile(int age)
{
    return g_folder + L"\\velora.log" + (age ? L"." + std::to_wstring(age) : L"");
}

/// Opens for appending, which also tells whether the folder can be written.
FileHandle openLog()
{
    return FileHandle(CreateFileW(logFile(0).c_str(), FILE_APPEND_DATA,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void rotate()
{
    for (int age = kErrorLogFiles - 1; age > 0; --age)
        MoveFileExW(logFile(age - 1).c_str(), logFile(age).c_str(), MOVEFILE_REPLACE_EXISTING);
}

void writeLine(const std::string& line)
{
    FileHandle log = openLog();
    if (log && GetFileSize(log.get(), nullptr) + line.size() > kErrorLogSize) {
        log.reset();
        rotate();
        log = openLog();
    }
    DWORD written;
    if (log)
        WriteFile(log.get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

void sink(const ErrorRecord& record) noexcept
{
    // An error about an error would have no end, and the program must not fail over its log. The
    // caller may still want the system's last error.
    static bool writing = false;
    if (writing)
        return;
    writing = true;
    const DWORD lastError = GetLastError();
    try {
        writeLine(errorLogLine(now(), record));
    } catch (...) {
    }
    SetLastError(lastError);
    writing = false;
}

std::wstring userFolder()
{
    wchar_t folder[MAX_PATH];
    if (SHGetFolderPathW(nullptr, CSIDL_APPDATA | CSIDL_FLAG_CREATE, nullptr, SHGFP_TYPE_CURRENT,
                         folder)
        != S_OK)
        return {};
    std::wstring path = std::wstring(folder) + L"\\" + kProductName;
    makeFolder(path);
    return path;
}

} // namespace

void openErrorLog(const std::wstring& programFolder) noexcept
{
    try {
        g_folder = programFolder;
        if (!openLog())
            g_folder = userFolder();
        setErrorSink(sink);
    } catch (...) {
        g_folder.clear();
    }
}

void closeErrorLog() noexcept
{
    setErrorSink(nullptr);
}

const std::wstring& errorLogFolder() noexcept
{
    return g_folder;
}

} // namespace velora
