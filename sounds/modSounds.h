#pragma once
// The sound room's ends of the toolbar's routes.
#include <string>

namespace velora {

struct ToolbarRoutes;

/// Fills the routes that lead to the sounds. Call it before the toolbar is made.
void routeSounds(ToolbarRoutes& routes);

/// The file for a sound name, from the whole library: the favourites, AOL's sounds, the categories.
/// Empty when there is none, and for a name that is no plain file name.
std::wstring GetWavPath(const std::wstring& name);

/// The program's favourites file.
std::wstring favWavsFile();

} // namespace velora
