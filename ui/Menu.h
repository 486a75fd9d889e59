#pragma once
// Menus with a handler for each item. Built anew each time they are shown, so that marks and greyed
// items are always right:
//
//   Menu mnuList;
//   mnuList.item(L"&Play", [this] { play(); }, {.isDefault = true});
//   mnuList.separator();
//   mnuList.submenu(L"Add to &group").item(...);
//   mnuList.popup(*this, at);
#include "base/handles.h"
#include "ui/Geometry.h"

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace velora {

class Form;

struct MenuItem {
    bool enabled = true;
    bool checked = false;
    bool radio = false; // a checked item shows a dot
    bool isDefault = false;
};

class Menu {
public:
    Menu();
    ~Menu();
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;

    /// The text may hold a mnemonic ("&Play") and after a TAB the key that does the same.
    Menu& item(std::wstring_view text, std::function<void()> chosen, MenuItem look = {});
    Menu& separator();
    /// The submenu lives in this menu.
    Menu& submenu(std::wstring_view text, bool enabled = true);

    /// Shows it and pumps until it closes; the chosen handler runs after that. Screen coordinates.
    /// Answers whether something was chosen.
    bool popup(Form& form, Point at);
    /// At the place of the last message, or at `control` when the keyboard asked for it.
    bool popupAtCursor(Form& form);

    HMENU handle() const { return menu_.get(); }
    /// Runs the handler of an item's command id; false when it is none of this menu's.
    bool run(int commandId);

private:
    struct Shared;
    Menu(std::shared_ptr<Shared> shared);

    std::shared_ptr<Shared> shared_;
    std::vector<std::unique_ptr<Menu>> children_;
    MenuHandle menu_;
};

} // namespace velora
