#include "sounds/clsWavListModel.h"

#include "base/files.h"
#include "base/text.h"
#include "sounds/fileFacts.h"
#include "sounds/modFavWavs.h"

#include <algorithm>

namespace velora {

std::vector<WavSource> wavSources(const std::wstring& aolFolder, const std::wstring& programFolder,
                                  wchar_t separator)
{
    return {{L"AOL Sounds", aolFolder + separator + L"sounds", false},
            {L"AOL Directory", aolFolder, false},
            {L"FavWavs", programFolder + separator + L"favwavs.dat", true}};
}

bool clsWavListModel::fill(const WavSource& source, SoundKind kind, const WavListOptions& options)
{
    rows_.clear();
    const bool there = source.listFile || folderExists(source.path);
    if (there && source.listFile)
        fillFromListFile(source, kind, options);
    else if (there)
        fillFromFolder(source, kind, options);
    order();
    return there;
}

void clsWavListModel::fillFromFolder(const WavSource& source, SoundKind kind,
                                     const WavListOptions& options)
{
    const bool hide = options.noAolWavs && kind == SoundKind::wav && isAolSource(source.name);
    const std::wstring pattern = std::wstring(L"*").append(extensionOf(kind));
    const std::wstring separator(1, source.path.find(L'\\') == std::wstring::npos ? L'/' : L'\\');
    for (const FileEntry& file : listFolder(source.path, pattern)) {
        std::wstring name = wavName(file.name, options.preserveCase);
        if (!file.folder && !name.empty() && !(hide && isAolSystemSound(name)))
            rows_.push_back(
                {std::move(name), source.path + separator + file.name, kind, file.size});
    }
}

void clsWavListModel::fillFromListFile(const WavSource& source, SoundKind kind,
                                       const WavListOptions& options)
{
    for (ListEntry& entry : readListFile(source.path, options.preserveCase))
        if (entry.kind == kind) {
            const std::uint64_t bytes = fileBytes(entry.path).value_or(0);
            rows_.push_back({std::move(entry.name), std::move(entry.path), kind, bytes});
        }
}

void clsWavListModel::find(std::wstring_view typed)
{
    typed_ = typed;
    shown_ = quickFind(rows_, typed_);
}

void clsWavListModel::sortBy(Column column)
{
    descending_ = column == column_ && !descending_;
    column_ = column;
    order();
}

void clsWavListModel::order()
{
    sortRows(rows_);
    if (column_ == Column::size)
        std::stable_sort(rows_.begin(), rows_.end(),
                         [](const SoundRow& a, const SoundRow& b) { return a.bytes < b.bytes; });
    if (descending_)
        std::reverse(rows_.begin(), rows_.end());
    find(typed_);
}

int clsWavListModel::indexOf(std::wstring_view path) const
{
    for (int i = 0; i < count(); ++i)
        if ((*this)[i].path == path)
            return i;
    return -1;
}

int clsWavListModel::beginningWith(std::wstring_view typed, int from) const
{
    for (int i = 0; i < count(); ++i) {
        const int index = (std::max(from, 0) + i) % count();
        if (startsWithNoCase((*this)[index].name, typed))
            return index;
    }
    return -1;
}

} // namespace velora
