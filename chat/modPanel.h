#pragma once
// Where the button panel stands over AOL's frame.
#include "ui/Geometry.h"

#include <optional>
#include <string>
#include <string_view>

namespace velora {

/// The panel's place as seen from the frame's upper right corner, so that it keeps its distance
/// from there when the user sizes AOL.
struct PanelOffset {
    int fromRight = 0; ///< from the panel's right edge to the frame's
    int fromTop = 0;   ///< from the frame's top edge to the panel's
    bool operator==(const PanelOffset&) const = default;
};

/// The setting's text, "right,top"; absent for anything else.
std::optional<PanelOffset> parsePanelOffset(const std::wstring& text);
std::wstring panelOffsetText(PanelOffset offset);

/// The panel's rectangle. It stays over the frame: where the frame is too small for the offset the
/// panel moves inward, its left and upper edges last.
Rect panelPlace(const Rect& frame, Size panel, PanelOffset offset);

/// The offset of a panel that the user has dragged to a place.
PanelOffset panelOffset(const Rect& frame, const Rect& panel);

/// Option "MenuAccess": the program's menu is in the notification area, too ("Tray"); else on the
/// panel alone ("Toolbar").
bool menuInTray(std::wstring_view menuAccess);

/// Option "buttons": the names of the buttons that the user has hidden, with commas between.
bool holdsName(std::wstring_view names, std::wstring_view name);
std::wstring withName(std::wstring_view names, std::wstring_view name);
std::wstring withoutName(std::wstring_view names, std::wstring_view name);

} // namespace velora
