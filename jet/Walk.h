#pragma once
// What a recordset remembers: where it stands, and the record under edit.
#include "jet/Engine.h"

namespace velora::jet {

struct Walk {
    enum class At { record, begin, end, nowhere };
    enum class Edit { none, add, change };

    std::shared_ptr<Engine> engine; ///< null = closed
    std::shared_ptr<Table> table;
    std::optional<std::size_t> index; ///< the data index that moves follow
    bool indexChosen = false;         ///< by the caller: seek may use it
    At at = At::nowhere;
    RowId row;
    std::string entry; ///< of the index, where we stand; survives changes of the tree
    std::string bytes; ///< the row
    bool noMatch = false;
    Edit edit = Edit::none;
    Record record; ///< under edit

    Table& live();
    void toEdge(bool last);
    void step(bool forward);
    /// Stands on an entry of the index, or past the end that `forward` leads to.
    void settle(IndexTree::Place place, bool forward);
    void settleRow(RowId id, bool found, bool forward);
    void needCurrent();
    std::string keyFrom(const std::vector<JetValue>& values);

private:
    void stepByIndex(bool forward);
    void stepByPages(bool forward);
};

JetValue toValue(Pager& pager, const Column& column, const RawValue& raw);
/// 3421 for a value that is none of the column's type, 3251 for a type that cannot be written.
RawValue fromValue(const Column& column, const JetValue& value);

} // namespace velora::jet
