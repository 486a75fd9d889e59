#include "sounds/fileFacts.h"

#include "base/text.h"

#include <sys/stat.h>

namespace velora {

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

} // namespace velora
