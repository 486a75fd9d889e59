#include "aolhost/Controls.h"

#include "aolhost/Text.h"

#include <windowsx.h>

namespace aolhost {
namespace {

struct KindShape {
    const wchar_t* className;
    DWORD style, exStyle;
};

KindShape shapeOf(Control::Kind kind)
{
    constexpr DWORD base = WS_CHILD | WS_VISIBLE;
    switch (kind) {
    case Control::Kind::text: return {L"_AOL_Static", base | SS_NOPREFIX, 0};
    case Control::Kind::edit:
        return {L"_AOL_Edit", base | WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
    case Control::Kind::password:
        return {L"_AOL_Edit", base | WS_TABSTOP | ES_AUTOHSCROLL | ES_PASSWORD, WS_EX_CLIENTEDGE};
    case Control::Kind::list:
        return {L"_AOL_Listbox", base | WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
                WS_EX_CLIENTEDGE};
    case Control::Kind::combo:
        return {L"_AOL_Combobox", base | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, 0};
    case Control::Kind::dropDown:
        return {L"_AOL_Combobox", base | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL,
                0};
    case Control::Kind::check: return {L"_AOL_Checkbox", base | WS_TABSTOP | BS_AUTOCHECKBOX, 0};
    case Control::Kind::fontCombo:
        return {L"_AOL_FontCombo", base | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, 0};
    }
    return {};
}

/// The edit inside a drop-down box: its Enter belongs to the box.
class InnerEdit final {
public:
    static void attach(HWND combo)
    {
        const HWND edit = FindWindowExW(combo, nullptr, L"Edit", nullptr);
        if (!edit)
            return;
        const auto former = SetWindowLongW(edit, GWL_WNDPROC, reinterpret_cast<LONG>(&procedure));
        SetPropW(edit, kFormer, reinterpret_cast<HANDLE>(former));
    }

private:
    static constexpr const wchar_t* kFormer = L"aolhost.former";
    static LRESULT CALLBACK procedure(HWND edit, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept
    {
        const auto former = reinterpret_cast<WNDPROC>(GetPropW(edit, kFormer));
        if ((message == WM_CHAR || message == WM_KEYDOWN)
            && (wParam == VK_RETURN || wParam == VK_ESCAPE))
            return SendMessageW(GetParent(edit), message, wParam, lParam);
        return CallWindowProcW(former, edit, message, wParam, lParam);
    }
};

} // namespace

void registerControlClasses()
{
    WindowClasses::add(L"_AOL_Icon", nullptr);
    WindowClasses::add(L"_AOL_Glyph", nullptr);
    WindowClasses::derive(L"_AOL_Static", L"STATIC");
    WindowClasses::derive(L"_AOL_Edit", L"EDIT");
    WindowClasses::derive(L"_AOL_Listbox", L"LISTBOX");
    WindowClasses::derive(L"_AOL_Combobox", L"COMBOBOX");
    WindowClasses::derive(L"_AOL_FontCombo", L"COMBOBOX");
    WindowClasses::derive(L"_AOL_Checkbox", L"BUTTON");
}

bool IconButton::pressedByReturn = false;

IconButton::IconButton(HWND parent, const std::wstring& caption, Picture picture, IconLook look)
    : picture_(picture), look_(look)
{
    create({.className = L"_AOL_Icon",
            .caption = caption,
            .style = WS_CHILD | WS_VISIBLE | WS_TABSTOP,
            .parent = parent});
}

void IconButton::setDown(bool down)
{
    if (down_ == down)
        return;
    down_ = down;
    InvalidateRect(hwnd(), nullptr, FALSE);
}

void IconButton::mouseUp(POINT at)
{
    const bool wasDown = down_;
    setDown(false);
    if (GetCapture() == hwnd())
        ReleaseCapture();
    const RECT area = client();
    if (wasDown && PtInRect(&area, at) && onClick)
        onClick();
}

void IconButton::paint()
{
    BufferedPaint buffer(hwnd());
    const POINT origin{0, 0};
    POINT inParent = origin;
    MapWindowPoints(hwnd(), parent(), &inParent, 1);
    // What lies behind the button is the parent's to draw.
    POINT former;
    OffsetViewportOrgEx(buffer.dc(), -inParent.x, -inParent.y, &former);
    SendMessageW(parent(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(buffer.dc()), PRF_CLIENT);
    SetViewportOrgEx(buffer.dc(), former.x, former.y, nullptr);
    drawIcon(buffer.dc(), buffer.area(), text(), picture_, look_,
             {down_ || spaceDown_, hot_, GetFocus() == hwnd(), IsWindowEnabled(hwnd()) != 0});
}

LRESULT IconButton::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_PAINT: paint(); return 0;
    case WM_ERASEBKGND: return 1;
    case WM_SETTEXT:
    case WM_ENABLE:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        spaceDown_ = false;
        InvalidateRect(hwnd(), nullptr, FALSE);
        break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        if (look_ != IconLook::toolbar)
            SetFocus(hwnd());
        SetCapture(hwnd());
        setDown(true);
        return 0;
    case WM_LBUTTONUP: mouseUp({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}); return 0;
    case WM_MOUSEMOVE: {
        TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, hwnd(), 0};
        if (!std::exchange(hot_, true)) {
            TrackMouseEvent(&track);
            InvalidateRect(hwnd(), nullptr, FALSE);
        }
        return 0;
    }
    case WM_MOUSELEAVE:
        hot_ = false;
        InvalidateRect(hwnd(), nullptr, FALSE);
        return 0;
    case WM_KEYDOWN:
        if (wParam == VK_SPACE) {
            spaceDown_ = true;
            InvalidateRect(hwnd(), nullptr, FALSE);
        }
        return 0;
    case WM_KEYUP:
        if (wParam == VK_SPACE && std::exchange(spaceDown_, false)) {
            InvalidateRect(hwnd(), nullptr, FALSE);
            if (onClick)
                onClick();
        }
        return 0;
    case WM_CHAR:
        if (wParam == VK_RETURN && pressedByReturn && onClick)
            onClick();
        else if (onLetter)
            onLetter(static_cast<wchar_t>(wParam));
        return 0;
    case WM_GETDLGCODE: return DLGC_BUTTON;
    default: break;
    }
    return classDefault(message, wParam, lParam);
}

Glyph::Glyph(HWND parent, Picture picture) : picture_(picture)
{
    create({.className = L"_AOL_Glyph", .parent = parent});
}

LRESULT Glyph::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_ERASEBKGND: return 1;
    case WM_PAINT: {
        BufferedPaint buffer(hwnd());
        FillRect(buffer.dc(), &buffer.area(), pageBrush());
        drawPicture(buffer.dc(), buffer.area(), picture_);
        return 0;
    }
    default: return classDefault(message, wParam, lParam);
    }
}

