#include "aolhost/RichText.h"

#include "aolhost/Text.h"

#include <richedit.h>
#include <stdexcept>

namespace aolhost {
namespace {

constexpr const wchar_t* kInputClass = L"RICHCNTL";
constexpr const wchar_t* kReadOnlyClass = L"RICHCNTLREADONLY";

CHARFORMATW format(const Run& run)
{
    CHARFORMATW f{};
    f.cbSize = sizeof f;
    f.dwMask = CFM_COLOR | CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE;
    f.crTextColor = run.color;
    f.dwEffects = (run.bold ? CFE_BOLD : 0u) | (run.italic ? CFE_ITALIC : 0u)
                  | (run.underline ? CFE_UNDERLINE : 0u);
    return f;
}

} // namespace

bool RichText::registerClasses(bool wide)
{
    static int registered = -1;
    if (registered == wide)
        return true;
    if (!LoadLibraryW(L"riched20.dll"))
        throw std::runtime_error("no rich edit");
    if (registered >= 0) {
        if (!WindowClasses::remove(kInputClass))
            return false;
        if (!WindowClasses::remove(kReadOnlyClass)) {
            WindowClasses::derive(kInputClass, registered ? L"RichEdit20W" : L"RichEdit20A",
                                  !registered);
            return false;
        }
    }
    for (const wchar_t* name : {kInputClass, kReadOnlyClass})
        WindowClasses::derive(name, wide ? L"RichEdit20W" : L"RichEdit20A", !wide);
    registered = wide;
    return true;
}

RichText::RichText(HWND parent, Use use, bool readOnlyClass)
{
    const DWORD displayStyle = use == Use::display ? WS_VSCROLL | ES_READONLY : 0;
    create({.className = readOnlyClass ? kReadOnlyClass : kInputClass,
            .style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_MULTILINE | ES_NOHIDESEL
                     | ES_AUTOVSCROLL | displayStyle,
            .exStyle = WS_EX_CLIENTEDGE,
            .parent = parent});
    send(EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
    CHARFORMATW f{};
    f.cbSize = sizeof f;
    f.dwMask = CFM_FACE | CFM_SIZE | CFM_COLOR | CFM_BOLD;
    f.yHeight = 10 * 20;
    lstrcpyW(f.szFaceName, L"Arial");
    send(EM_SETCHARFORMAT, SCF_ALL, reinterpret_cast<LPARAM>(&f));
}

void RichText::insert(const Run& run)
{
    const CHARFORMATW f = format(run);
    send(EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&f));
    if (ansi())
        send(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(toAnsi(run.text).c_str()));
    else
        send(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(run.text.c_str()));
}

void RichText::append(const std::vector<Run>& runs)
{
    CHARRANGE before{};
    send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&before));
    const bool visible = (GetWindowLongW(hwnd(), GWL_STYLE) & WS_VISIBLE) != 0;
    if (visible)
        send(WM_SETREDRAW, FALSE);
    CHARRANGE end{length(), length()};
    send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&end));
    for (const Run& run : runs)
        insert(run);
    if (before.cpMin != before.cpMax)
        send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&before));
    send(WM_VSCROLL, SB_BOTTOM);
    if (visible) {
        send(WM_SETREDRAW, TRUE);
        InvalidateRect(hwnd(), nullptr, FALSE);
    }
}

void RichText::setRuns(const std::vector<Run>& runs)
{
    clear();
    append(runs);
    send(WM_VSCROLL, SB_TOP);
}

void RichText::trimTo(long target)
{
    const long excess = length() - target;
    if (excess <= 0)
        return;
    const std::wstring all = text();
    // The window's text has CR LF where the box counts one character.
    long position = 0;
    for (const wchar_t c : all) {
        if (c == L'\n')
            continue;
        ++position;
        if (c == L'\r' && position >= excess)
            break;
    }
    CHARRANGE head{0, position};
    send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&head));
    send(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L""));
    send(WM_VSCROLL, SB_BOTTOM);
}

void RichText::clear()
{
    setText({});
}

long RichText::length() const
{
    GETTEXTLENGTHEX how{GTL_DEFAULT, 1200};
    return static_cast<long>(send(EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&how)));
}

void RichText::notifyChanged(Notice notice)
{
    if (notice == Notice::sent)
        send(kTextChanged);
    else
        PostMessageW(hwnd(), kTextChanged, 0, 0);
}

void RichText::setBackground(COLORREF color)
{
    send(EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(color));
}

bool RichText::handleEnter(UINT message)
{
    if (message == WM_KEYDOWN) {
        enterKeyDown_ = true;
        if (enterOn == EnterOn::keyDown)
            onEnter();
        return true;
    }
    const bool keysOwn = std::exchange(enterKeyDown_, false);
    if (enterOn == EnterOn::charMessage || !keysOwn)
        onEnter();
    return true;
}

void RichText::command(int id)
{
    // To -1 would take in the line end that closes every text.
    CHARRANGE all{0, length()};
    switch (id) {
    case kCut: send(WM_CUT); break;
    case kCopy: send(WM_COPY); break;
    case kPaste: send(WM_PASTE); break;
    case kSelectAll: send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&all)); break;
    default: break;
    }
}

LRESULT RichText::handle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_KEYDOWN:
    case WM_CHAR:
        if (wParam == VK_RETURN && onEnter) {
            handleEnter(message);
            return 0;
        }
        if (onSendKey && message == WM_KEYDOWN && wParam == VK_RETURN
            && GetKeyState(VK_CONTROL) < 0) {
            onSendKey();
            return 0;
        }
        // The key's own character, which came after it.
        if (onSendKey && message == WM_CHAR && wParam == L'\n')
            return 0;
        break;
    case WM_KEYUP:
        if (wParam == VK_RETURN)
            enterKeyDown_ = false;
        break;
    case WM_SETFOCUS:
        if (onFocus)
            onFocus();
        break;
    case WM_COMMAND: command(LOWORD(wParam)); return 0;
    case kTextChanged: ++notices_; return 0;
    default: break;
    }
    return classDefault(message, wParam, lParam);
}

} // namespace aolhost
