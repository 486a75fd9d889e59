#pragma once
// The jukebox, a program of its own beside this one.
#include <string>

namespace velora {

/// Starts the jukebox (the menu's "&Jukebox"). Without Media Player, or without the jukebox's
/// executable in `folder` (the program's own when empty), the user is told. Pumps messages. True
/// when it was started. Closing it is a step of shutdown (core/modMain.h).
bool StartJukebox(const std::wstring& folder = {});

} // namespace velora
