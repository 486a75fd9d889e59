#include "support/drive_win.h"

#include "base/text.h"
#include "ui/Form.h"
#include "ui/MessageLoop.h"
#include "ui/WinGeometry.h"

namespace velora::drive {
namespace {

std::wstring withoutMnemonic(const std::wstring& text)
{
    std::wstring result;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != L'&' || (++i < text.size()))
            result += text[i];
    return result;
}

std::wstring className(HWND window)
{
    wchar_t name[128] = {};
    GetClassNameW(window, name, 128);
    return name;
}

BOOL CALLBACK collect(HWND window, LPARAM list) noexcept
{
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

void sendKey(WORD virtualKey, bool up, wchar_t unicode = 0)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtualKey;
    input.ki.wScan =
        unicode ? unicode : static_cast<WORD>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = (up ? KEYEVENTF_KEYUP : 0u) | (unicode ? KEYEVENTF_UNICODE : 0u);
    SendInput(1, &input, sizeof input);
}

void sendMouse(DWORD flags)
{
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    SendInput(1, &input, sizeof input);
}

bool clickable(HWND window)
{
    return IsWindow(window) && IsWindowVisible(window) && IsWindowEnabled(window)
           && IsWindowEnabled(GetAncestor(window, GA_ROOT));
}

BOOL CALLBACK findMenus(HWND window, LPARAM found) noexcept
{
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    if (std::wstring_view(name) == L"#32768" && IsWindowVisible(window))
        reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
    return TRUE;
}

std::vector<HWND> openMenus()
{
    std::vector<HWND> found;
    EnumWindows(findMenus, reinterpret_cast<LPARAM>(&found));
    return found;
}

/// The middle of the item with this text in one of the open menus.
std::optional<POINT> menuItem(std::wstring_view text)
{
    for (const HWND window : openMenus()) {
        const auto menu = reinterpret_cast<HMENU>(SendMessageW(window, MN_GETHMENU, 0, 0));
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
            wchar_t caption[100] = {};
            RECT place;
            GetMenuStringW(menu, static_cast<UINT>(i), caption, 100, MF_BYPOSITION);
            if (withoutMnemonic(caption) == text
                && GetMenuItemRect(nullptr, menu, static_cast<UINT>(i), &place))
                return POINT{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
        }
    }
    return std::nullopt;
}

} // namespace

bool until(const std::function<bool()>& condition, DWORD milliseconds)
{
    return waitUntil(condition, milliseconds);
}

HWND window(std::wstring_view caption, DWORD milliseconds)
{
    HWND found = nullptr;
    until(
        [&] {
            std::vector<HWND> all;
            EnumWindows(collect, reinterpret_cast<LPARAM>(&all));
            for (HWND candidate : all) {
                // Not WM_GETTEXT: a window of another program may hang.
                wchar_t text[512] = {};
                if (!IsWindowVisible(candidate))
                    continue;
                GetWindowTextW(candidate, text, 512);
                if (caption == text)
                    found = candidate;
            }
            return found != nullptr;
        },
        milliseconds);
    return found;
}

bool gone(HWND window, DWORD milliseconds)
{
    return until([&] { return !IsWindow(window); }, milliseconds);
}

std::wstring text(HWND window)
{
    DWORD_PTR length = 0;
    constexpr UINT kLimit = 2000;
    if (!SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, kLimit, &length))
        return {};
    std::wstring result(length, L'\0');
    DWORD_PTR copied = 0;
    if (!SendMessageTimeoutW(window, WM_GETTEXT, length + 1,
                             reinterpret_cast<LPARAM>(result.data()), SMTO_ABORTIFHUNG, kLimit,
                             &copied))
        return {};
    result.resize(copied);
    return withoutMnemonic(result);
}

std::vector<HWND> children(HWND window)
{
    std::vector<HWND> result;
    EnumChildWindows(window, collect, reinterpret_cast<LPARAM>(&result));
    return result;
}

HWND child(HWND window, std::wstring_view textOrClass)
{
    const auto all = children(window);
    for (HWND candidate : all)
        if (text(candidate) == textOrClass)
            return candidate;
    for (HWND candidate : all)
        if (equalNoCase(className(candidate), textOrClass))
            return candidate;
    return nullptr;
}

