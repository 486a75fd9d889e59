#include "aolhost/Document.h"

#include "aolhost/Aol.h"
#include "aolhost/Frame.h"

#include <algorithm>
#include <stdexcept>

namespace aolhost {
namespace {

constexpr UINT_PTR kBuildTimer = 1;

} // namespace

void Document::registerClasses()
{
    WindowClasses::add(L"AOL Child", pageBrush(), 0, makeIcon(Picture::emblem));
    WindowClasses::add(L"AOL_CHAT_FORM", pageBrush(), 0, makeIcon(Picture::chat));
}

Document::~Document()
{
    std::erase(aol().documents, this);
}

void Document::makeChild(const std::wstring& caption, SIZE size, const wchar_t* className)
{
    const HWND client = aol().frame->mdiClient();
    const HINSTANCE module = GetModuleHandleW(nullptr);
    const DWORD style =
        WS_CHILD | WS_VISIBLE | WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    const POINT at = aol().frame->nextPlace(size);
    expectWindow();
    switch (aol().options.mdi) {
    case MdiWay::create: {
        MDICREATESTRUCTW wish{className, caption.c_str(), module, at.x, at.y,
                              size.cx,   size.cy,         style,  0};
        SendMessageW(client, WM_MDICREATE, 0, reinterpret_cast<LPARAM>(&wish));
        break;
    }
    case MdiWay::ex:
        CreateWindowExW(WS_EX_MDICHILD, className, caption.c_str(), style, at.x, at.y, size.cx,
                        size.cy, client, nullptr, module, nullptr);
        break;
    case MdiWay::plain:
        CreateWindowExW(WS_EX_WINDOWEDGE, className, caption.c_str(), style, at.x, at.y, size.cx,
                        size.cy, client, reinterpret_cast<HMENU>(aol().frame->nextChildId()),
                        module, nullptr);
        break;
    }
    if (!hwnd())
        throw std::runtime_error("no document window");
}

void Document::open(const std::wstring& caption, SIZE size, Arrival arrival,
                    const wchar_t* className)
{
    const HWND client = aol().frame->mdiClient();
    const auto front = reinterpret_cast<HWND>(SendMessageW(client, WM_MDIGETACTIVE, 0, 0));
    aol().documents.push_back(this);
    makeChild(caption, size, className);
    if (aol().options.lateMs > 0)
        SetTimer(hwnd(), kBuildTimer, static_cast<UINT>(aol().options.lateMs), nullptr);
    else
        buildNow();
    if (arrival == Arrival::behind && front)
        SendMessageW(client, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(front), 0);
    else if (arrival == Arrival::toFront)
        activate();
}

void Document::buildNow()
{
    build();
    built_ = true;
    relayout();
    if (aol().frame->activeDocument() == this && firstFocus())
        SetFocus(firstFocus());
}

void Document::buildWaiting()
{
    KillTimer(hwnd(), kBuildTimer);
    if (!built_)
        buildNow();
}

void Document::relayout()
{
    const RECT area = client();
    if (built_ && area.right > 0 && area.bottom > 0)
        layout(area.right, area.bottom);
    InvalidateRect(hwnd(), nullptr, TRUE);
}

void Document::activate()
{
    if (IsIconic(hwnd()))
        ShowWindow(hwnd(), SW_RESTORE);
    SendMessageW(aol().frame->mdiClient(), WM_MDIACTIVATE, reinterpret_cast<WPARAM>(hwnd()), 0);
}

bool Document::inFront() const
{
    return aol().frame->activeDocument() == this && GetForegroundWindow() == aol().frame->hwnd()
           && !IsIconic(aol().frame->hwnd());
}

void Document::close()
{
    SendMessageW(hwnd(), WM_CLOSE, 0, 0);
}

LRESULT Document::classDefault(UINT message, WPARAM wParam, LPARAM lParam)
{
    return DefMDIChildProcW(hwnd(), message, wParam, lParam);
}

LRESULT Document::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_TIMER:
        if (wParam == kBuildTimer) {
            buildWaiting();
            return 0;
        }
        break;
    case WM_SIZE: relayout(); break;
    case WM_COMMAND:
        if (auto* control = dynamic_cast<Control*>(of(reinterpret_cast<HWND>(lParam))))
            if (control->onNotify)
                control->onNotify(HIWORD(wParam));
        break;
    case WM_SETFOCUS: {
        // The default first: it tells the workspace which document is the active one.
        classDefault(message, wParam, lParam);
        const HWND focus = lastFocus_ && IsChild(hwnd(), lastFocus_) ? lastFocus_ : firstFocus();
        if (focus && IsWindowVisible(focus))
            SetFocus(focus);
        return 0;
    }
    case WM_MDIACTIVATE:
        if (reinterpret_cast<HWND>(lParam) == hwnd())
            activated();
        else if (IsChild(hwnd(), GetFocus()))
            lastFocus_ = GetFocus();
        break;
    default: break;
    }
    return Page::handle(message, wParam, lParam);
}

} // namespace aolhost
