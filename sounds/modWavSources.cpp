#include "sounds/modWavSources.h"

#include "base/files.h"
#include "base/safename.h"
#include "base/text.h"
#include "sounds/fileFacts.h"

#include <algorithm>

namespace velora {
namespace {

/// "C:\" and plain names behind it.
bool isPlainDrivePath(std::wstring_view path)
{
    const auto names = namesBehindDrive(path);
    return names && std::all_of(names->begin(), names->end(), [](const std::wstring& name) {
               return isPlainFileName(name);
           });
}

} // namespace

std::vector<WavSource> wavSources(const std::wstring& aolFolder, const std::wstring& programFolder,
                                  const std::vector<WavCategory>& categories)
{
    using Kind = WavSource::Kind;
    std::vector<WavSource> sources;
    if (!aolFolder.empty()) {
        sources.push_back({L"AOL Sounds", joinPath(aolFolder, L"sounds"), false, Kind::aol});
        sources.push_back({L"AOL Directory", aolFolder, false, Kind::aol});
    }
    sources.push_back(
        {L"FavWavs", joinPath(programFolder, L"favwavs.dat"), true, Kind::favourites});
    for (const WavCategory& category : categories)
        sources.push_back(
            {category.name,
             category.isGroup() ? groupFile(programFolder, category.group) : category.folder,
             category.isGroup(), Kind::category});
    return sources;
}

std::vector<WavSource> lookupOrder(const std::vector<WavSource>& sources)
{
    const auto rank = [](const WavSource& source) {
        if (source.kind == WavSource::Kind::aol)
            return equalNoCase(source.name, L"AOL Sounds") ? 1 : 3;
        return source.kind == WavSource::Kind::favourites ? 0 : 2;
    };
    std::vector<WavSource> ordered = sources;
    std::stable_sort(ordered.begin(), ordered.end(),
                     [&](const auto& a, const auto& b) { return rank(a) < rank(b); });
    return ordered;
}

bool isLibraryPath(std::wstring_view path)
{
    return kindOfFile(path) && isPlainDrivePath(path);
}

bool isDriveFolder(std::wstring_view path)
{
    return isPlainDrivePath(path)
           || (path.size() == 3 && isPlainDrivePath(std::wstring(path) + L"x"));
}

} // namespace velora
