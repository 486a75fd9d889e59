#pragma once
// What the wav list shows, apart from its window: where sounds are taken from, their rows, their
// order and the quick find.
#include "sounds/modWavList.h"

namespace velora {

/// Where a list takes its sounds from.
struct WavSource {
    std::wstring name;
    std::wstring path; ///< of a folder (no trailing separator) or of a list file
    bool listFile = false;
};

/// AOL's sounds, AOL's folder and the favourites. `separator` stands between the parts of a path.
std::vector<WavSource> wavSources(const std::wstring& aolFolder, const std::wstring& programFolder,
                                  wchar_t separator = L'\\');

struct WavListOptions {
    bool preserveCase = false;
    bool noAolWavs = false;
};

class clsWavListModel {
public:
    enum class Column { name, size };

    /// Lists the source's sounds of one kind. False, and no rows, when its folder is not there.
    bool fill(const WavSource& source, SoundKind kind, const WavListOptions& options);
    /// Shows only the rows that hold every word of the text.
    void find(std::wstring_view typed);
    /// The same column again turns the order around.
    void sortBy(Column column);
    Column sortColumn() const { return column_; }
    bool descending() const { return descending_; }

    int count() const { return static_cast<int>(shown_.size()); }
    const SoundRow& operator[](int index) const { return rows_[shown_[index]]; }
    /// Index of the row with this path; -1 when it is not shown.
    int indexOf(std::wstring_view path) const;
    /// Index of the next row from `from` on, around the end, whose name begins with the text; -1
    /// when there is none.
    int beginningWith(std::wstring_view typed, int from) const;

private:
    void fillFromFolder(const WavSource& source, SoundKind kind, const WavListOptions& options);
    void fillFromListFile(const WavSource& source, SoundKind kind, const WavListOptions& options);
    void order();

    std::vector<SoundRow> rows_;
    std::vector<std::size_t> shown_;
    std::wstring typed_;
    Column column_ = Column::name;
    bool descending_ = false;
};

} // namespace velora
