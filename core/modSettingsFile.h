#pragma once
// All settings of the program in one text file, to be kept or taken to another machine. One line
// for each: section, name, kind ("text" or "number") and value, with TAB between them. What the
// product key itself holds tells of this machine and stays out. Pure but for saveSettings and
// loadSettings.
#include "settings/RegValue.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

struct Setting {
    std::wstring section, name;
    RegValue value; ///< a text or a Long
    bool operator==(const Setting&) const = default;
};

/// What the settings hold now.
std::vector<Setting> presentSettings();
/// Puts these in the place of all; options that are others now are announced. When the settings
/// refuse some, what was there is put back as far as they let it, and Error is thrown.
void replaceSettings(const std::vector<Setting>& settings);

/// The bytes of the file.
std::string settingsFile(const std::vector<Setting>& settings);

struct ReadSettings {
    std::vector<Setting> settings;
    /// The first line that cannot be read, from 1; nothing of the file is to be used then.
    std::optional<std::size_t> badLine;
};
ReadSettings readSettingsFile(std::string_view bytes);

/// Asks for a file and writes the settings into it. `owner` is the window that asks, as an HWND.
/// Pumps messages.
void saveSettings(void* owner);
/// Asks for a file and takes the settings from it. True when they are others now.
bool loadSettings(void* owner);
/// The same for this file: asks before it replaces, and keeps a copy of the present ones.
bool loadSettingsFrom(const std::wstring& path);

} // namespace velora
