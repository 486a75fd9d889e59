#include "ui/Control.h"

#include "base/trap.h"
#include "base/win_error.h"
#include "ui/Fonts.h"
#include "ui/Form.h"
#include "ui/WinGeometry.h"

#include <algorithm>

namespace velora {

std::wstring windowText(HWND window)
{
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)), L'\0');
    if (text.empty())
        return text;
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(std::max(0, length)));
    return text;
}

Control::~Control()
{
    if (form_)
        std::erase(form_->controls_, this);
    if (hwnd_) {
        const HWND window = hwnd_;
        release();
        DestroyWindow(window);
    }
    if (brush_)
        DeleteObject(brush_);
}

// Ends the bond with the window; the window itself may live on or be dying.
void Control::release()
{
    if (hwnd_ && original_)
        SetWindowLongPtrW(hwnd_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(original_));
    if (hwnd_)
        SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0);
    hwnd_ = nullptr;
    original_ = nullptr;
    form_ = nullptr;
}

void Control::createWindow(Form& form, const wchar_t* windowClass, std::wstring_view text,
                           DWORD style, DWORD exStyle)
{
    // One count for a form and the pages in it: for Enter the system looks for the default button's
    // number among all of them.
    Form* const root = Form::fromWindow(GetAncestor(form.hwnd(), GA_ROOT));
    const auto id =
        reinterpret_cast<HMENU>(static_cast<INT_PTR>((root ? root : &form)->nextControlId()));
    hwnd_ = CreateWindowExW(exStyle, windowClass, std::wstring(text).c_str(),
                            style | WS_CHILD | (shown_ ? WS_VISIBLE : 0u), 0, 0, 0, 0, form.hwnd(),
                            id, GetModuleHandleW(nullptr), nullptr);
    if (!hwnd_)
        throwLastError("a control cannot be made");
    form_ = &form;
    form.controls_.push_back(this);
    SetWindowLongPtrW(hwnd_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    setFont(font_ ? font_ : uiFont());
}

void Control::remakeWindow(const wchar_t* windowClass, DWORD style)
{
    Form& form = *form_;
    const HWND former = hwnd_, before = GetWindow(former, GW_HWNDPREV);
    const Rect where = place();
    const std::wstring name = text();
    std::erase(form.controls_, this);
    release();
    DestroyWindow(former);
    createWindow(form, windowClass, name, style);
    SetWindowPos(hwnd_, before ? before : HWND_TOP, where.left, where.top, where.right - where.left,
                 where.bottom - where.top, SWP_NOACTIVATE);
}

// Only windows that a control made carry its address: a control's parent is a form of ours, and
// both keep their user data to themselves.
Control* Control::fromWindow(HWND window)
{
    if (!window || !Form::fromWindow(window))
        return nullptr;
    Form* const form = Form::fromWindow(window);
    for (Control* control : form->controls_)
        if (control->hwnd_ == window)
            return control;
    return nullptr;
}

void Control::subclass()
{
    original_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(hwnd_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Control::subclassProc)));
}

LRESULT CALLBACK Control::subclassProc(HWND window, UINT message, WPARAM wParam,
                                       LPARAM lParam) noexcept
{
    auto* const control = reinterpret_cast<Control*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!control || !control->original_)
        return DefWindowProcW(window, message, wParam, lParam);
    const WNDPROC original = control->original_;
    try {
        if (const auto answer = control->onMessage(message, wParam, lParam))
            return *answer;
    } catch (...) {
        reportCurrentException(control->form_ ? control->form_->name() : "Control", "onMessage");
    }
    return CallWindowProcW(original, window, message, wParam, lParam);
}

std::optional<LRESULT> Control::pressQuietly(UINT message, LPARAM lParam)
{
    if (!form_ || form_->takesFocus())
        return std::nullopt;
    const auto inside = [&] {
        const POINT at = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
        RECT r = {};
        GetClientRect(hwnd_, &r);
        return PtInRect(&r, at) != FALSE;
    };
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        held_ = true;
        SetCapture(hwnd_);
        send(BM_SETSTATE, TRUE);
        return 0;
    case WM_MOUSEMOVE:
        if (!held_)
            return std::nullopt;
        send(BM_SETSTATE, inside());
        return 0;
    case WM_LBUTTONUP:
        if (!held_)
            return 0;
        ReleaseCapture(); // WM_CAPTURECHANGED draws it released
        if (inside())
            SendMessageW(form_->hwnd(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(hwnd_), BN_CLICKED),
                         reinterpret_cast<LPARAM>(hwnd_));
        return 0;
    case WM_CAPTURECHANGED:
        if (held_) {
            held_ = false;
            send(BM_SETSTATE, FALSE);
        }
        return std::nullopt;
    default: return std::nullopt;
    }
}

std::wstring Control::text() const
{
    return hwnd_ ? windowText(hwnd_) : std::wstring();
}

void Control::setText(std::wstring_view text)
{
    if (hwnd_)
        SetWindowTextW(hwnd_, std::wstring(text).c_str());
}

void Control::show(bool visible)
{
    shown_ = visible;
    if (hwnd_)
        ShowWindow(hwnd_, visible ? SW_SHOWNOACTIVATE : SW_HIDE);
}

void Control::enable(bool enabled)
{
    if (!hwnd_)
        return;
    // A disabled control that keeps the focus would swallow the keyboard.
    if (!enabled && GetFocus() == hwnd_ && form_)
        SendMessageW(form_->hwnd(), WM_NEXTDLGCTL, 0, FALSE);
    EnableWindow(hwnd_, enabled);
}

bool Control::enabled() const
{
    return hwnd_ && IsWindowEnabled(hwnd_);
}

void Control::focus()
{
    if (hwnd_)
        SetFocus(hwnd_);
}

bool Control::focused() const
{
    return hwnd_ && GetFocus() == hwnd_;
}

void Control::setFont(HFONT font)
{
    font_ = font;
    send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

void Control::setColours(COLORREF text, COLORREF background)
{
    textColour_ = text;
    backColour_ = background;
    if (brush_)
        DeleteObject(brush_);
    brush_ = CreateSolidBrush(background);
    redraw();
}

HBRUSH Control::colour(HDC dc)
{
    if (!backColour_)
        return nullptr;
    SetTextColor(dc, *textColour_);
    SetBkColor(dc, *backColour_);
    return brush_;
}

Rect Control::screenPlace() const
{
    return hwnd_ ? windowRect(hwnd_) : Rect{};
}

Rect Control::place() const
{
    if (!hwnd_)
        return {};
    RECT r = toRECT(windowRect(hwnd_));
    MapWindowPoints(nullptr, GetParent(hwnd_), reinterpret_cast<POINT*>(&r), 2);
    return fromRECT(r);
}

void Control::place(const Rect& where)
{
    if (hwnd_)
        SetWindowPos(hwnd_, nullptr, where.left, where.top, where.width(), where.height(),
                     SWP_NOZORDER | SWP_NOACTIVATE);
}

void Control::redraw()
{
    if (hwnd_)
        InvalidateRect(hwnd_, nullptr, TRUE);
}

Size Control::preferredSize() const
{
    const Size natural = naturalSize();
    return {wanted_.width ? wanted_.width : natural.width,
            wanted_.height ? wanted_.height : natural.height};
}

Size Control::naturalSize() const
{
    return textSize(font_ ? font_ : uiFont(), text());
}

LRESULT Control::send(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return hwnd_ ? SendMessageW(hwnd_, message, wParam, lParam) : 0;
}

} // namespace velora