Control::Control(HWND parent, Kind kind, const std::wstring& caption, bool bold) : kind_(kind)
{
    const KindShape shape = shapeOf(kind);
    create({.className = shape.className,
            .caption = caption,
            .style = shape.style,
            .exStyle = shape.exStyle,
            .height =
                kind == Kind::combo || kind == Kind::dropDown || kind == Kind::fontCombo ? 200 : 0,
            .parent = parent});
    send(WM_SETFONT, reinterpret_cast<WPARAM>(font(bold ? Face::bold : Face::normal)), TRUE);
    if (kind == Kind::dropDown)
        InnerEdit::attach(hwnd());
}

void Control::addItem(const std::wstring& text)
{
    send(isList() ? LB_ADDSTRING : CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

std::wstring Control::item(int index) const
{
    const auto at = static_cast<WPARAM>(index);
    const LRESULT length = send(isList() ? LB_GETTEXTLEN : CB_GETLBTEXTLEN, at);
    if (length < 0)
        return {};
    std::wstring out(static_cast<std::size_t>(length) + 1, L'\0');
    send(isList() ? LB_GETTEXT : CB_GETLBTEXT, at, reinterpret_cast<LPARAM>(out.data()));
    out.resize(static_cast<std::size_t>(length));
    return out;
}

bool Control::removeItem(const std::wstring& text)
{
    for (int i = 0; i < count(); ++i)
        if (sameNoCase(item(i), text)) {
            send(isList() ? LB_DELETESTRING : CB_DELETESTRING, static_cast<WPARAM>(i));
            return true;
        }
    return false;
}

int Control::count() const
{
    return static_cast<int>(send(isList() ? LB_GETCOUNT : CB_GETCOUNT));
}

std::wstring Control::chosen() const
{
    const LRESULT at = send(isList() ? LB_GETCURSEL : CB_GETCURSEL);
    return at < 0 ? std::wstring() : item(static_cast<int>(at));
}

void Control::choose(int index)
{
    send(isList() ? LB_SETCURSEL : CB_SETCURSEL, static_cast<WPARAM>(index));
}

LRESULT Control::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    // The key's own character follows its key-down, so acting on the character alone serves the
    // keyboard and programs that send only that.
    if (message == WM_CHAR && wParam == VK_RETURN && onEnter) {
        onEnter();
        return 0;
    }
    if (message == WM_CHAR && wParam == VK_ESCAPE && onEscape) {
        onEscape();
        return 0;
    }
    return classDefault(message, wParam, lParam);
}

} // namespace aolhost
