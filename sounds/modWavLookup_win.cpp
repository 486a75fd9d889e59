#include "base/win.h"
#include "sounds/modWavLookup.h"

namespace velora {

std::wstring fileStamp(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return {};
    std::wstring stamp;
    for (const DWORD part :
         {data.nFileSizeHigh, data.nFileSizeLow, data.ftLastWriteTime.dwHighDateTime,
          data.ftLastWriteTime.dwLowDateTime})
        stamp += std::to_wstring(part) + L' ';
    return stamp;
}

} // namespace velora
