// Shows one empty window until it is closed; see startup_win_bench.cpp.
#include "base/win.h"

namespace {

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_DESTROY)
        PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, char*, int)
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = windowProcedure;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = L"Empty";
    RegisterClassW(&windowClass);
    CreateWindowExW(0, L"Empty", L"Empty window", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 200,
                    100, nullptr, nullptr, instance, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    return 0;
}
