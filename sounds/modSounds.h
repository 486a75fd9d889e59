#pragma once
// The sound room's ends of the toolbar's routes.
#include <string>

namespace velora {

struct ToolbarRoutes;

/// Fills the routes that lead to the sounds. Call it before the toolbar is made.
void routeSounds(ToolbarRoutes& routes);

/// The file for a sound name, from the favourites or AOL's sounds folder; empty when there is none.
std::wstring GetWavPath(const std::wstring& name);

/// The program's favourites file.
std::wstring favWavsFile();

} // namespace velora
