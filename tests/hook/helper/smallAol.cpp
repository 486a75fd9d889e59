// A small AOL for the hook tests: frame, menus, MDI client, children with a rich text display and
// an input box. It counts what reaches it, which the tests ask for.
#include "base/win.h"
#include "hook/helper/protocol.h"

#include <psapi.h>
#include <richedit.h>
#include <string>

namespace velora::smallaol {
namespace {

HINSTANCE g_module;
HWND g_frame, g_mdi;
bool g_ansi;
int g_counter[16];
WNDPROC g_editProc, g_displayProc, g_overlaid;
HWND g_overlaidWindow;

LRESULT CALLBACK inputProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (wParam == VK_RETURN) {
        g_counter[kEnterDown] += message == WM_KEYDOWN;
        g_counter[kEnterChar] += message == WM_CHAR;
        g_counter[kEnterUp] += message == WM_KEYUP;
    }
    return g_ansi ? CallWindowProcA(g_editProc, window, message, wParam, lParam)
                  : CallWindowProcW(g_editProc, window, message, wParam, lParam);
}

LRESULT CALLBACK displayProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == kNotice) {
        ++g_counter[kNotices];
        return 0;
    }
    return g_ansi ? CallWindowProcA(g_displayProc, window, message, wParam, lParam)
                  : CallWindowProcW(g_displayProc, window, message, wParam, lParam);
}

LRESULT CALLBACK overlayProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    ++g_counter[kOverlaid];
    return g_ansi ? CallWindowProcA(g_overlaid, window, message, wParam, lParam)
                  : CallWindowProcW(g_overlaid, window, message, wParam, lParam);
}

WNDPROC subclass(HWND window, WNDPROC proc)
{
    const LONG value = reinterpret_cast<LONG>(proc);
    return reinterpret_cast<WNDPROC>(g_ansi ? SetWindowLongA(window, GWL_WNDPROC, value)
                                            : SetWindowLongW(window, GWL_WNDPROC, value));
}

HWND richEdit(HWND parent, DWORD style, int id, int top, int height)
{
    const DWORD all = style | WS_CHILD | WS_VISIBLE | ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL;
    const HMENU menu = reinterpret_cast<HMENU>(id);
    return g_ansi ? CreateWindowExA(0, "RICHCNTL", "", all, 0, top, 300, height, parent, menu,
                                    g_module, nullptr)
                  : CreateWindowExW(0, L"RICHCNTL", L"", all, 0, top, 300, height, parent, menu,
                                    g_module, nullptr);
}

void buildControls(HWND child)
{
    const HWND display = richEdit(child, ES_READONLY, 1, 0, 150);
    const HWND input = richEdit(child, 0, 2, 160, 40);
    SendMessageW(display, EM_LIMITTEXT, 1 << 22, 0);
    g_displayProc = subclass(display, displayProc);
    g_editProc = subclass(input, inputProc);
}

LRESULT CALLBACK childProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_TIMER) {
        KillTimer(window, wParam);
        buildControls(window);
        return 0;
    }
    return DefMDIChildProcW(window, message, wParam, lParam);
}

LRESULT openChild(WPARAM way, LPARAM late)
{
    HWND child = nullptr;
    const DWORD style = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
    if (way == kByMessage) {
        MDICREATESTRUCTW create = {L"AOL Child", L"Untitled", g_module, 20, 20, 400, 300, style, 0};
        child = reinterpret_cast<HWND>(
            SendMessageW(g_mdi, WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&create)));
    } else {
        child = CreateWindowExW(way == kByExStyle ? WS_EX_MDICHILD : 0, L"AOL Child", L"Untitled",
                                WS_CHILD | WS_CLIPSIBLINGS | style, 20, 20, 400, 300, g_mdi,
                                nullptr, g_module, nullptr);
    }
    if (late)
        SetTimer(child, 1, static_cast<UINT>(late), nullptr);
    else
        buildControls(child);
    return reinterpret_cast<LRESULT>(child);
}

LRESULT say(HWND display, LPARAM lines)
{
    static int number = 0;
    for (LPARAM i = 0; i < lines; ++i) {
        wchar_t line[200];
        wsprintfW(line, L"%sGuest %d:\tthis is line number %d and it has words enough to wrap",
                  GetWindowTextLengthW(display) ? L"\r\n" : L"", number % 7, number);
        ++number;
        SendMessageW(display, EM_SETSEL, 1 << 30, 1 << 30);
        SendMessageW(display, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(line));
        SendMessageW(display, kNotice, 0, 0);
    }
    return number;
}

HMENU makeMenu()
{
    const HMENU file = CreatePopupMenu(), help = CreatePopupMenu(), bar = CreateMenu();
    AppendMenuW(file, MF_STRING, 101, L"E&xit\tAlt+F4");
    AppendMenuW(help, MF_STRING, kAboutId, L"&About America Online");
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), L"&File");
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(help), L"&Help");
    return bar;
}

