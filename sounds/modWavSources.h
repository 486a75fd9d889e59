#pragma once
// Where sounds are listed from and looked up: AOL's folders, the favourites, the user's categories.
#include "sounds/modCategories.h"
#include "sounds/modWavList.h"

namespace velora {

struct WavSource {
    enum class Kind { aol, favourites, category };
    std::wstring name;
    std::wstring path; ///< of a folder (no trailing separator) or of a list file
    bool listFile = false;
    Kind kind = Kind::aol;
};

/// All sources in the order of the source list: AOL's sounds and folder (none without an AOL
/// folder), the favourites, the categories.
std::vector<WavSource> wavSources(const std::wstring& aolFolder, const std::wstring& programFolder,
                                  const std::vector<WavCategory>& categories);

/// The same in the order in which a name is looked up: the favourites, AOL's sounds, the
/// categories, AOL's folder.
std::vector<WavSource> lookupOrder(const std::vector<WavSource>& sources);

/// A path to a sound that the program may open for what a list file says: on a drive ("C:\x.wav"),
/// with the ending of a sound, and plain: a path to another machine, a stream, a device or a way
/// back through ".." is none.
bool isLibraryPath(std::wstring_view path);
/// The same for a folder: "C:\x".
bool isDriveFolder(std::wstring_view path);

} // namespace velora
