#pragma once
// AOL's folder: the program under its two names, "idb\main.idx" with the screen names, the sounds,
// the marker files of its edition, and "aol.ini" with what else the user of the stand-in wants.
#include "aolhost/Options.h"

#include <string>

namespace aolhost {

std::wstring programPath();

/// What the folder of the running program says: edition by its marker files, version by the
/// program's version resource, screen names from main.idx.
Options optionsOfFolder(const std::wstring& program);

/// The lines "name=value" of aol.ini in `options.folder`.
void applyFolderFile(Options& options);

/// Makes such a folder, for the edition and version of the options. False, with the reason on the
/// error output, when it cannot be written.
bool makeAolFolder(const std::wstring& folder, const Options& options);

/// The content of main.idx: its records hold the names between NUL bytes.
std::string mainIndex(const std::vector<std::wstring>& names, const std::wstring& guest);

} // namespace aolhost
