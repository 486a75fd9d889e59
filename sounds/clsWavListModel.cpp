#include "sounds/clsWavListModel.h"

#include "base/files.h"
#include "base/text.h"
#include "sounds/fileFacts.h"
#include "sounds/modFavWavs.h"

#include <algorithm>

namespace velora {

bool clsWavListModel::fill(const WavSource& source, SoundKind kind, const WavListOptions& options)
{
    options_ = options;
    rows_.clear();
    const bool there = source.listFile || folderExists(source.path);
    rows_.begin(0, source.path);
    if (there && source.listFile)
        fillFromListFile(source, kind);
    else if (there)
        fillFromFolder(source, kind);
    order();
    return there;
}

bool clsWavListModel::fillAll(const std::vector<WavSource>& sources, const WavListOptions& options,
                              const std::function<bool()>& goOn)
{
    options_ = options;
    rows_.clear();
    bool all = true;
    for (std::size_t i = 0; i < sources.size(); ++i) {
        rows_.begin(i, sources[i].path);
        if (sources[i].listFile)
            fillFromListFile(sources[i], std::nullopt);
        else
            fillFromFolder(sources[i], std::nullopt);
        if (!goOn()) {
            all = false;
            break;
        }
    }
    order();
    return all;
}

void clsWavListModel::clear()
{
    rows_.clear();
    order();
}

void clsWavListModel::fillFromFolder(const WavSource& source, std::optional<SoundKind> kind)
{
    const bool hides = options_.noAolWavs && isAolSource(source.name);
    visitFolder(source.path, [&](const FileFound& file) {
        const std::optional<SoundKind> found = kindOfFile(file.name);
        if (!found || file.folder || (kind && found != kind))
            return true;
        if (!(hides && found == SoundKind::wav
              && isAolSystemSound(wavName(file.name, options_.preserveCase))))
            rows_.addFile(file.name, *found, file.bytes);
        return true;
    });
}

void clsWavListModel::fillFromListFile(const WavSource& source, std::optional<SoundKind> kind)
{
    for (const ListEntry& entry : readListFile(source.path, true))
        if (entry.kind && (!kind || entry.kind == kind))
            rows_.addEntry(entry.name, entry.path, *entry.kind);
}

void clsWavListModel::find(std::wstring_view typed)
{
    std::vector<std::wstring> words = split(lower(typed), L' ');
    std::erase(words, std::wstring());
    typed_ = typed;
    shown_.clear();
    for (const Index row : order_) {
        const std::wstring_view name = rows_.lowered(row);
        if (std::all_of(words.begin(), words.end(), [&](const std::wstring& word) {
                return name.find(word) != std::wstring_view::npos;
            }))
            shown_.push_back(row);
    }
}

void clsWavListModel::turn(Column column, int id)
{
    descending_ = column == column_ && id == otherId_ && !descending_;
    column_ = column;
    otherId_ = id;
}

void clsWavListModel::sortBy(Column column)
{
    turn(column, 0);
    order();
}

void clsWavListModel::sortByText(int id, const std::function<std::wstring(Index row)>& text)
{
    turn(Column::other, id);
    std::vector<std::wstring> keys(rows_.count());
    for (Index row = 0; row < rows_.count(); ++row)
        keys[row] = lower(text(row));
    order_ = rows_.sortedByName();
    std::stable_sort(order_.begin(), order_.end(),
                     [&](Index a, Index b) { return keys[a] < keys[b]; });
    if (descending_)
        std::reverse(order_.begin(), order_.end());
    find(typed_);
}

void clsWavListModel::order()
{
    // What a column of the caller's holds is not known here: new rows come in their names' order.
    if (column_ == Column::other)
        turn(Column::name, 0);
    order_ = rows_.sortedByName();
    if (column_ == Column::size) {
        // Sizes and places side by side: a comparison that looked the sizes up would be slow.
        std::vector<std::pair<std::uint64_t, std::size_t>> keys(order_.size());
        for (std::size_t i = 0; i < order_.size(); ++i)
            keys[i] = {rows_.bytes(order_[i]), i};
        std::sort(keys.begin(), keys.end());
        const std::vector<Index> byName = order_;
        std::transform(keys.begin(), keys.end(), order_.begin(),
                       [&](const auto& key) { return byName[key.second]; });
    }
    if (descending_)
        std::reverse(order_.begin(), order_.end());
    find(typed_);
}

std::wstring clsWavListModel::name(int index) const
{
    return std::wstring(rows_.name(at(index), options_.preserveCase));
}

int clsWavListModel::indexOf(std::wstring_view path) const
{
    const std::wstring_view file = path.substr(path.find_last_of(L"\\/") + 1);
    for (int i = 0; i < count(); ++i)
        if (rows_.fileName(at(i)) == file && this->path(i) == path)
            return i;
    return -1;
}

int clsWavListModel::beginningWith(std::wstring_view typed, int from) const
{
    const std::wstring wanted = lower(typed);
    for (int i = 0; i < count(); ++i) {
        const int index = (std::max(from, 0) + i) % count();
        if (rows_.lowered(at(index)).starts_with(wanted))
            return index;
    }
    return -1;
}

} // namespace velora
