#include "ui/ImageButton.h"

#include "ui/Fonts.h"
#include "ui/WinGeometry.h"

#include <commctrl.h>

namespace velora {
namespace {
constexpr int kFrame = 4; // around a drawn picture: the edge and the focus
constexpr int kPadding = 4;
constexpr int kBetween = 4; // picture and name

std::wstring plainName(const std::wstring& name)
{
    std::wstring result;
    for (wchar_t c : name)
        if (c != L'&')
            result += c;
    return result;
}
} // namespace

void ImageButton::create(Form& form, std::wstring_view name, HICON icon,
                         std::function<void()> clicked, bool tabStop)
{
    icon_ = icon;
    onClick = std::move(clicked);
    createWindow(form, WC_BUTTONW, name, BS_OWNERDRAW | BS_NOTIFY | (tabStop ? WS_TABSTOP : 0u));
    subclass();
}

void ImageButton::setIcon(HICON icon, int size)
{
    icon_ = icon;
    iconSize_ = size;
    redraw();
}

void ImageButton::setPainter(std::function<void(HDC, const Rect&, const ButtonState&)> paint)
{
    paint_ = std::move(paint);
    redraw();
}

void ImageButton::setChecked(bool checked)
{
    checked_ = checked;
    redraw();
}

void ImageButton::showName(bool show)
{
    showName_ = show;
    redraw();
}

void ImageButton::click()
{
    send(BM_CLICK);
}

Size ImageButton::naturalSize() const
{
    Size size{iconSize_ + 2 * kPadding, iconSize_ + 2 * kPadding};
    if (showName_)
        size.width += kBetween + textSize(font() ? font() : uiFont(), plainName(text())).width;
    return size;
}

void ImageButton::onCommand(int code)
{
    // A quick second click is a double click to the system and a click to the user.
    if ((code != BN_CLICKED && code != BN_DBLCLK) || !onClick)
        return;
    const auto clicked = onClick; // the handler may end the form and this button with it
    clicked();
}

void ImageButton::onDraw(const DRAWITEMSTRUCT& item)
{
    ButtonState state;
    state.pressed = item.itemState & ODS_SELECTED;
    state.disabled = item.itemState & ODS_DISABLED;
    state.focused = (item.itemState & ODS_FOCUS) && !(item.itemState & ODS_NOFOCUSRECT);
    state.hot = hot_ && !state.disabled;
    state.checked = checked_;

    RECT r = item.rcItem;
    const bool down = state.pressed || state.checked;
    FillRect(item.hDC, &r,
             GetSysColorBrush(state.checked && !state.hot ? COLOR_3DLIGHT : COLOR_BTNFACE));
    if (down || state.hot)
        DrawEdge(item.hDC, &r, down ? BDR_SUNKENOUTER : BDR_RAISEDINNER, BF_RECT);
    if (state.focused) {
        RECT focus = r;
        InflateRect(&focus, -2, -2);
        DrawFocusRect(item.hDC, &focus);
    }
    const int shift = state.pressed ? 1 : 0;
    Rect picture = rectOf({kPadding + shift, (static_cast<int>(r.bottom) - iconSize_) / 2 + shift},
                          {iconSize_, iconSize_});
    if (!showName_)
        picture = centredIn(
            {shift, shift, static_cast<int>(r.right) + shift, static_cast<int>(r.bottom) + shift},
            {iconSize_, iconSize_});
    if (paint_ && !showName_)
        paint_(item.hDC,
               Rect{kFrame + shift, kFrame + shift, static_cast<int>(r.right) - kFrame + shift,
                    static_cast<int>(r.bottom) - kFrame + shift},
               state);
    else if (paint_)
        paint_(item.hDC, picture, state);
    else if (icon_ && state.disabled)
        DrawStateW(item.hDC, nullptr, nullptr, reinterpret_cast<LPARAM>(icon_), 0, picture.left,
                   picture.top, iconSize_, iconSize_, DST_ICON | DSS_DISABLED);
    else if (icon_)
        DrawIconEx(item.hDC, picture.left, picture.top, icon_, iconSize_, iconSize_, 0, nullptr,
                   DI_NORMAL);
    if (!showName_)
        return;
    RECT words = {picture.right + kBetween, shift, r.right, r.bottom + shift};
    const HGDIOBJ oldFont = SelectObject(item.hDC, font() ? font() : uiFont());
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, GetSysColor(state.disabled ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
    DrawTextW(item.hDC, text().c_str(), -1, &words, DT_SINGLELINE | DT_VCENTER);
    SelectObject(item.hDC, oldFont);
}

void ImageButton::becomeHot()
{
    if (hot_)
        return;
    hot_ = true;
    TRACKMOUSEEVENT track = {sizeof track, TME_LEAVE, hwnd(), 0};
    TrackMouseEvent(&track);
    redraw();
}

std::optional<LRESULT> ImageButton::onMessage(UINT message, WPARAM, LPARAM lParam)
{
    if (message == WM_MOUSEMOVE)
        becomeHot();
    if (const auto answer = pressQuietly(message, lParam))
        return answer;
    switch (message) {
    case WM_MOUSELEAVE:
        hot_ = false;
        redraw();
        return std::nullopt;
    case WM_RBUTTONUP:
        if (onRightClick) {
            POINT at = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
            ClientToScreen(hwnd(), &at);
            onRightClick({static_cast<int>(at.x), static_cast<int>(at.y)});
            return 0;
        }
        return std::nullopt;
    case WM_GETDLGCODE:
        // Enter presses the button that has the focus, as with the system's own.
        return DLGC_BUTTON | (focused() ? DLGC_DEFPUSHBUTTON : DLGC_UNDEFPUSHBUTTON);
    case WM_ERASEBKGND: return 1; // onDraw fills it: no flicker
    default: return std::nullopt;
    }
}

} // namespace velora
