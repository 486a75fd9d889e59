#include "sounds/modWavLookup.h"

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

bool isDrivePath(std::wstring_view path)
{
    const wchar_t drive = path.empty() ? L'\0' : lowerChar(path[0]);
    return path.size() > 3 && drive >= L'a' && drive <= L'z' && path[1] == L':' && path[2] == L'\\';
}

std::wstring SearchFavWavs(std::wstring_view name, clsFavourites& favourites,
                           const FileTest& exists)
{
    return trap(
        kModule,
        [&] {
            for (const std::wstring& path : favourites.paths(name))
                if (isDrivePath(path) && exists(path))
                    return path;
            return std::wstring();
        },
        std::wstring());
}

std::wstring GetWavPath(std::wstring_view name, clsFavourites& favourites,
                        const std::vector<std::wstring>& folders, const FileTest& exists)
{
    return trap(
        kModule,
        [&] {
            if (!isSafeSoundName(name))
                return std::wstring();
            std::wstring path = SearchFavWavs(name, favourites, exists);
            if (!path.empty())
                return path;
            for (const std::wstring& folder : folders)
                for (const SoundKind kind : {SoundKind::wav, SoundKind::mid, SoundKind::mp3}) {
                    path = (folder + L"\\").append(name).append(extensionOf(kind));
                    if (!folder.empty() && exists(path))
                        return path;
                }
            return std::wstring();
        },
        std::wstring());
}

} // namespace velora
