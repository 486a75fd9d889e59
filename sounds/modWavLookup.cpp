#include "sounds/modWavLookup.h"

#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "sounds/fileFacts.h"
#include "sounds/modSoundCommand.h"

namespace velora {
namespace {

constexpr char kModule[] = "modWavLookup";

} // namespace

const std::vector<std::wstring>& clsFavourites::paths(std::wstring_view name)
{
    static const std::vector<std::wstring> kNone;
    const std::wstring stamp = fileStamp(listFile_);
    if (stamp != stamp_) {
        stamp_ = stamp;
        reload();
    }
    const auto found = byName_.find(lower(name));
    return found == byName_.end() ? kNone : found->second;
}

void clsFavourites::reload()
{
    byName_.clear();
    for (const ListEntry& entry : readListFile(listFile_, false))
        if (entry.kind)
            byName_[entry.name].push_back(entry.path);
}

std::wstring SearchFavWavs(std::wstring_view name, clsFavourites& favourites,
                           const FileTest& exists)
{
    return trap(
        kModule,
        [&] {
            for (const std::wstring& path : favourites.paths(name))
                if (isLibraryPath(path) && exists(path))
                    return path;
            return std::wstring();
        },
        std::wstring());
}

std::wstring wavPathIn(const WavSource& source, std::wstring_view name, clsListFiles& lists,
                       const FileTest& exists)
{
    return trap(
        kModule,
        [&] {
            if (!isSafeSoundName(name))
                return std::wstring();
            if (source.listFile)
                return SearchFavWavs(name, lists[source.path], exists);
            if (isDriveFolder(source.path))
                for (const SoundKind kind : {SoundKind::wav, SoundKind::mid, SoundKind::mp3}) {
                    const std::wstring path =
                        joinPath(source.path, std::wstring(name).append(extensionOf(kind)));
                    if (exists(path))
                        return path;
                }
            return std::wstring();
        },
        std::wstring());
}

std::wstring GetWavPath(std::wstring_view name, const std::vector<WavSource>& sources,
                        clsListFiles& lists, const FileTest& exists)
{
    if (isSafeSoundName(name))
        for (const WavSource& source : sources)
            if (std::wstring path = wavPathIn(source, name, lists, exists); !path.empty())
                return path;
    return {};
}

} // namespace velora
