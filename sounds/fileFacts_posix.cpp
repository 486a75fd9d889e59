#include "sounds/fileFacts.h"

#include "base/text.h"

#include <dirent.h>
#include <memory>
#include <sys/stat.h>

namespace velora {

std::optional<std::vector<std::wstring>> namesBehindDrive(std::wstring_view path)
{
    if (!path.starts_with(L'/'))
        return std::nullopt;
    return split(path.substr(1), L'/');
}

std::wstring fileStamp(const std::wstring& path)
{
    struct stat data;
    if (stat(toUtf8(path).c_str(), &data) != 0)
        return {};
    return std::to_wstring(data.st_size) + L' ' + std::to_wstring(data.st_mtim.tv_sec) + L' '
           + std::to_wstring(data.st_mtim.tv_nsec);
}

std::optional<std::uint64_t> fileBytes(const std::wstring& path)
{
    struct stat data;
    if (stat(toUtf8(path).c_str(), &data) != 0 || !S_ISREG(data.st_mode))
        return std::nullopt;
    return static_cast<std::uint64_t>(data.st_size);
}

bool visitFolder(const std::wstring& folder, const std::function<bool(const FileFound&)>& visit)
{
    const std::string path = toUtf8(folder);
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(path.c_str()), closedir);
    if (!directory)
        return false;
    while (const dirent* const entry = readdir(directory.get())) {
        const std::string name = entry->d_name;
        struct stat data;
        if (name == "." || name == ".." || lstat((path + "/" + name).c_str(), &data) != 0)
            continue;
        const std::wstring wide = fromUtf8(name);
        if (!visit({wide, static_cast<std::uint64_t>(data.st_size), S_ISDIR(data.st_mode),
                    S_ISLNK(data.st_mode)}))
            break;
    }
    return true;
}

} // namespace velora
