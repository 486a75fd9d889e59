#pragma once
// From a sound's name to its file, in the user's library and nowhere else.
#include "sounds/modFavWavs.h"
#include "sounds/modWavSources.h"

#include <functional>
#include <map>
#include <unordered_map>

namespace velora {

/// A list file, held by name so that a flood of names costs no reading. A change of the file is
/// seen at the next look-up.
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

/// The list files that look-ups have used.
class clsListFiles {
public:
    clsFavourites& operator[](const std::wstring& listFile)
    {
        return lists_.try_emplace(listFile, listFile).first->second;
    }

private:
    std::map<std::wstring, clsFavourites> lists_;
};

using FileTest = std::function<bool(const std::wstring& path)>;

/// The first existing file that the list gives for the name; empty when none. Only paths of the
/// library's kind are asked for.
std::wstring SearchFavWavs(std::wstring_view name, clsFavourites& favourites,
                           const FileTest& exists);

/// The file that one source has for a name (name + ".wav", ".mid" or ".mp3" in a folder); empty
/// when none. For a name that is no plain file name, and in a folder that is on no drive, no file
/// is asked for at all.
std::wstring wavPathIn(const WavSource& source, std::wstring_view name, clsListFiles& lists,
                       const FileTest& exists);

/// The file for a sound name, from the first of the sources that has it; empty when there is none.
std::wstring GetWavPath(std::wstring_view name, const std::vector<WavSource>& sources,
                        clsListFiles& lists, const FileTest& exists);

} // namespace velora
