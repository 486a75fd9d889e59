#pragma once
// The description files of older versions, "desc*.dat" in the data folder: one record a line, file
// name, TAB, description.
#include "sounds/modDescription.h"

#include <vector>

namespace velora {

struct OldDescriptions {
    std::vector<Description> records; ///< the description is in the comments
    std::size_t skipped = 0;          ///< lines that say nothing: no file name or no description
};

/// Of a name given with its folder the folder is left out; of two lines about one file the first
/// counts (a file name in any case is the same).
OldDescriptions parseOldDescriptions(std::wstring_view text);

/// The files that are there to be imported, with their paths, in the order of their names.
std::vector<std::wstring> oldDescriptionFiles(const std::wstring& dataFolder);
/// What an imported file is called from then on, so that it is not offered again.
std::wstring importedName(const std::wstring& path);

} // namespace velora
