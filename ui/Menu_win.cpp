#include "ui/Menu.h"

#include "base/trap.h"
#include "base/win_error.h"
#include "ui/Form.h"

#include <string>

namespace velora {
namespace {
constexpr int kFirstId = 1000; // above the ids of controls
}

// The handlers of a menu and all its submenus, by command id.
struct Menu::Shared {
    std::vector<std::function<void()>> handlers;
};

Menu::Menu() : Menu(std::make_shared<Shared>()) {}

Menu::Menu(std::shared_ptr<Shared> shared) : shared_(std::move(shared)), menu_(CreatePopupMenu())
{
    if (!menu_)
        throwLastError("a menu cannot be made");
}

Menu::~Menu()
{
    // DestroyMenu frees submenus too; a child must not free its own a second time.
    for (const auto& child : children_)
        child->menu_.release();
}

Menu& Menu::item(std::wstring_view text, std::function<void()> chosen, MenuItem look)
{
    const int id = kFirstId + static_cast<int>(shared_->handlers.size());
    shared_->handlers.push_back(std::move(chosen));
    std::wstring caption(text);
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_ID | MIIM_STRING | MIIM_STATE | MIIM_FTYPE;
    info.fType = look.radio ? MFT_RADIOCHECK : MFT_STRING;
    info.wID = static_cast<UINT>(id);
    info.fState = (look.enabled ? 0u : MFS_DISABLED) | (look.checked ? MFS_CHECKED : 0u)
                  | (look.isDefault ? MFS_DEFAULT : 0u);
    info.dwTypeData = caption.data();
    InsertMenuItemW(menu_.get(), static_cast<UINT>(-1), TRUE, &info);
    return *this;
}

Menu& Menu::separator()
{
    AppendMenuW(menu_.get(), MF_SEPARATOR, 0, nullptr);
    return *this;
}

Menu& Menu::submenu(std::wstring_view text, bool enabled)
{
    children_.push_back(std::unique_ptr<Menu>(new Menu(shared_)));
    Menu& child = *children_.back();
    AppendMenuW(menu_.get(), MF_POPUP | (enabled ? 0u : MF_GRAYED),
                reinterpret_cast<UINT_PTR>(child.handle()), std::wstring(text).c_str());
    return child;
}

bool Menu::popup(Form& form, Point at)
{
    // A menu of a window that is not in front would stay open when the user clicks elsewhere; a
    // panel that never takes the focus gives it back afterwards.
    const HWND before = GetForegroundWindow();
    const HWND window = form.hwnd();
    const bool panel = GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_NOACTIVATE;
    SetForegroundWindow(window);
    const int id = static_cast<int>(TrackPopupMenuEx(menu_.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON,
                                                     at.x, at.y, window, nullptr));
    if (panel && before && GetForegroundWindow() == window)
        SetForegroundWindow(before);
    PostMessageW(window, WM_NULL, 0, 0);
    return id != 0 && run(id);
}

bool Menu::popupAtCursor(Form& form)
{
    POINT at = {};
    GetCursorPos(&at);
    return popup(form, {static_cast<int>(at.x), static_cast<int>(at.y)});
}

bool Menu::run(int commandId)
{
    const int index = commandId - kFirstId;
    if (index < 0 || index >= static_cast<int>(shared_->handlers.size()))
        return false;
    const auto chosen = shared_->handlers[static_cast<std::size_t>(index)];
    if (chosen)
        chosen();
    return true;
}

} // namespace velora
