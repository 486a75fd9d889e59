#include "sounds/fileFacts.h"

#include "base/handles.h"
#include "base/text.h"
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

std::optional<std::vector<std::wstring>> namesBehindDrive(std::wstring_view path)
{
    const wchar_t drive = path.empty() ? L'\0' : lowerChar(path[0]);
    if (path.size() < 3 || drive < L'a' || drive > L'z' || path[1] != L':' || path[2] != L'\\')
        return std::nullopt;
    return split(path.substr(3), L'\\');
}

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

bool visitFolder(const std::wstring& folder, const std::function<bool(const FileFound&)>& visit)
{
    const bool isLong = folder.size() > MAX_PATH - 12 && !folder.starts_with(L"\\\\");
    WIN32_FIND_DATAW found;
    const FindHandle search(
        FindFirstFileW(((isLong ? L"\\\\?\\" : L"") + folder + L"\\*").c_str(), &found));
    if (!search)
        return false;
    do {
        const std::wstring_view name = found.cFileName;
        if (name == L"." || name == L"..")
            continue;
        if (!visit({name, std::uint64_t{found.nFileSizeHigh} << 32 | found.nFileSizeLow,
                    (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
                    (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0}))
            break;
    } while (FindNextFileW(search.get(), &found));
    return true;
}

} // namespace velora
