#pragma once
// Remembered window places. A place is used only where enough of the title bar to grab it lies on a
// connected monitor; coordinates may be negative (a monitor at the left of the first).
#include "ui/Geometry.h"

#include <optional>
#include <vector>

namespace velora {

/// What must be visible of the strip at a window's top: pixels across, and all of its height.
inline constexpr int kTitleVisible = 80;
inline constexpr int kTitleHeight = 24;

/// `wanted` when a user could still grab it, shrunk to the monitor where it is larger than that.
/// Absent otherwise, also for nonsense (empty or absurd sizes), and when there is no monitor.
std::optional<Rect> usablePlace(const Rect& wanted, const std::vector<Rect>& monitors);

/// `wanted` moved, and shrunk if it must be, to lie wholly inside `area` (a popup near an edge).
Rect movedInto(const Rect& wanted, const Rect& area);

/// The usable areas (without task bar) of the monitors, the primary one first.
std::vector<Rect> monitorAreas();
/// The usable area of the monitor that holds most of `place`, else of the nearest one.
Rect monitorAreaNear(const Rect& place);

} // namespace velora
