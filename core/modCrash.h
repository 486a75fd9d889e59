#pragma once
// What is left to do when the program crashes: a text report that the user can send, and AOL gets
// its windows back.
#include <string>

namespace velora {

/// From now on an unhandled exception writes velora-crash.txt (the former one is kept as .1) into
/// `folder`, calls `giveBack` and ends the process. `giveBack` runs in a damaged process: it may
/// only post or send bounded messages.
void installCrashHandler(const std::wstring& folder, void (*giveBack)() noexcept) noexcept;

} // namespace velora
