#include "aolhost/Page.h"

#include "aolhost/Art.h"
#include "aolhost/Canvas.h"

namespace aolhost {

void Page::paint(HDC, const RECT&) {}

LRESULT Page::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_ERASEBKGND: return 1;
    case WM_PAINT: {
        BufferedPaint buffer(hwnd());
        FillRect(buffer.dc(), &buffer.area(), pageBrush());
        paint(buffer.dc(), buffer.area());
        return 0;
    }
    case WM_PRINTCLIENT: {
        const RECT area = client();
        FillRect(reinterpret_cast<HDC>(wParam), &area, pageBrush());
        paint(reinterpret_cast<HDC>(wParam), area);
        return 0;
    }
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
        SetBkColor(reinterpret_cast<HDC>(wParam), palette::kPage);
        SetTextColor(reinterpret_cast<HDC>(wParam), palette::kText);
        return reinterpret_cast<LRESULT>(pageBrush());
    default: return Window::handle(message, wParam, lParam);
    }
}

} // namespace aolhost
