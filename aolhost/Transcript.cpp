#include "aolhost/Transcript.h"

#include "aolhost/Text.h"
#include "base/win.h"

#include <cstdio>

namespace aolhost {

void Transcript::add(std::wstring_view kind, std::wstring_view who, std::wstring_view text) const
{
    if (path_.empty())
        return;
    SYSTEMTIME t;
    GetLocalTime(&t);
    char stamp[32];
    std::snprintf(stamp, sizeof stamp, "%02d:%02d:%02d.%03d\t", t.wHour, t.wMinute, t.wSecond,
                  t.wMilliseconds);
    const std::string line =
        stamp + toUtf8(kind) + '\t' + toUtf8(escaped(who)) + '\t' + toUtf8(escaped(text)) + "\r\n";
    const HANDLE file = CreateFileW(path_.c_str(), FILE_APPEND_DATA,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    DWORD written = 0;
    WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
    CloseHandle(file);
}

} // namespace aolhost
