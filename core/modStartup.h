#pragma once
// The rules of start-up: its steps in their order, its refusals and messages. No Windows here.
#include "core/StartupHost.h"
#include "core/modMain.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velora {

/// All steps. False when one of them ends the program.
bool runStartup(const std::wstring& commandLine, StartupHost& host,
                const StartupServices& services);

/// What follows the program's name in the whole command line of the process, without the blanks
/// between them.
std::wstring argumentsOf(std::wstring_view wholeCommandLine);

struct CommandLineVerb {
    enum class Kind { none, changeAol, liveUpdate, raiseError, silent, installScheme };
    Kind kind = Kind::none;
    std::wstring file; ///< of installScheme, without the quotes around it
    bool operator==(const CommandLineVerb&) const = default;
};
/// Verbs are compared exactly, case and blanks included; any other text is a file name.
CommandLineVerb parseCommandLine(std::wstring_view commandLine);

/// The name under which the program agrees to run, in any case.
bool isOwnExecutableName(std::wstring_view name);

/// The folder that data is migrated from: the one that "AppPath" names, unless it belongs to an
/// installation of this generation. Empty for none.
std::wstring migrationSource(std::wstring_view appPath, const std::wstring& programFolder,
                             StartupHost& host);

/// The companion files, in the order of their check, and the folders below the program folder, in
/// the order in which they are made.
const std::vector<std::wstring>& companionFiles();
const std::vector<std::wstring>& programFolders();

/// The registry keys (below HKEY_CLASSES_ROOT) of the fade-scheme file type, and their default
/// values.
std::vector<std::pair<std::wstring, std::wstring>>
schemeFileType(const std::wstring& programFolder, const std::wstring& executableName);

} // namespace velora
