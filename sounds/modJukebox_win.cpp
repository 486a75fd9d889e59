#include "base/files.h"
#include "base/handles.h"
#include "base/trap.h"
#include "base/win.h"
#include "base/win_error.h"
#include "core/MsgBoxEx.h"
#include "core/modMain.h"
#include "sounds/modJukebox.h"
#include "sounds/modMediaPlayer.h"

namespace velora {
namespace {

constexpr char kModule[] = "modJukebox";
/// By this word the jukebox knows that Velora has started it.
constexpr wchar_t kLaunchToken[] = L"tandrel";

void run(const std::wstring& executable, const std::wstring& folder)
{
    std::wstring line = L"\"" + executable + L"\" " + kLaunchToken;
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION made = {};
    if (!CreateProcessW(executable.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        folder.c_str(), &start, &made))
        throwLastError("cannot start the jukebox");
    // It was the user who asked for it: its window may come to the front.
    AllowSetForegroundWindow(made.dwProcessId);
    const KernelHandle process(made.hProcess), thread(made.hThread);
}

} // namespace

bool StartJukebox(const std::wstring& folder)
{
    return trap(
        kModule,
        [&] {
            if (!mediaPlayerUsable()) {
                offerMediaPlayer(MediaPlayerUse::jukebox);
                return false;
            }
            const std::wstring place = folder.empty() ? AppPath() : folder;
            const std::wstring executable = place + L"\\jukebox.exe";
            if (!fileExists(executable)) {
                MsgBoxEx(L"~B~CRJUKEBOX.EXE not found!~B~CN~N ~NThe Velora Jukebox executable "
                         L"appears to be missing.~N ~NPlease do a full reinstallation of Velora "
                         L"10.x to resolve this issue.",
                         kMsgExclamation);
                return false;
            }
            run(executable, place);
            return true;
        },
        false);
}

} // namespace velora