bool activate(HWND window)
{
    // In front is not enough: keys sent before one of its controls has the focus are lost.
    constexpr DWORD kFocusLimit = 1000;
    DWORD inFrontSince = 0;
    return until([&] {
        if (GetForegroundWindow() == window) {
            if (!inFrontSince)
                inFrontSince = GetTickCount() | 1;
            GUITHREADINFO info{};
            info.cbSize = sizeof info;
            GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
            return (info.hwndFocus && (info.hwndFocus == window || IsChild(window, info.hwndFocus)))
                   || GetTickCount() - inFrontSince > kFocusLimit;
        }
        SetForegroundWindow(window);
        BringWindowToTop(window);
        return false;
    });
}

bool clickAt(HWND window, int x, int y, bool right)
{
    // Nothing may lie over the place: the click would go elsewhere, as a user's would. And a window
    // that has just come up may still be moved to its place by the window manager.
    constexpr int kSettled = 3;
    POINT at = {};
    int same = 0;
    const auto ready = [&] {
        POINT now = {x, y};
        ClientToScreen(window, &now);
        same = now.x == at.x && now.y == at.y ? same + 1 : 0;
        at = now;
        return same >= kSettled && clickable(window) && WindowFromPoint(at) == window;
    };
    if (!until(ready))
        return false;
    SetCursorPos(at.x, at.y);
    sendMouse(right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN);
    sendMouse(right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP);
    return true;
}

bool click(HWND window, bool right)
{
    const Size size = clientSize(window);
    return clickAt(window, size.width / 2, size.height / 2, right);
}

bool menuIsOpen()
{
    return !openMenus().empty();
}

bool press(HWND window, std::wstring_view buttonText)
{
    HWND button = nullptr;
    const bool found = until([&] {
        for (HWND candidate : children(window))
            if (equalNoCase(className(candidate), L"Button") && text(candidate) == buttonText
                && clickable(candidate))
                button = candidate;
        return button != nullptr;
    });
    return found && click(button);
}

void key(WORD virtualKey, std::initializer_list<WORD> modifiers)
{
    for (WORD modifier : modifiers)
        sendKey(modifier, false);
    sendKey(virtualKey, false);
    sendKey(virtualKey, true);
    for (WORD modifier : modifiers)
        sendKey(modifier, true);
}

void type(std::wstring_view text)
{
    for (wchar_t c : text) {
        const SHORT scan = VkKeyScanW(c);
        const WORD virtualKey = LOBYTE(scan);
        if (scan == -1 || HIBYTE(scan) > 1) {
            sendKey(0, false, c);
            sendKey(0, true, c);
        } else if (HIBYTE(scan) == 1) {
            key(virtualKey, {VK_SHIFT});
        } else {
            key(virtualKey);
        }
    }
}

std::wstring clipboardText()
{
    std::wstring result;
    if (!until([] { return OpenClipboard(nullptr) != 0; }, 1000))
        return result;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
        if (const void* words = GlobalLock(data)) {
            result = static_cast<const wchar_t*>(words);
            GlobalUnlock(data);
        }
    }
    CloseClipboard();
    return result;
}

void clearClipboard()
{
    if (!until([] { return OpenClipboard(nullptr) != 0; }, 1000))
        return;
    EmptyClipboard();
    CloseClipboard();
}

Script::Script(std::function<void()> script) : script_(std::move(script))
{
    start_.startOnce(1, [this] { run(); });
}

void Script::run()
{
    try {
        script_();
        done_ = true;
    } catch (...) {
        Form::unloadAll();
        throw;
    }
    guard_.startOnce(kPatience, [this] {
        done_ = false;
        Form::unloadAll();
    });
}

MenuPick::MenuPick(std::vector<std::wstring> items) : items_(std::move(items))
{
    look_.start(50, [this] { look(); });
}

void MenuPick::look()
{
    const auto at = items_.empty() ? std::nullopt : menuItem(items_.front());
    if (!at)
        return;
    items_.erase(items_.begin());
    SetCursorPos(at->x, at->y);
    sendMouse(MOUSEEVENTF_LEFTDOWN);
    sendMouse(MOUSEEVENTF_LEFTUP);
}

} // namespace velora::drive
