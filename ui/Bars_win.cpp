// Progress bar, track bar and tab strip.
#include "ui/Controls.h"

#include "base/text.h"
#include "ui/Form.h"
#include "ui/WinGeometry.h"

#include <commctrl.h>

namespace velora {
namespace {

constexpr DWORD kTabStyle = WS_TABSTOP | WS_CLIPSIBLINGS;

std::wstring withoutMnemonics(std::wstring_view title)
{
    return replaceAll(title, L"&", L"&&");
}

} // namespace

void ProgressBar::create(Form& form, int maximum)
{
    createWindow(form, PROGRESS_CLASSW, L"", 0);
    setMaximum(maximum);
}

void ProgressBar::setMaximum(int maximum)
{
    send(PBM_SETRANGE32, 0, maximum);
}

void ProgressBar::setValue(int value)
{
    send(PBM_SETPOS, static_cast<WPARAM>(value));
}

int ProgressBar::value() const
{
    return static_cast<int>(send(PBM_GETPOS));
}

void TrackBar::create(Form& form, int minimum, int maximum, int value)
{
    createWindow(form, TRACKBAR_CLASSW, L"", WS_TABSTOP | TBS_AUTOTICKS);
    send(TBM_SETRANGEMIN, FALSE, minimum);
    send(TBM_SETRANGEMAX, TRUE, maximum);
    setValue(value);
}

int TrackBar::value() const
{
    return static_cast<int>(send(TBM_GETPOS));
}

void TrackBar::setValue(int value)
{
    send(TBM_SETPOS, TRUE, value);
}

void TrackBar::onScroll()
{
    if (onChange)
        onChange();
}

void TabStrip::create(Form& form, const std::vector<std::wstring>& titles)
{
    createWindow(form, WC_TABCONTROLW, L"", kTabStyle);
    for (const auto& title : titles)
        insert(count(), title);
}

void TabStrip::setLook(DWORD styles)
{
    if (!hwnd() || static_cast<DWORD>(GetWindowLongW(hwnd(), GWL_STYLE) & 0xFFFF) == styles)
        return;
    std::vector<std::wstring> titles;
    for (int i = 0; i < count(); ++i)
        titles.push_back(title(i));
    const int present = selected();
    remakeWindow(WC_TABCONTROLW, kTabStyle | styles);
    for (const auto& title : titles)
        insert(count(), title);
    select(present);
}

int TabStrip::count() const
{
    return static_cast<int>(send(TCM_GETITEMCOUNT));
}

void TabStrip::insert(int index, std::wstring_view title)
{
    std::wstring text = withoutMnemonics(title);
    TCITEMW item = {};
    item.mask = TCIF_TEXT;
    item.pszText = text.data();
    send(TCM_INSERTITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
}

void TabStrip::remove(int index)
{
    send(TCM_DELETEITEM, static_cast<WPARAM>(index));
}

void TabStrip::setTitle(int index, std::wstring_view title)
{
    std::wstring text = withoutMnemonics(title);
    TCITEMW item = {};
    item.mask = TCIF_TEXT;
    item.pszText = text.data();
    send(TCM_SETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
}

std::wstring TabStrip::title(int index) const
{
    wchar_t text[256] = {};
    TCITEMW item = {};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = 256;
    if (!send(TCM_GETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)))
        return {};
    return item.pszText ? replaceAll(item.pszText, L"&&", L"&") : std::wstring();
}

int TabStrip::selected() const
{
    return hwnd() ? static_cast<int>(send(TCM_GETCURSEL)) : -1;
}

void TabStrip::select(int index)
{
    send(TCM_SETCURSEL, static_cast<WPARAM>(index));
}

void TabStrip::setMarked(int index, bool marked)
{
    send(TCM_HIGHLIGHTITEM, static_cast<WPARAM>(index), MAKELPARAM(marked, 0));
}

int TabStrip::hit(Point screen) const
{
    if (!hwnd())
        return -1;
    TCHITTESTINFO info = {{screen.x, screen.y}, 0};
    ScreenToClient(hwnd(), &info.pt);
    return static_cast<int>(send(TCM_HITTEST, 0, reinterpret_cast<LPARAM>(&info)));
}

Rect TabStrip::pageRect() const
{
    RECT r = toRECT(place());
    send(TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&r));
    return fromRECT(r);
}

void TabStrip::showPage(Form& page)
{
    const Rect r = pageRect();
    // Just above the strip, or the strip would paint over it; not above all, or the Tab key would
    // come to the page before the controls ahead of it.
    const HWND above = GetWindow(hwnd(), GW_HWNDPREV);
    if (above != page.hwnd())
        SetWindowPos(page.hwnd(), above ? above : HWND_TOP, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    page.setPlace(r);
    page.show();
}

LRESULT TabStrip::onNotify(NMHDR& header)
{
    if (header.code == static_cast<UINT>(TCN_SELCHANGING))
        return onLeave && !onLeave();
    if (header.code == static_cast<UINT>(TCN_SELCHANGE) && onSelect)
        onSelect();
    return 0;
}

} // namespace velora
