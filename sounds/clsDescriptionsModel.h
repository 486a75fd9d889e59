#pragma once
// What the list of descriptions shows: the records of one category or of all, those that hold what
// is searched for, in the order of a column.
#include "sounds/modDescription.h"

#include <vector>

namespace velora {

struct DescriptionRow {
    std::wstring table;
    Description record;
};

class clsDescriptionsModel {
public:
    /// The columns are the fields in their order, and the category.
    static constexpr int kColumns = static_cast<int>(kDescriptionFields.size()) + 1;
    static std::wstring title(int column);

    void setRows(std::vector<DescriptionRow> rows);
    /// Shows the rows that hold the term, in any case; all for none.
    void find(std::wstring_view term);
    /// The order of a column; of the same again, the reverse order.
    void sortBy(int column);
    int sortColumn() const { return column_; }
    bool descending() const { return descending_; }

    int count() const { return static_cast<int>(shown_.size()); }
    const DescriptionRow& operator[](int row) const;
    /// Empty outside of the list.
    std::wstring cell(int row, int column) const;
    /// -1 when it is not shown.
    int indexOf(std::wstring_view table, std::wstring_view fileName) const;
    /// The row whose name begins so, from `from` on and around the end; -1 for none.
    int beginningWith(std::wstring_view typed, int from) const;

private:
    void arrange();

    std::vector<DescriptionRow> rows_;
    std::vector<std::size_t> shown_;
    std::wstring term_;
    int column_ = 0;
    bool descending_ = false;
};

} // namespace velora
