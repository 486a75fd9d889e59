// Instant message windows that the program shows as its own. They are never made children of a
// window of another process: when that process is killed, Windows would destroy them with it. A
// holder is a window of AOL's thread that merely lies over the program's.
#include "hook/agent/agent.h"

namespace velora::agent {
namespace {

constexpr LONG kFrameStyles =
    WS_CAPTION | WS_THICKFRAME | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
constexpr UINT kOwnerTick = 500; // ms
constexpr UINT kQuiet = SWP_NOACTIVATE | SWP_NOZORDER | SWP_NOOWNERZORDER;

Holder* findByIm(HWND im)
{
    for (Holder& holder : g.holder)
        if (holder.im == im && (im || !holder.window))
            return &holder;
    return nullptr;
}

Holder* findByWindow(HWND window)
{
    for (Holder& holder : g.holder)
        if (holder.window == window)
            return &holder;
    return nullptr;
}

void unmaximise(HWND mdi, HWND im)
{
    if (IsZoomed(im) || IsIconic(im))
        SendMessageW(mdi, WM_MDIRESTORE, reinterpret_cast<WPARAM>(im), 0);
    if (reinterpret_cast<HWND>(SendMessageW(mdi, WM_MDIGETACTIVE, 0, 0)) == im)
        SendMessageW(mdi, WM_MDINEXT, reinterpret_cast<WPARAM>(im), 0);
}

void moveIn(Holder& holder)
{
    const HWND im = holder.im;
    ShowWindow(im, SW_HIDE);
    SetWindowLongW(im, GWL_STYLE, holder.style & ~(kFrameStyles | WS_VISIBLE));
    SetParent(im, holder.window);
    RECT area;
    GetClientRect(holder.window, &area);
    SetWindowPos(im, nullptr, 0, 0, area.right, area.bottom,
                 kQuiet | SWP_FRAMECHANGED | SWP_SHOWWINDOW);
}

/// Puts the IM back where it was. The entry is cleared first, because each step sends messages.
void moveBack(Holder& entry, bool show)
{
    const Holder holder = entry;
    entry = {};
    if (Record* record = findRecord(holder.im))
        record->roles &= ~kHeldRole;
    if (IsWindow(holder.window))
        SetWindowPos(holder.window, nullptr, 0, 0, 0, 0,
                     kQuiet | SWP_NOMOVE | SWP_NOSIZE | SWP_HIDEWINDOW);
    if (IsWindow(holder.im) && IsWindow(holder.mdi)) {
        ShowWindow(holder.im, SW_HIDE);
        SetParent(holder.im, holder.mdi);
        SetWindowLongW(holder.im, GWL_STYLE,
                       (holder.style & ~WS_VISIBLE)
                           | (GetWindowLongW(holder.im, GWL_STYLE) & WS_DISABLED));
        SetWindowPos(holder.im, nullptr, holder.place.left, holder.place.top,
                     holder.place.right - holder.place.left, holder.place.bottom - holder.place.top,
                     kQuiet | SWP_FRAMECHANGED);
        if (show && holder.visible)
            ShowWindow(holder.im, SW_SHOWNA);
    }
    if (IsWindow(holder.window))
        DestroyWindow(holder.window);
}

LRESULT CALLBACK holderProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    Holder* holder = findByWindow(window);
    switch (message) {
    case WM_SIZE:
        if (holder && holder->im) {
            SetWindowPos(holder->im, nullptr, 0, 0, LOWORD(lParam), HIWORD(lParam), kQuiet);
            // Its controls move while it is not on the screen, or not all of it.
            RedrawWindow(holder->im, nullptr, nullptr,
                         RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
        }
        return 0;
    case WM_SETFOCUS:
        if (holder && holder->im)
            SetFocus(holder->im);
        return 0;
    case WM_CLOSE: return 0;
    case WM_ERASEBKGND: return 1;
    case WM_DESTROY:
        // The owner is being destroyed, which would take the IM along.
        if (holder && holder->im)
            moveBack(*holder, true);
        return 0;
    default:
        // What an MDI child tells its MDI client goes on to the real one; closing is one of them.
        if (message >= WM_MDICREATE && message <= WM_MDIREFRESHMENU && holder
            && IsWindow(holder->mdi)) {
            const HWND mdi = holder->mdi;
            if (message == WM_MDIDESTROY)
                moveBack(*holder, false);
            return SendMessageW(mdi, message, wParam, lParam);
        }
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

} // namespace

bool registerHolderClass()
{
    WNDCLASSW holderClass = {};
    holderClass.lpfnWndProc = holderProc;
    holderClass.hInstance = g.module;
    holderClass.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)); // IDC_ARROW
    holderClass.lpszClassName = wire::kHolderClass;
    return RegisterClassW(&holderClass) || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

std::int32_t takeIm(const wire::Command& command)
{
    const HWND im = windowOf(command.window);
    if (Holder* known = findByIm(im))
        return static_cast<std::int32_t>(number(known->window));
    if (!g.mdi || GetAncestor(im, GA_PARENT) != g.mdi)
        return wire::kRefused;
    Holder* holder = findByIm(nullptr);
    Record* record = watch(im);
    if (!holder || !record)
        return wire::kFull;
    const HWND window = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_CONTROLPARENT, wire::kHolderClass,
                                        L"", WS_POPUP | WS_CLIPCHILDREN, command.left, command.top,
                                        command.right - command.left, command.bottom - command.top,
                                        windowOf(command.a), nullptr, g.module, nullptr);
    if (!window)
        return wire::kRefused;
    // Making a window sends messages, so the table may have changed.
    holder = findByIm(nullptr);
    record = findRecord(im);
    if (!holder || !record) {
        DestroyWindow(window);
        return wire::kFull;
    }
    const bool visible = IsWindowVisible(im);
    unmaximise(g.mdi, im);
    RECT place;
    GetWindowRect(im, &place);
    MapWindowPoints(nullptr, g.mdi, reinterpret_cast<POINT*>(&place), 2);
    *holder = {window, im,     g.mdi, windowOf(command.a), GetWindowLongW(im, GWL_STYLE),
               place,  visible};
    record->roles |= kHeldRole;
    moveIn(*holder);
    ShowWindow(window, SW_SHOWNA);
    SetTimer(g.window, kOwnerTimer, kOwnerTick, nullptr);
    return static_cast<std::int32_t>(number(window));
}

std::int32_t showIm(const wire::Command& command)
{
    const Holder* holder = findByIm(windowOf(command.window));
    if (!holder || !holder->im)
        return wire::kNotFound;
    const HWND window = holder->window, owner = holder->owner, active = GetActiveWindow();
    SetWindowPos(window, nullptr, command.left, command.top, command.right - command.left,
                 command.bottom - command.top, kQuiet | SWP_SHOWWINDOW);
    // Before the others go: when the active one is hidden the system chooses the next itself.
    const Holder* former = active != window ? findByWindow(active) : nullptr;
    if (former && former->window && former->owner == owner)
        SetActiveWindow(window);
    for (const Holder& other : g.holder)
        if (other.window && other.window != window && other.owner == owner)
            SetWindowPos(other.window, nullptr, 0, 0, 0, 0,
                         kQuiet | SWP_NOMOVE | SWP_NOSIZE | SWP_HIDEWINDOW);
    return wire::kDone;
}

std::int32_t giveIm(HWND im, bool close)
{
    Holder* holder = im ? findByIm(im) : nullptr;
    if (!holder)
        return wire::kNotFound;
    moveBack(*holder, !close);
    if (close)
        PostMessageW(im, WM_CLOSE, 0, 0);
    return wire::kDone;
}

void giveAllIms()
{
    for (Holder& holder : g.holder)
        if (holder.im)
            moveBack(holder, true);
}

void checkOwners()
{
    bool any = false;
    for (Holder& holder : g.holder) {
        if (holder.im && !IsWindow(holder.owner))
            moveBack(holder, true);
        any = any || holder.im;
    }
    if (!any)
        KillTimer(g.window, kOwnerTimer);
}

void heldDestroyed(HWND im)
{
    Holder* holder = findByIm(im);
    if (!holder)
        return;
    // Not here: the holder is the parent of a window that is just being destroyed.
    PostMessageW(g.window, wire::kReapHolder, reinterpret_cast<WPARAM>(holder->window), 0);
    *holder = {};
}

void reapHolder(HWND holder)
{
    wchar_t name[32];
    if (isOurs(holder) && GetClassNameW(holder, name, 32)
        && lstrcmpiW(name, wire::kHolderClass) == 0 && !findByWindow(holder))
        DestroyWindow(holder);
}

} // namespace velora::agent
