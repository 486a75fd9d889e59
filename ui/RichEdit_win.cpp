#include "ui/RichEdit.h"

#include "base/win_error.h"

#include <richedit.h>

#include <algorithm>

namespace velora {

void RichEdit::create(Form& form, const Options& options)
{
    static const HMODULE library = LoadLibraryW(L"riched20.dll"); // holds the window class
    if (!library)
        throwLastError("riched20.dll is missing");
    DWORD style = WS_TABSTOP;
    if (options.multiline)
        style |= ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL;
    else
        style |= ES_AUTOHSCROLL;
    if (options.wantsReturn)
        style |= ES_WANTRETURN;
    if (options.readOnly)
        style |= ES_READONLY;
    createWindow(form, RICHEDIT_CLASSW, L"", style, WS_EX_CLIENTEDGE);
    subclass();
    constexpr LPARAM kMost = 16 << 20; // without it the control stops at 32,767 characters
    send(EM_EXLIMITTEXT, 0, kMost);
    send(EM_SETEVENTMASK, 0, ENM_CHANGE);
}

void RichEdit::append(std::wstring_view text, const Format& format)
{
    SCROLLINFO scroll = {};
    scroll.cbSize = sizeof scroll;
    scroll.fMask = SIF_ALL;
    const bool atEnd = !GetScrollInfo(hwnd(), SB_VERT, &scroll)
                       || scroll.nPos + static_cast<int>(scroll.nPage) + 1 >= scroll.nMax;
    const auto before = selection();
    select(length(), length());
    CHARFORMATW look = {};
    look.cbSize = sizeof look;
    look.dwMask = CFM_COLOR | CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE;
    look.dwEffects = (format.bold ? CFE_BOLD : 0u) | (format.italic ? CFE_ITALIC : 0u)
                     | (format.underline ? CFE_UNDERLINE : 0u);
    look.crTextColor = format.colour;
    send(EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&look));
    replaceSelection(text);
    if (atEnd)
        scrollToEnd();
    else
        select(before.first, before.second);
}

void RichEdit::setBackground(COLORREF colour)
{
    send(EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(colour));
}

void RichEdit::select(int from, int to)
{
    CHARRANGE range = {from, to};
    send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
}

std::pair<int, int> RichEdit::selection() const
{
    CHARRANGE range = {};
    send(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range));
    return {static_cast<int>(range.cpMin), static_cast<int>(range.cpMax)};
}

void RichEdit::replaceSelection(std::wstring_view text)
{
    send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(std::wstring(text).c_str()));
}

int RichEdit::length() const
{
    GETTEXTLENGTHEX how = {GTL_NUMCHARS | GTL_PRECISE, 1200};
    return static_cast<int>(
        std::max<LRESULT>(0, send(EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&how))));
}

void RichEdit::scrollToEnd()
{
    select(length(), length());
    send(WM_VSCROLL, SB_BOTTOM);
}

void RichEdit::onCommand(int code)
{
    if (code == EN_CHANGE && onChange)
        onChange();
}

std::optional<LRESULT> RichEdit::onMessage(UINT message, WPARAM wParam, LPARAM)
{
    if (message == WM_KEYDOWN && onKey && onKey(static_cast<UINT>(wParam))) {
        // The character that TranslateMessage has queued for the key goes with it.
        MSG dropped;
        PeekMessageW(&dropped, hwnd(), WM_CHAR, WM_CHAR, PM_REMOVE);
        return 0;
    }
    return std::nullopt;
}

} // namespace velora
