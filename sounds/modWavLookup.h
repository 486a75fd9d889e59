#pragma once
// From a sound's name to its file, in the user's library and nowhere else.
#include "sounds/modFavWavs.h"

#include <functional>
#include <unordered_map>

namespace velora {

/// The favourites file, held by name so that a flood of names costs no reading. A change of the
/// file is seen at the next look-up.
class clsFavourites {
public:
    explicit clsFavourites(std::wstring listFile) : listFile_(std::move(listFile)) {}
    const std::wstring& listFile() const { return listFile_; }

    /// The paths that the list gives for a name (case ignored), in the order of the list.
    const std::vector<std::wstring>& paths(std::wstring_view name);

private:
    void reload();

    std::wstring listFile_;
    std::wstring stamp_;
    std::unordered_map<std::wstring, std::vector<std::wstring>> byName_;
};

/// True for a path on a drive ("C:\x.wav"). A path to another machine is none: whoever made the
/// list could have the user's machine log on there.
bool isDrivePath(std::wstring_view path);

using FileTest = std::function<bool(const std::wstring& path)>;

/// The first existing file on a drive that the favourites give for the name; empty when none.
std::wstring SearchFavWavs(std::wstring_view name, clsFavourites& favourites,
                           const FileTest& exists);

/// The file for a sound name: from the favourites, else name + ".wav", ".mid" or ".mp3" in one of
/// the folders (no trailing backslash; empty ones are passed over). Empty when there is none, and
/// for a name that is no plain file name: then no file is asked for at all.
std::wstring GetWavPath(std::wstring_view name, clsFavourites& favourites,
                        const std::vector<std::wstring>& folders, const FileTest& exists);

} // namespace velora
