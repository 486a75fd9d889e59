#pragma once
// The stand-in's windows. A Window object lives exactly as long as its window: it is made with
// `new`, created, and deletes itself when the window is gone.
#include "base/win.h"

#include <string>
#include <utility>

namespace aolhost {

class Window {
public:
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window() = default;

    HWND hwnd() const noexcept { return hwnd_; }
    HWND parent() const noexcept { return GetParent(hwnd_); }
    /// True for a class that was registered in its ANSI form.
    bool ansi() const noexcept { return ansi_; }

    std::wstring text() const;
    void setText(const std::wstring& text);
    void place(int x, int y, int width, int height);
    void show(bool visible);
    RECT client() const;
    /// Sends as code of the window's own kind does, through whatever subclasses it.
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    /// The object of one of our windows; null for any other.
    static Window* of(HWND window);

    struct Shape {
        const wchar_t* className;
        std::wstring caption = {};
        DWORD style = WS_CHILD | WS_VISIBLE;
        DWORD exStyle = 0;
        int x = 0, y = 0, width = 0, height = 0;
        HWND parent = nullptr;
        HMENU menuOrId = nullptr;
    };

protected:
    Window() = default;
    /// Creates the window. Throws std::runtime_error when Windows refuses it.
    void create(const Shape& shape);
    /// Makes the next window of our classes that comes to life belong to this object, for ways of
    /// creation that are not CreateWindowEx's own.
    void expectWindow();

    virtual LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam);
    /// What the window's class does with the message by itself.
    virtual LRESULT classDefault(UINT message, WPARAM wParam, LPARAM lParam);

private:
    friend struct WindowClasses;
    static LRESULT CALLBACK procedure(HWND, UINT, WPARAM, LPARAM) noexcept;
    HWND hwnd_ = nullptr;
    WNDPROC base_ = nullptr;
    bool ansi_ = false;
};

/// Registration of window classes whose windows are Window objects.
struct WindowClasses {
    /// A class of our own.
    static void add(const wchar_t* name, HBRUSH background, UINT style = 0, HICON icon = nullptr);
    /// A class made from one of the system's. `ansi`: from and as the ANSI form.
    static void derive(const wchar_t* name, const wchar_t* systemClass, bool ansi = false);
    /// False while a window of the class exists.
    static bool remove(const wchar_t* name);
};

} // namespace aolhost
