#pragma once
// What the wav list shows, apart from its window: the rows of one source or of the whole library,
// their order and the quick find.
#include "sounds/clsSoundRows.h"
#include "sounds/modWavSources.h"

#include <functional>

namespace velora {

struct WavListOptions {
    bool preserveCase = false;
    bool noAolWavs = false;
};

class clsWavListModel {
public:
    enum class Column { name, size, other };
    using Index = clsSoundRows::Index;

    /// Lists the source's sounds of one kind. False, and no rows, when its folder is not there.
    bool fill(const WavSource& source, SoundKind kind, const WavListOptions& options);
    /// Lists the sounds of every kind of all these sources. Asks `goOn` between two of them; false
    /// when that ended it.
    bool fillAll(
        const std::vector<WavSource>& sources, const WavListOptions& options,
        const std::function<bool()>& goOn = [] { return true; });
    void clear();

    /// Shows only the rows that hold every word of the text.
    void find(std::wstring_view typed);
    const std::wstring& typed() const { return typed_; }
    /// The same column again turns the order around.
    void sortBy(Column column);
    /// By a text of the caller's for each row, which it is asked for once; `id` tells such columns
    /// apart.
    void sortByText(int id, const std::function<std::wstring(Index row)>& text);
    bool descending() const { return descending_; }
    Column sortColumn() const { return column_; }

    int count() const { return static_cast<int>(shown_.size()); }
    const clsSoundRows& rows() const { return rows_; }
    /// The row shown at an index.
    Index at(int index) const { return shown_[static_cast<std::size_t>(index)]; }
    std::wstring name(int index) const;
    std::wstring path(int index) const { return rows_.path(at(index)); }
    std::uint64_t bytes(int index) const { return rows_.bytes(at(index)); }
    SoundKind kind(int index) const { return rows_.kind(at(index)); }
    /// Index into the sources that fillAll got.
    std::size_t source(int index) const { return rows_.source(at(index)); }

    /// Index of the row with this path; -1 when it is not shown.
    int indexOf(std::wstring_view path) const;
    /// Index of the next row from `from` on, around the end, whose name begins with the text; -1
    /// when there is none.
    int beginningWith(std::wstring_view typed, int from) const;

private:
    void fillFromFolder(const WavSource& source, std::optional<SoundKind> kind);
    void fillFromListFile(const WavSource& source, std::optional<SoundKind> kind);
    void turn(Column column, int id);
    void order();

    clsSoundRows rows_;
    std::vector<Index> order_; ///< all rows, sorted
    std::vector<Index> shown_; ///< of them, those that are found
    std::wstring typed_;
    WavListOptions options_;
    Column column_ = Column::name;
    int otherId_ = 0;
    bool descending_ = false;
};

} // namespace velora
