#pragma once
// Where the button panel stands over AOL's frame.
#include "ui/Geometry.h"

#include <optional>
#include <string>

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

} // namespace velora
