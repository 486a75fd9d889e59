#include "aolhost/Modal.h"

#include "aolhost/Aol.h"
#include "aolhost/Frame.h"
#include "aolhost/Text.h"

#include <commdlg.h>

namespace aolhost {

void Modal::registerClasses()
{
    WindowClasses::add(L"_AOL_Modal", pageBrush(), CS_DROPSHADOW, makeIcon(Picture::emblem));
}

void Modal::open(const std::wstring& caption, SIZE clientSize)
{
    const HWND frame = aol().frame->hwnd();
    constexpr DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
    RECT area{0, 0, clientSize.cx, clientSize.cy};
    AdjustWindowRectEx(&area, style, FALSE, WS_EX_DLGMODALFRAME);
    RECT over;
    GetWindowRect(frame, &over);
    const int width = area.right - area.left, height = area.bottom - area.top;
    create({.className = L"_AOL_Modal",
            .caption = caption,
            .style = style,
            .exStyle = WS_EX_DLGMODALFRAME,
            .x = (over.left + over.right - width) / 2,
            .y = (over.top + over.bottom - height) / 2,
            .width = width,
            .height = height,
            .parent = frame});
    EnableWindow(frame, FALSE);
}

LRESULT Modal::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_KEYDOWN:
        if (wParam == VK_ESCAPE || wParam == VK_RETURN)
            PostMessageW(hwnd(), WM_CLOSE, 0, 0);
        return 0;
    case WM_CLOSE:
        // Enabled before the dialog goes, or another program's window would come to the front.
        if (aol().frame)
            EnableWindow(aol().frame->hwnd(), TRUE);
        DestroyWindow(hwnd());
        return 0;
    case WM_DESTROY:
        if (aol().frame)
            EnableWindow(aol().frame->hwnd(), TRUE);
        break;
    default: break;
    }
    return Page::handle(message, wParam, lParam);
}

MessageModal::MessageModal(const std::wstring& caption, const std::wstring& message,
                           Picture picture)
    : message_(message)
{
    open(caption, {380, 170});
    glyph_ = new Glyph(hwnd(), picture);
    text_ = new Control(hwnd(), Control::Kind::text, message);
    ok_ = new IconButton(hwnd(), L"OK", Picture::none, IconLook::push);
    ok_->onClick = [this] { PostMessageW(hwnd(), WM_CLOSE, 0, 0); };
    glyph_->place(20, 24, 72, 72);
    text_->place(108, 30, 256, 80);
    ok_->place(150, 128, 80, 28);
    ShowWindow(hwnd(), SW_SHOW);
    SetFocus(ok_->hwnd());
}

void MessageModal::paint(HDC dc, const RECT& area)
{
    RECT foot = area;
    foot.top = area.bottom - 56;
    fillGradient(dc, foot, palette::kPage, palette::kSky);
}

void MessageModal::about()
{
    std::wstring caption = aol().words.aboutItem();
    std::erase(caption, L'&');
    new MessageModal(caption,
                     aol().words.product() + L"\r\n\r\n" + L"Version "
                         + std::to_wstring(aol().options.version)
                         + L".0\r\nA stand-in for tests and demonstrations.",
                     Picture::emblem);
}

AttachmentsModal::AttachmentsModal(std::vector<std::wstring>& files) : files_(files)
{
    const Words& words = aol().words;
    open(words.attachDialog(), {400, 220});
    list_ = new Control(hwnd(), Control::Kind::list);
    for (const std::wstring& file : files_)
        list_->addItem(file);
    attach_ = new IconButton(hwnd(), words.attach(), Picture::none, IconLook::push);
    attach_->onClick = [this] { attach(); };
    detach_ = new IconButton(hwnd(), words.tr(L"Detach"), Picture::none, IconLook::push);
    detach_->onClick = [this] { detach(); };
    ok_ = new IconButton(hwnd(), L"OK", Picture::none, IconLook::push);
    ok_->onClick = [this] { PostMessageW(hwnd(), WM_CLOSE, 0, 0); };
    list_->place(12, 12, 376, 152);
    attach_->place(12, 180, 90, 28);
    detach_->place(110, 180, 90, 28);
    ok_->place(298, 180, 90, 28);
    ShowWindow(hwnd(), SW_SHOW);
    SetFocus(attach_->hwnd());
}

void AttachmentsModal::attach()
{
    wchar_t path[MAX_PATH] = L"";
    OPENFILENAMEW wish{};
    wish.lStructSize = sizeof wish;
    wish.hwndOwner = hwnd();
    wish.lpstrFile = path;
    wish.nMaxFile = MAX_PATH;
    wish.lpstrTitle = L"Attach";
    wish.Flags = OFN_FILEMUSTEXIST | OFN_NOCHANGEDIR;
    if (!GetOpenFileNameW(&wish))
        return;
    files_.push_back(path);
    list_->addItem(path);
}

void AttachmentsModal::detach()
{
    const std::wstring file = list_->chosen();
    std::erase(files_, file);
    list_->removeItem(file);
}

} // namespace aolhost
