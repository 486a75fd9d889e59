#include "base/trap.h"
#include "base/win.h"
#include "core/MsgBoxEx.h"
#include "sounds/modMediaPlayer.h"

#include <shellapi.h>

#include <vector>

namespace velora {
namespace {

constexpr char kModule[] = "modMediaPlayer";
constexpr wchar_t kDownloadPage[] = L"https://support.microsoft.com/windows/windows-media-player";
std::optional<bool> g_present;

std::string controlPath()
{
    char folder[MAX_PATH];
    const UINT length = GetSystemDirectoryA(folder, MAX_PATH);
    return length > 0 && length < MAX_PATH ? std::string(folder, length) + "\\msdxm.ocx"
                                           : std::string();
}

bool isControl(const std::string& path)
{
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

void lookForMediaPlayer(const std::string& controlFile)
{
    g_present = trap(
        kModule, [&] { return isControl(controlFile.empty() ? controlPath() : controlFile); },
        false);
}

bool mediaPlayerUsable()
{
    if (!g_present)
        lookForMediaPlayer();
    return *g_present;
}

void offerMediaPlayer(MediaPlayerUse use)
{
    trap(kModule, [&] {
        const std::wstring why =
            use == MediaPlayerUse::jukebox
                ? L"The Velora Jukebox feature requires Microsoft Media Player version 6.4 or "
                  L"higher."
                : L"To preview MP3 files through Velora requires Microsoft Media Player version "
                  L"6.4 or higher.";
        const int answer =
            MsgBoxEx(L"~B~CRMedia Player 6.4 or higher not installed!~B~CN~N ~N" + why
                         + L"~N ~NWould you like to download the free installer?",
                     kMsgYesNo | kMsgExclamation | kMsgSecondDefault);
        if (answer == kAnswerYes)
            ShellExecuteW(nullptr, L"open", kDownloadPage, nullptr, nullptr, SW_SHOWNORMAL);
    });
}

} // namespace velora
