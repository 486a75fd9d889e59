#pragma once
// Start-up and shutdown: the steps of Main in their order. What lies above this room is given by
// app/ as services.
#include <functional>
#include <string>

namespace velora {

/// What start-up and shutdown open and close in the rooms above core. An empty one is passed over.
struct StartupServices {
    /// Opens the description database.
    std::function<void()> openDatabase;
    /// Installs a fade-scheme file; false when it could not be.
    std::function<bool(const std::wstring& file)> installFadeScheme;
    /// The update check.
    std::function<void()> liveUpdate;
    /// Makes the default mail and board templates when they are missing.
    std::function<void()> makeDefaultTemplates;
    std::function<void()> loadChatKeywords;
    std::function<void()> loadCategories;
    /// Loads the toolbar, from then on the program's main window.
    std::function<void()> loadToolbar;
    /// Removes hooks and subclasses from AOL's windows and restores its workspace background.
    std::function<void()> releaseAol;
};

/// Runs every step of start-up. True when the program is to go on with its message loop; false when
/// it is to end (a refusal was shown, or a command-line verb is done). `commandLine` is what
/// follows the program's name. Pumps messages.
bool Main(const std::wstring& commandLine, StartupServices services);

/// The shutdown path. With `askFirst` the user is asked and may refuse: false then. Otherwise AOL
/// gets its windows back, the jukebox is offered to be closed, every form is unloaded and the
/// message loop ends. Pumps messages.
bool UnloadAllForms(bool askFirst);

/// The folder of the executable, without a trailing backslash.
std::wstring AppPath();

/// Set by start-up.
bool runningOnNT();

/// The day as the names of daily logs carry it, "mm-dd-yy".
std::wstring logDate();

} // namespace velora
