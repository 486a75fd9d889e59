#include "base/text.h"
#include "sounds/modWavLookup.h"

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

} // namespace velora
