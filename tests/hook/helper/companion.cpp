// A companion that the tests can kill: it connects to the frame it is told, does what its mode
// says, sets the named event and goes on until it is killed.
#include "hook/WindowHook.h"

#include <string>

namespace velora::companion {
namespace {

HWND g_top;

HWND firstChild(HWND frame, const wchar_t* className)
{
    const HWND mdi = FindWindowExW(frame, nullptr, L"MDIClient", nullptr);
    const HWND child = FindWindowExW(mdi, nullptr, L"AOL Child", nullptr);
    return className ? FindWindowExW(child, nullptr, className, nullptr) : child;
}

int loop()
{
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}

} // namespace

int run(HWND frame, const std::wstring& mode, const std::wstring& readyName)
{
    const HANDLE ready = CreateEventW(nullptr, TRUE, FALSE, readyName.c_str());
    AgentLink link;
    if (!link.connect(frame))
        return 10 + static_cast<int>(link.lastError());
    const HWND display = firstChild(frame, L"RICHCNTL");
    const HWND input = GetWindow(display, GW_HWNDNEXT);
    WindowHook hook;
    hook.WndMessageX = [&](HookMessage&) {
        if (mode != L"inside")
            return;
        SetEvent(ready);
        Sleep(INFINITE);
    };
    if (!hook.attach(link, input,
                     {WatchRule::key(WM_KEYDOWN, VK_RETURN), WatchRule::key(WM_CHAR, VK_RETURN)}))
        return 3;
    link.addMenuItem({L"&Help", 0, L""}, -1, 1212, L"Velora IM Manager");
    if (mode == L"holding") {
        g_top = CreateWindowExW(0, L"STATIC", L"companion", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 700,
                                50, 300, 300, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        if (!link.takeIM(firstChild(frame, nullptr), {710, 90, 960, 300}, g_top))
            return 4;
    }
    if (mode == L"once")
        return 0; // the link and the hook give everything back
    if (mode != L"inside")
        SetEvent(ready);
    return loop();
}

} // namespace velora::companion
