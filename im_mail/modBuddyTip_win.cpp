#include "im_mail/modBuddyTip.h"

#include "base/trap.h"
#include "base/win_error.h"
#include "im_mail/modBuddyNotes.h"
#include "settings/Options.h"
#include "ui/Timer.h"

#include <commctrl.h>

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "modBuddyTip";
constexpr int kWrapWidth = 320;
constexpr std::size_t kMostShown = 600;
constexpr UINT kLeastMs = 5000, kMsPerCharacter = 40;

HWND tip = nullptr;
Timer tmrHide;

/// Numbers with the highest bit stand for the system's colours.
COLORREF colourOf(long value)
{
    const auto bits = static_cast<unsigned long>(value);
    return bits & 0x80000000u ? GetSysColor(static_cast<int>(bits & 0xFFu)) : bits & 0xFFFFFFu;
}

/// A themed tip ignores its colours. The function is missing where there are no themes.
void dropTheme(HWND window)
{
    using SetTheme = HRESULT(WINAPI*)(HWND, LPCWSTR, LPCWSTR);
    static const HMODULE themes = LoadLibraryW(L"uxtheme.dll");
    const auto setTheme = reinterpret_cast<SetTheme>(
        reinterpret_cast<void*>(themes ? GetProcAddress(themes, "SetWindowTheme") : nullptr));
    if (setTheme)
        setTheme(window, L"", L"");
}

void show(HWND owner, Point at, std::wstring text)
{
    const DWORD shape = opt::IM::BuddyTipBalloon.get() ? TTS_BALLOON : 0u;
    tip = CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, TOOLTIPS_CLASSW, nullptr,
                          WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP | shape, 0, 0, 0, 0, owner,
                          nullptr, GetModuleHandleW(nullptr), nullptr);
    if (!tip)
        throwLastError("the tip cannot be made");
    dropTheme(tip);
    SendMessageW(tip, TTM_SETMAXTIPWIDTH, 0, kWrapWidth);
    SendMessageW(tip, TTM_SETTIPTEXTCOLOR, colourOf(opt::IM::BuddyTipTextColor.get()), 0);
    SendMessageW(tip, TTM_SETTIPBKCOLOR, colourOf(opt::IM::BuddyTipBackColor.get()), 0);
    TOOLINFOW info = {};
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    info.uFlags = TTF_TRACK | TTF_ABSOLUTE;
    info.hwnd = owner;
    info.uId = 1;
    info.lpszText = text.data();
    SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
    SendMessageW(tip, TTM_TRACKPOSITION, 0, MAKELPARAM(at.x, at.y));
    SendMessageW(tip, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&info));
    tmrHide.startOnce(std::max(kLeastMs, static_cast<UINT>(text.size()) * kMsPerCharacter),
                      hideBuddyTip);
}

} // namespace

void showBuddyTip(HWND owner, Point at, std::wstring_view screenName)
{
    trap(kModule, [&] {
        hideBuddyTip();
        std::wstring note = GetBuddyNotes(screenName);
        if (note.empty() || !IsWindow(owner))
            return;
        if (note.size() > kMostShown)
            note = note.substr(0, kMostShown) + L"\u2026";
        show(owner, at, std::move(note));
    });
}

void hideBuddyTip()
{
    tmrHide.stop();
    // Its owner may have destroyed it already.
    if (IsWindow(tip))
        DestroyWindow(tip);
    tip = nullptr;
}

} // namespace velora