LRESULT resources(WPARAM kind)
{
    DWORD count = 0;
    if (kind == 0)
        GetProcessHandleCount(GetCurrentProcess(), &count);
    else
        count = GetGuiResources(GetCurrentProcess(), kind == 1 ? GR_USEROBJECTS : GR_GDIOBJECTS);
    return static_cast<LRESULT>(count);
}

LRESULT overlay(HWND window, bool on)
{
    if (on) {
        g_overlaidWindow = window;
        g_overlaid = subclass(window, overlayProc);
    } else {
        subclass(g_overlaidWindow, g_overlaid);
    }
    return 1;
}

LRESULT popup(WPARAM position)
{
    const HMENU opened = GetSubMenu(GetMenu(g_frame), static_cast<int>(position));
    SendMessageW(g_frame, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(opened),
                 static_cast<LPARAM>(position));
    return GetMenuItemCount(opened);
}

LRESULT isSubclassed(HWND window)
{
    const LONG proc =
        g_ansi ? GetWindowLongA(window, GWL_WNDPROC) : GetWindowLongW(window, GWL_WNDPROC);
    return proc != reinterpret_cast<LONG>(inputProc) && proc != reinterpret_cast<LONG>(displayProc);
}

LRESULT control(UINT message, WPARAM wParam, LPARAM lParam)
{
    const HMENU bar = GetMenu(g_frame);
    const HWND window = reinterpret_cast<HWND>(wParam);
    switch (message) {
    case kOpenChild: return openChild(wParam, lParam);
    case kControl: return reinterpret_cast<LRESULT>(GetDlgItem(window, lParam ? 2 : 1));
    case kHang: Sleep(wParam); return 0;
    case kSay: return say(window, lParam);
    case kCount: return g_counter[wParam];
    case kOverlay: return overlay(window, lParam != 0);
    case kResources: return resources(wParam);
    case kNewMenu:
        SetMenu(g_frame, makeMenu());
        DestroyMenu(bar);
        return 1;
    case kPopup: return popup(wParam);
    case kPopupItem:
        return static_cast<LRESULT>(
            GetMenuItemID(GetSubMenu(bar, static_cast<int>(wParam)), static_cast<int>(lParam)));
    case kMenuLeft: return GetMenuState(bar, static_cast<UINT>(wParam), MF_BYCOMMAND) != ~0u;
    case kFocus: return reinterpret_cast<LRESULT>(GetFocus());
    case kRaw: return isSubclassed(window);
    default: return 0;
    }
}

LRESULT CALLBACK frameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_COMMAND && HIWORD(wParam) == 0 && lParam == 0)
        ++g_counter[kCommands];
    if (message >= kOpenChild && message <= kRaw)
        return control(message, wParam, lParam);
    if (message == WM_DESTROY)
        PostQuitMessage(0);
    return DefFrameProcW(window, g_mdi, message, wParam, lParam);
}

void registerClasses()
{
    WNDCLASSW frame = {};
    frame.lpfnWndProc = frameProc;
    frame.hInstance = g_module;
    frame.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
    frame.lpszClassName = L"AOL Frame25";
    RegisterClassW(&frame);
    WNDCLASSW child = frame;
    child.lpfnWndProc = childProc;
    child.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    child.lpszClassName = L"AOL Child";
    RegisterClassW(&child);
    // AOL's rich text is a class of its own over the system's.
    if (g_ansi) {
        WNDCLASSA rich = {};
        GetClassInfoA(nullptr, "RichEdit20A", &rich);
        rich.hInstance = g_module;
        rich.lpszClassName = "RICHCNTL";
        RegisterClassA(&rich);
    } else {
        WNDCLASSW rich = {};
        GetClassInfoW(nullptr, L"RichEdit20W", &rich);
        rich.hInstance = g_module;
        rich.lpszClassName = L"RICHCNTL";
        RegisterClassW(&rich);
    }
}

} // namespace

int run(const std::wstring& title, bool ansi)
{
    g_module = GetModuleHandleW(nullptr);
    g_ansi = ansi;
    LoadLibraryW(L"riched20.dll");
    registerClasses();
    g_frame =
        CreateWindowExW(0, L"AOL Frame25", title.c_str(), WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 50,
                        50, 600, 480, nullptr, makeMenu(), g_module, nullptr);
    CLIENTCREATESTRUCT client = {nullptr, 50000};
    g_mdi = CreateWindowExW(0, L"MDIClient", L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                            580, 420, g_frame, nullptr, g_module, &client);
    ShowWindow(g_frame, SW_SHOW);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        // The tests' "hang" arrives as a message of the thread's own, so that sent ones wait too.
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}

} // namespace velora::smallaol
