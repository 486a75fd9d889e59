#include "aolhost/Window.h"

#include "aolhost/Text.h"

#include <cstdio>
#include <map>
#include <stdexcept>
#include <unordered_map>

namespace aolhost {
namespace {

struct Base {
    WNDPROC procedure;
    bool ansi;
};

std::map<std::wstring, Base>& bases()
{
    static std::map<std::wstring, Base> all;
    return all;
}

std::unordered_map<HWND, Window*>& windows()
{
    static std::unordered_map<HWND, Window*> all;
    return all;
}

Window* g_expected = nullptr;

} // namespace

std::wstring Window::text() const
{
    std::wstring buffer(static_cast<std::size_t>(SendMessageW(hwnd_, WM_GETTEXTLENGTH, 0, 0)) + 1,
                        L'\0');
    const LRESULT length =
        SendMessageW(hwnd_, WM_GETTEXT, buffer.size(), reinterpret_cast<LPARAM>(buffer.data()));
    buffer.resize(static_cast<std::size_t>(length));
    return buffer;
}

void Window::setText(const std::wstring& text)
{
    SetWindowTextW(hwnd_, text.c_str());
}

void Window::place(int x, int y, int width, int height)
{
    SetWindowPos(hwnd_, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

void Window::show(bool visible)
{
    ShowWindow(hwnd_, visible ? SW_SHOWNA : SW_HIDE);
}

RECT Window::client() const
{
    RECT area{};
    GetClientRect(hwnd_, &area);
    return area;
}

LRESULT Window::send(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return ansi_ ? SendMessageA(hwnd_, message, wParam, lParam)
                 : SendMessageW(hwnd_, message, wParam, lParam);
}

Window* Window::of(HWND window)
{
    const auto found = windows().find(window);
    return found == windows().end() ? nullptr : found->second;
}

void Window::create(const Shape& shape)
{
    expectWindow();
    const auto base = bases().find(shape.className);
    const HINSTANCE module = GetModuleHandleW(nullptr);
    HWND made = nullptr;
    if (base != bases().end() && base->second.ansi)
        made = CreateWindowExA(shape.exStyle, toAnsi(shape.className).c_str(),
                               toAnsi(shape.caption).c_str(), shape.style, shape.x, shape.y,
                               shape.width, shape.height, shape.parent, shape.menuOrId, module,
                               nullptr);
    else
        made = CreateWindowExW(shape.exStyle, shape.className, shape.caption.c_str(), shape.style,
                               shape.x, shape.y, shape.width, shape.height, shape.parent,
                               shape.menuOrId, module, nullptr);
    if (!made) {
        g_expected = nullptr;
        throw std::runtime_error("no window of class " + toUtf8(shape.className));
    }
}

void Window::expectWindow()
{
    g_expected = this;
}

LRESULT Window::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    return classDefault(message, wParam, lParam);
}

LRESULT Window::classDefault(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (base_)
        return ansi_ ? CallWindowProcA(base_, hwnd_, message, wParam, lParam)
                     : CallWindowProcW(base_, hwnd_, message, wParam, lParam);
    return DefWindowProcW(hwnd_, message, wParam, lParam);
}

LRESULT CALLBACK Window::procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    try {
        Window* self = of(hwnd);
        if (!self && g_expected) {
            self = std::exchange(g_expected, nullptr);
            self->hwnd_ = hwnd;
            wchar_t name[64];
            GetClassNameW(hwnd, name, 64);
            const auto base = bases().find(name);
            if (base != bases().end()) {
                self->base_ = base->second.procedure;
                self->ansi_ = base->second.ansi;
            }
            windows()[hwnd] = self;
        }
        if (!self)
            return DefWindowProcW(hwnd, message, wParam, lParam);
        const LRESULT result = self->handle(message, wParam, lParam);
        if (message == WM_NCDESTROY) {
            windows().erase(hwnd);
            delete self;
        }
        return result;
    } catch (const std::exception& error) {
        // An exception must not reach Windows; a stand-in that goes on shows the fault in a test.
        std::fprintf(stderr, "waol: message %u: %s\n", message, error.what());
        return 0;
    }
}

void WindowClasses::add(const wchar_t* name, HBRUSH background, UINT style, HICON icon)
{
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.style = style;
    wc.lpfnWndProc = Window::procedure;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = background;
    wc.lpszClassName = name;
    wc.hIcon = icon;
    if (!RegisterClassExW(&wc))
        throw std::runtime_error("class " + toUtf8(name));
}

void WindowClasses::derive(const wchar_t* name, const wchar_t* systemClass, bool ansi)
{
    const HINSTANCE module = GetModuleHandleW(nullptr);
    bool done = false;
    if (ansi) {
        WNDCLASSEXA wc{};
        wc.cbSize = sizeof wc;
        const std::string narrow = toAnsi(name);
        done = GetClassInfoExA(nullptr, toAnsi(systemClass).c_str(), &wc) != 0;
        bases()[name] = {wc.lpfnWndProc, true};
        wc.lpfnWndProc = Window::procedure;
        wc.hInstance = module;
        wc.lpszClassName = narrow.c_str();
        wc.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
        done = done && RegisterClassExA(&wc);
    } else {
        WNDCLASSEXW wc{};
        wc.cbSize = sizeof wc;
        done = GetClassInfoExW(nullptr, systemClass, &wc) != 0;
        bases()[name] = {wc.lpfnWndProc, false};
        wc.lpfnWndProc = Window::procedure;
        wc.hInstance = module;
        wc.lpszClassName = name;
        wc.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
        done = done && RegisterClassExW(&wc);
    }
    if (!done)
        throw std::runtime_error("class " + toUtf8(name));
}

bool WindowClasses::remove(const wchar_t* name)
{
    return UnregisterClassW(name, GetModuleHandleW(nullptr)) != 0;
}

} // namespace aolhost
