#pragma once
// Start-up and shutdown: the steps of Main in their order. What lies above this room is given by
// app/ as services.
#include "core/startup.h"

#include <string>

namespace velora {

/// Runs every step of start-up. True when the program is to go on with its message loop; false
/// when it is to end (a refusal was shown, or a command-line verb is done). Pumps messages.
bool Main(const std::wstring& commandLine, const StartupServices& services);

/// The shutdown path. With `askFirst` the user is asked and may refuse: false then. Otherwise AOL
/// gets its windows back, the jukebox is offered to be closed, and every form is unloaded; the
/// message loop then ends. Pumps messages.
bool UnloadAllForms(bool askFirst);

/// The folder of the executable, without a trailing backslash.
std::wstring AppPath();

/// Running on Windows NT; set by start-up.
bool runningOnNT();
/// The Windows Media Player control is in the system folder; set by start-up.
bool mediaPlayerPresent();
/// Today's part of log names, "mm-dd-yy".
std::wstring logDate();

} // namespace velora
