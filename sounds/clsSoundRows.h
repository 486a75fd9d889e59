#pragma once
// The rows of a sound list, packed: a hundred thousand take a dozen megabytes, because their texts
// share two blocks (as they are, and in lower case for sorting and finding).
#include "sounds/modWavList.h"

namespace velora {

class clsSoundRows {
public:
    using Index = std::uint32_t;

    void clear();
    /// Rows added from now on come from this source (an index of the caller's), and those of
    /// addFile from this folder (no trailing separator).
    void begin(std::size_t source, std::wstring folder = {});
    /// A file of the folder. One without a name before its extension is left out.
    void addFile(std::wstring_view fileName, SoundKind kind, std::uint64_t bytes);
    /// An entry of a list: its size is looked up when it is asked for. One whose texts are longer
    /// than any path is left out.
    void addEntry(std::wstring_view name, std::wstring_view path, SoundKind kind);

    Index count() const { return static_cast<Index>(rows_.size()); }
    /// As it is shown, in lower case unless `preserveCase`; the views live until the next change.
    std::wstring_view name(Index row, bool preserveCase) const;
    std::wstring_view lowered(Index row) const;
    std::wstring path(Index row) const;
    /// The path's part after its last separator.
    std::wstring_view fileName(Index row) const;
    SoundKind kind(Index row) const { return static_cast<SoundKind>(rows_[row].kind); }
    std::size_t source(Index row) const { return rows_[row].source; }
    /// 0 for an entry whose file is not there.
    std::uint64_t bytes(Index row) const;
    /// What the rows take in memory.
    std::size_t memory() const;

    /// All rows by their names, without regard to case; equal ones in the order they came.
    std::vector<Index> sortedByName() const;

private:
    struct Row {
        mutable std::uint64_t bytes;
        std::uint32_t name, path; ///< places in the blocks
        std::uint16_t nameLength, pathLength;
        std::uint16_t source;
        std::uint16_t folder : 14; ///< of the file; kNoFolder: the path is whole
        std::uint16_t kind : 2;
    };
    static constexpr std::uint16_t kNoFolder = 0x3FFF;

    std::uint32_t keep(std::wstring_view text);

    std::vector<Row> rows_;
    std::wstring texts_, lowered_;
    std::vector<std::wstring> folders_;
    std::size_t source_ = 0;
};

} // namespace velora
