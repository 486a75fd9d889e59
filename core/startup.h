#pragma once
// What start-up decides, apart from windows and files.
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// What start-up opens in the rooms above core; app/ fills it. An empty one is passed over.
struct StartupServices {
    /// Opens the description database (step 13).
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
    /// Saves what is open when all forms are about to go; e.g. the IM logs.
    std::function<void()> beforeUnload;
};

} // namespace velora
