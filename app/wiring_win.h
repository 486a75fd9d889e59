#pragma once
// The one place that knows every room: what start-up opens, and where the toolbar sends what it
// hears.
#include "core/modMain.h"

namespace velora {

StartupServices startupServices();
/// Fills the toolbar's table; before the toolbar is made.
void fillToolbarRoutes();
/// After the message loop, before COM goes.
void closeDatabase();
/// AOL gets back what was taken from its windows. Runs in a crashed process, too.
void giveAolBack() noexcept;

} // namespace velora
