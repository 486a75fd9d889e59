#include "base/trap.h"
#include "base/win.h"
#include "sounds/modMediaPlayer.h"

#include <vector>

namespace velora {
namespace {

constexpr char kModule[] = "modMediaPlayer";

std::string controlPath()
{
    char folder[MAX_PATH];
    const UINT length = GetSystemDirectoryA(folder, MAX_PATH);
    return length > 0 && length < MAX_PATH ? std::string(folder, length) + "\\msdxm.ocx"
                                           : std::string();
}

bool lookForControl()
{
    const std::string path = controlPath();
    DWORD ignored = 0;
    const DWORD size = path.empty() ? 0 : GetFileVersionInfoSizeA(path.c_str(), &ignored);
    if (size == 0)
        return false;
    std::vector<char> block(size);
    VS_FIXEDFILEINFO* info = nullptr;
    UINT length = 0;
    if (!GetFileVersionInfoA(path.c_str(), 0, size, block.data())
        || !VerQueryValueA(block.data(), "\\", reinterpret_cast<void**>(&info), &length)
        || length < sizeof *info)
        return false;
    return isMediaPlayerVersion(versionNumber(info->dwFileVersionMS, info->dwFileVersionLS));
}

} // namespace

bool mediaPlayerUsable()
{
    static const bool present = trap(
        kModule, [] { return lookForControl(); }, false);
    return present;
}

} // namespace velora
