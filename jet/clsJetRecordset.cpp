#include "base/text.h"
#include "jet/IndexKey.h"
#include "jet/Walk.h"

#include <algorithm>

namespace velora {

using jet::Walk;

namespace {

/// The index that gives the order as long as none is chosen: the primary one, else none.
std::optional<std::size_t> primaryIndex(const jet::TableDef& def)
{
    for (const jet::LogicalIndex& index : def.indexes)
        if (index.type == 1)
            return index.data;
    return std::nullopt;
}

bool hasAutoNumber(const jet::TableDef& def)
{
    return std::any_of(def.columns.begin(), def.columns.end(), [](const jet::Column& column) {
        return (column.flags & jet::kAutoNumberFlag) != 0;
    });
}

} // namespace

clsJetRecordset::clsJetRecordset(std::shared_ptr<jet::Engine> engine,
                                 std::shared_ptr<jet::Table> table)
    : walk_(std::make_unique<Walk>())
{
    walk_->engine = std::move(engine);
    walk_->table = std::move(table);
    walk_->index = primaryIndex(walk_->table->def());
    walk_->toEdge(false);
}

clsJetRecordset::~clsJetRecordset() = default;

void clsJetRecordset::setIndex(std::wstring_view name)
{
    const jet::TableDef& def = walk_->live().def();
    for (const jet::LogicalIndex& index : def.indexes)
        if (equalNoCase(index.name, name)) {
            walk_->index = index.data;
            walk_->indexChosen = true;
            walk_->toEdge(false);
            return;
        }
    throw JetError(jeterr::kNoSuchIndex, "there is no such index");
}

void clsJetRecordset::seekFields(std::wstring_view comparison, const std::vector<JetValue>& key)
{
    jet::Table& table = walk_->live();
    if (!walk_->indexChosen)
        throw JetError(jeterr::kNoCurrentIndex, "no index has been chosen");
    if (comparison != L"=")
        throw JetError(jeterr::kInvalidArgument, "only \"=\" is known");
    walk_->edit = Walk::Edit::none;
    const std::string bytes = walk_->keyFrom(key);
    jet::IndexTree tree = table.tree(*walk_->index);
    const auto place = tree.lowerBound(bytes);
    walk_->at = Walk::At::nowhere;
    walk_->noMatch = !place.leaf || !tree.startsWith(place, bytes);
    if (!walk_->noMatch)
        walk_->settle(place, true);
}

void clsJetRecordset::seek(std::wstring_view comparison, std::wstring_view key)
{
    seekFields(comparison, {std::wstring(key)});
}

bool clsJetRecordset::noMatch() const
{
    return walk_->noMatch;
}

void clsJetRecordset::moveFirst()
{
    walk_->edit = Walk::Edit::none;
    walk_->toEdge(false);
}

void clsJetRecordset::moveLast()
{
    walk_->edit = Walk::Edit::none;
    walk_->toEdge(true);
}

void clsJetRecordset::move(long rows)
{
    walk_->live();
    walk_->edit = Walk::Edit::none;
    if (walk_->at == Walk::At::nowhere && walk_->entry.empty() && walk_->index)
        walk_->needCurrent();
    const bool forward = rows > 0;
    for (long left = forward ? rows : -rows; left > 0; --left) {
        walk_->step(forward);
        if (walk_->at != Walk::At::record)
            return;
    }
}

bool clsJetRecordset::bof() const
{
    return walk_->at == Walk::At::begin;
}

bool clsJetRecordset::eof() const
{
    return walk_->at == Walk::At::end;
}

long clsJetRecordset::recordCount()
{
    return static_cast<long>(walk_->live().recordCount());
}

std::vector<std::wstring> clsJetRecordset::fieldNames() const
{
    std::vector<std::wstring> names;
    for (const jet::Column& column : walk_->live().def().columns)
        names.push_back(column.name);
    return names;
}

JetValue clsJetRecordset::field(std::wstring_view name)
{
    jet::Table& table = walk_->live();
    const std::size_t at = table.columnAt(name);
    const jet::Column& column = table.def().columns[at];
    jet::Pager& pager = walk_->engine->pager();
    if (walk_->edit != Walk::Edit::none)
        return toValue(pager, column, walk_->record[at]);
    walk_->needCurrent();
    return toValue(pager, column, decodeField(table.def(), jet::Bytes(walk_->bytes), column));
}

void clsJetRecordset::setField(std::wstring_view name, JetValue value)
{
    jet::Table& table = walk_->live();
    if (walk_->edit == Walk::Edit::none)
        throw JetError(jeterr::kUpdateWithoutEdit, "AddNew or Edit has to come first");
    const std::size_t at = table.columnAt(name);
    walk_->record[at] = fromValue(table.def().columns[at], value);
}

void clsJetRecordset::addNew()
{
    const jet::TableDef& def = walk_->live().def();
    if (def.type != jet::kUserTable)
        throw JetError(jeterr::kAccessDenied, "the engine's own tables cannot be changed");
    if (hasAutoNumber(def))
        throw JetError(jeterr::kNotSupported, "the table numbers its records itself");
    walk_->edit = Walk::Edit::add;
    walk_->record.assign(def.columns.size(), std::nullopt);
}

void clsJetRecordset::edit()
{
    const jet::TableDef& def = walk_->live().def();
    walk_->needCurrent();
    if (def.type != jet::kUserTable)
        throw JetError(jeterr::kAccessDenied, "the engine's own tables cannot be changed");
    walk_->record = walk_->live().record(walk_->row);
    walk_->edit = Walk::Edit::change;
}

void clsJetRecordset::update()
{
    jet::Table& table = walk_->live();
    switch (walk_->edit) {
    case Walk::Edit::none:
        throw JetError(jeterr::kUpdateWithoutEdit, "AddNew or Edit has to come first");
    case Walk::Edit::add: table.insert(walk_->record); break;
    case Walk::Edit::change:
        walk_->row = table.update(walk_->row, walk_->record);
        table.fetch(walk_->row, walk_->bytes);
        if (walk_->index) {
            const jet::DataIndex& index = table.def().data[*walk_->index];
            walk_->entry = keyOf(table.def(), index, walk_->record).value_or(std::string());
            addRowId(walk_->entry, walk_->row);
        }
        break;
    }
    walk_->edit = Walk::Edit::none;
}

void clsJetRecordset::cancelUpdate()
{
    walk_->live();
    walk_->edit = Walk::Edit::none;
}

void clsJetRecordset::deleteRecord()
{
    jet::Table& table = walk_->live();
    walk_->needCurrent();
    if (table.def().type != jet::kUserTable)
        throw JetError(jeterr::kAccessDenied, "the engine's own tables cannot be changed");
    walk_->edit = Walk::Edit::none;
    table.erase(walk_->row);
    walk_->at = Walk::At::nowhere;
}

void clsJetRecordset::close()
{
    walk_->edit = Walk::Edit::none;
    walk_->at = Walk::At::nowhere;
    walk_->engine.reset();
    walk_->table.reset();
}

} // namespace velora
