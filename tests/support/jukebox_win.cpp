#include "support/jukebox_win.h"

#include "base/text.h"
#include "base/win.h"

#include <string>

namespace velora::test {

bool ranAsJukebox()
{
    wchar_t path[MAX_PATH];
    const std::wstring self(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    if (!self.ends_with(L"\\jukebox.exe"))
        return false;
    const HWND window =
        CreateWindowExW(0, L"#32770", L"Velora Jukebox", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20,
                        300, 100, nullptr, nullptr, nullptr, nullptr);
    CreateWindowExW(0, L"Static", GetCommandLineW(), WS_CHILD | WS_VISIBLE, 0, 0, 280, 60, window,
                    nullptr, nullptr, nullptr);
    MSG message;
    // A dialog of no procedure takes WM_CLOSE as a cancelling, which destroys nothing.
    while (GetMessageW(&message, nullptr, 0, 0) > 0 && IsWindow(window)) {
        if (message.message == WM_CLOSE)
            break;
        DispatchMessageW(&message);
    }
    return true;
}

} // namespace velora::test
