#pragma once
// What stands around the IM manager: alerts, auto-answer, ignoring, buddy notes, IMs off and on.
#include "im_mail/IMEvents.h"

#include <functional>

namespace velora {

/// What the services ask of the manager.
struct IMServiceRoutes {
    /// Brings an IM to the front (an alert was clicked).
    std::function<void(WindowId im)> focusIM;
    /// Auto-answer was switched on or off: the IM window's button shows it.
    std::function<void()> adjustIMWindow;
};

/// Listens to the manager's events and fills its routes. Call it once at start-up, before the
/// manager's first scan.
void startIMServices(IMServiceRoutes manager);
/// The program ends.
void endIMServices();

} // namespace velora
