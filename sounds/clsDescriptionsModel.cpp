#include "sounds/clsDescriptionsModel.h"

#include "base/text.h"

#include <algorithm>

namespace velora {
namespace {

constexpr int kCategory = static_cast<int>(kDescriptionFields.size());

const std::wstring& value(const DescriptionRow& row, int column)
{
    return column == kCategory
               ? row.table
               : row.record.*kDescriptionFields[static_cast<std::size_t>(column)].value;
}

} // namespace

std::wstring clsDescriptionsModel::title(int column)
{
    return column == kCategory ? L"Category"
                               : kDescriptionFields[static_cast<std::size_t>(column)].name;
}

void clsDescriptionsModel::setRows(std::vector<DescriptionRow> rows)
{
    rows_ = std::move(rows);
    arrange();
}

void clsDescriptionsModel::find(std::wstring_view term)
{
    term_ = term;
    arrange();
}

void clsDescriptionsModel::sortBy(int column)
{
    descending_ = column == column_ && !descending_;
    column_ = column;
    arrange();
}

void clsDescriptionsModel::arrange()
{
    struct Keyed {
        std::wstring key, name;
        std::size_t row;
    };
    std::vector<Keyed> keyed;
    for (std::size_t i = 0; i < rows_.size(); ++i)
        if (term_.empty() || holdsTerm(rows_[i].record, term_))
            keyed.push_back({lower(value(rows_[i], column_)), lower(rows_[i].record.fileName), i});
    std::stable_sort(keyed.begin(), keyed.end(), [&](const Keyed& a, const Keyed& b) {
        const int order = a.key.compare(b.key);
        return order == 0 ? a.name < b.name : descending_ ? order > 0 : order < 0;
    });
    shown_.clear();
    for (const Keyed& one : keyed)
        shown_.push_back(one.row);
}

const DescriptionRow& clsDescriptionsModel::operator[](int row) const
{
    return rows_[shown_.at(static_cast<std::size_t>(row))];
}

std::wstring clsDescriptionsModel::cell(int row, int column) const
{
    if (row < 0 || row >= count() || column < 0 || column >= kColumns)
        return {};
    return value((*this)[row], column);
}

int clsDescriptionsModel::indexOf(std::wstring_view table, std::wstring_view fileName) const
{
    for (int i = 0; i < count(); ++i)
        if (equalNoCase((*this)[i].record.fileName, fileName)
            && equalNoCase((*this)[i].table, table))
            return i;
    return -1;
}

int clsDescriptionsModel::beginningWith(std::wstring_view typed, int from) const
{
    for (int i = 0; i < count(); ++i) {
        const int row = (std::max(0, from) + i) % count();
        if (startsWithNoCase((*this)[row].record.fileName, typed))
            return row;
    }
    return -1;
}

} // namespace velora
