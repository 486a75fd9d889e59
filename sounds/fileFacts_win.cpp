#include "sounds/fileFacts.h"

#include "base/win.h"

namespace velora {
namespace {

using Data = WIN32_FILE_ATTRIBUTE_DATA;

std::optional<Data> dataOf(const std::wstring& path)
{
    Data data;
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return std::nullopt;
    return data;
}

} // namespace

std::wstring fileStamp(const std::wstring& path)
{
    const std::optional<Data> data = dataOf(path);
    if (!data)
        return {};
    std::wstring stamp;
    for (const DWORD part :
         {data->nFileSizeHigh, data->nFileSizeLow, data->ftLastWriteTime.dwHighDateTime,
          data->ftLastWriteTime.dwLowDateTime})
        stamp += std::to_wstring(part) + L' ';
    return stamp;
}

std::optional<std::uint64_t> fileBytes(const std::wstring& path)
{
    const std::optional<Data> data = dataOf(path);
    if (!data || (data->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
        return std::nullopt;
    return std::uint64_t{data->nFileSizeHigh} << 32 | data->nFileSizeLow;
}

} // namespace velora
