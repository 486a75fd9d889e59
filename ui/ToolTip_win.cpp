#include "ui/ToolTip.h"

#include "base/win_error.h"
#include "ui/Control.h"
#include "ui/Form.h"

#include <commctrl.h>

#include <string>

namespace velora {
namespace {
constexpr int kWrapWidth = 360;
constexpr UINT_PTR kBalloonId = 1;

HWND makeTip(HWND owner, DWORD style)
{
    const HWND tip = CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, TOOLTIPS_CLASSW, nullptr,
                                     WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP | style, 0, 0, 0, 0,
                                     owner, nullptr, GetModuleHandleW(nullptr), nullptr);
    if (!tip)
        throwLastError("a tooltip cannot be made");
    SendMessageW(tip, TTM_SETMAXTIPWIDTH, 0, kWrapWidth);
    return tip;
}

TOOLINFOW infoFor(HWND window, UINT_PTR id)
{
    TOOLINFOW info = {};
    info.cbSize = TTTOOLINFOW_V2_SIZE; // the longer one is refused by the controls of version 5
    info.hwnd = window;
    info.uId = id;
    return info;
}

TOOLINFOW infoFor(const Control& control)
{
    TOOLINFOW info = infoFor(GetParent(control.hwnd()), reinterpret_cast<UINT_PTR>(control.hwnd()));
    info.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    return info;
}

LRESULT send(HWND tip, UINT message, TOOLINFOW& info, WPARAM wParam = 0)
{
    return SendMessageW(tip, message, wParam, reinterpret_cast<LPARAM>(&info));
}
} // namespace

ToolTip::~ToolTip()
{
    // Their owner has destroyed them already when the form is closed.
    if (IsWindow(tip_))
        DestroyWindow(tip_);
    if (IsWindow(balloon_))
        DestroyWindow(balloon_);
}

void ToolTip::create(Form& form, bool balloonShape)
{
    tip_ = makeTip(form.hwnd(), balloonShape ? TTS_BALLOON : 0u);
}

void ToolTip::add(Control& control, std::wstring_view text)
{
    if (!control.hwnd() || !control.form())
        return;
    if (!tip_)
        create(*control.form());
    std::wstring words(text);
    TOOLINFOW info = infoFor(control);
    info.lpszText = words.data();
    TOOLINFOW known = infoFor(control);
    if (send(tip_, TTM_GETTOOLINFOW, known))
        send(tip_, TTM_UPDATETIPTEXTW, info);
    else
        send(tip_, TTM_ADDTOOLW, info);
}

void ToolTip::remove(Control& control)
{
    TOOLINFOW info = infoFor(control);
    if (tip_ && control.hwnd())
        send(tip_, TTM_DELTOOLW, info);
}

void ToolTip::setColours(COLORREF text, COLORREF background)
{
    colours_ = {text, background};
    applyColours(tip_);
    applyColours(balloon_);
}

void ToolTip::applyColours(HWND tip) const
{
    // A themed tip ignores its colours. The function is missing where there are no themes.
    using SetTheme = HRESULT(WINAPI*)(HWND, LPCWSTR, LPCWSTR);
    static const HMODULE themes = LoadLibraryW(L"uxtheme.dll");
    static const auto setTheme = reinterpret_cast<SetTheme>(
        reinterpret_cast<void*>(themes ? GetProcAddress(themes, "SetWindowTheme") : nullptr));
    if (!IsWindow(tip) || !colours_)
        return;
    if (setTheme)
        setTheme(tip, L"", L"");
    SendMessageW(tip, TTM_SETTIPTEXTCOLOR, colours_->first, 0);
    SendMessageW(tip, TTM_SETTIPBKCOLOR, colours_->second, 0);
}

void ToolTip::setBalloonShape(bool balloon)
{
    const DWORD style = balloon ? TTS_BALLOON : 0u;
    if (style == balloonStyle_)
        return;
    balloonStyle_ = style;
    hideTimer_.stop();
    if (IsWindow(balloon_))
        DestroyWindow(balloon_);
    balloon_ = nullptr;
}

void ToolTip::setDelays(int showAfterMs, int hideAfterMs)
{
    if (!tip_)
        return;
    SendMessageW(tip_, TTM_SETDELAYTIME, TTDT_INITIAL, showAfterMs);
    SendMessageW(tip_, TTM_SETDELAYTIME, TTDT_AUTOPOP, hideAfterMs);
}

void ToolTip::showBalloon(Form& form, Point at, std::wstring_view title, std::wstring_view text,
                          Sign sign, UINT milliseconds)
{
    hideBalloon();
    if (!IsWindow(balloon_)) {
        balloon_ = makeTip(form.hwnd(), balloonStyle_ ? balloonStyle_ | TTS_CLOSE : 0u);
        applyColours(balloon_);
    }
    std::wstring words(text);
    TOOLINFOW info = infoFor(form.hwnd(), kBalloonId);
    info.uFlags = TTF_TRACK | TTF_ABSOLUTE;
    info.lpszText = words.data();
    send(balloon_, TTM_ADDTOOLW, info);
    SendMessageW(balloon_, TTM_SETTITLEW, static_cast<WPARAM>(sign),
                 reinterpret_cast<LPARAM>(std::wstring(title).c_str()));
    SendMessageW(balloon_, TTM_TRACKPOSITION, 0, MAKELPARAM(at.x, at.y));
    send(balloon_, TTM_TRACKACTIVATE, info, TRUE);
    hideTimer_.startOnce(milliseconds, [this] { hideBalloon(); });
}

void ToolTip::hideBalloon()
{
    hideTimer_.stop();
    if (!IsWindow(balloon_))
        return;
    TOOLINFOW info = infoFor(GetWindow(balloon_, GW_OWNER), kBalloonId);
    send(balloon_, TTM_TRACKACTIVATE, info, FALSE);
    send(balloon_, TTM_DELTOOLW, info);
}

} // namespace velora
