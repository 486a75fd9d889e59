#include "aolhost/Frame.h"

#include "aolhost/Aol.h"
#include "aolhost/Art.h"
#include "aolhost/Commands.h"
#include "aolhost/Document.h"
#include "aolhost/MenuCommands.h"
#include "aolhost/Menus.h"
#include "aolhost/RichText.h"
#include "aolhost/Toolbar.h"

namespace aolhost {

namespace {

/// The workspace: the system's own class, with a ground of our own.
LRESULT CALLBACK workspaceProcedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    static const auto former = reinterpret_cast<WNDPROC>(GetClassLongW(hwnd, GCL_WNDPROC));
    if (message == WM_ERASEBKGND) {
        RECT area;
        GetClientRect(hwnd, &area);
        fillGradient(reinterpret_cast<HDC>(wParam), area, palette::kWorkspaceTop,
                     palette::kWorkspaceEnd);
        return 1;
    }
    if (message == WM_SIZE)
        InvalidateRect(hwnd, nullptr, TRUE);
    return CallWindowProcW(former, hwnd, message, wParam, lParam);
}

} // namespace

Frame::Frame()
{
    static const bool registered = [] {
        WindowClasses::add(L"AOL Frame25", nullptr, 0, makeIcon(Picture::emblem));
        return true;
    }();
    (void)registered;
    aol().frame = this;
    create({.className = L"AOL Frame25",
            .caption = aol().words.frame(),
            .style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
            .x = 20,
            .y = 20,
            .width = 1000,
            .height = 740});
    build();
}

void Frame::build()
{
    const FrameMenus menus = makeMenus(aol().words);
    SetMenu(hwnd(), menus.bar);
    keys_ = makeKeys();
    toolbar_ = new Toolbar(hwnd());
    CLIENTCREATESTRUCT wish{menus.window, kFirstChildId};
    client_ = CreateWindowExW(
        WS_EX_CLIENTEDGE, L"MDIClient", nullptr,
        WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | WS_HSCROLL | WS_VSCROLL, 0, 0,
        0, 0, hwnd(), reinterpret_cast<HMENU>(1), GetModuleHandleW(nullptr), &wish);
    SetWindowLongW(client_, GWL_WNDPROC, reinterpret_cast<LONG>(&workspaceProcedure));
    layout();
    onlineChanged();
}

void Frame::layout()
{
    if (!client_)
        return;
    const RECT area = client();
    toolbar_->place(0, 0, area.right, Toolbar::kHeight);
    MoveWindow(client_, 0, Toolbar::kHeight, area.right, area.bottom - Toolbar::kHeight, TRUE);
}

Document* Frame::activeDocument() const
{
    return dynamic_cast<Document*>(
        of(reinterpret_cast<HWND>(SendMessageW(client_, WM_MDIGETACTIVE, 0, 0))));
}

void Frame::onlineChanged()
{
    const bool online = aol().online();
    toolbar_->showKeywordBox(online);
    for (const UINT id : {kReadMail, kWriteMail, kChatRoom, kSendIm, kProfile, kSignOff})
        EnableMenuItem(GetMenu(hwnd()), id, MF_BYCOMMAND | (online ? MF_ENABLED : MF_GRAYED));
    DrawMenuBar(hwnd());
}

void Frame::focusKeyword()
{
    toolbar_->focusKeyword();
}

POINT Frame::nextPlace(SIZE size)
{
    RECT area;
    GetClientRect(client_, &area);
    const auto fits = [&](int step) {
        return 10 + 24 * step + size.cx <= area.right && 10 + 24 * step + size.cy <= area.bottom;
    };
    if (!fits(cascade_))
        cascade_ = 0;
    const int at = 10 + 24 * cascade_++;
    return {at, at};
}

bool Frame::translate(MSG& message)
{
    if (TranslateMDISysAccel(client_, &message))
        return true;
    if (keys_ && TranslateAcceleratorW(hwnd(), keys_, &message))
        return true;
    Document* document = activeDocument();
    if (message.message != WM_KEYDOWN || message.wParam != VK_TAB || GetKeyState(VK_CONTROL) < 0
        || !document || !IsChild(document->hwnd(), message.hwnd))
        return false;
    SetFocus(GetNextDlgTabItem(document->hwnd(), GetFocus(), GetKeyState(VK_SHIFT) < 0));
    return true;
}

bool Frame::command(int id)
{
    if (id >= kCut && id <= kSelectAll) {
        SendMessageW(GetFocus(), WM_COMMAND, static_cast<WPARAM>(id), 0);
        return true;
    }
    return runMenuCommand(id);
}

bool Frame::receive(const COPYDATASTRUCT& data)
{
    const auto* characters = static_cast<const wchar_t*>(data.lpData);
    aol().openKeyword(std::wstring(characters, data.cbData / sizeof(wchar_t)));
    return true;
}

LRESULT Frame::classDefault(UINT message, WPARAM wParam, LPARAM lParam)
{
    return DefFrameProcW(hwnd(), client_, message, wParam, lParam);
}

LRESULT Frame::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SIZE: layout(); return 0;
    case WM_COMMAND:
        if (lParam == 0 && command(LOWORD(wParam)))
            return 0;
        break;
    case WM_COPYDATA: return receive(*reinterpret_cast<const COPYDATASTRUCT*>(lParam));
    case kRunRequest: runRequest(*reinterpret_cast<Request*>(lParam)); return 0;
    case kEnd: endAol(wParam != 0); return 0;
    case WM_DESTROY:
        aol().frame = nullptr;
        PostQuitMessage(0);
        break;
    default: break;
    }
    return Window::handle(message, wParam, lParam);
}

} // namespace aolhost
