#include "jet/Table.h"

#include "base/text.h"
#include "jet/DataPage.h"
#include "jet/IndexKey.h"
#include "jet/LongValue.h"

namespace velora::jet {
namespace {

constexpr int kHops = 8;

} // namespace

std::size_t Table::columnAt(std::wstring_view name) const
{
    for (std::size_t i = 0; i < def_.columns.size(); ++i)
        if (equalNoCase(def_.columns[i].name, name))
            return i;
    throw JetError(jeterr::kItemMissing, "the field is not in the table");
}

void Table::setRules(const std::vector<FieldRule>& rules)
{
    rules_.clear();
    for (const Column& column : def_.columns) {
        FieldRule own{column.name};
        for (const FieldRule& rule : rules)
            if (equalNoCase(rule.field, column.name))
                own = rule;
        rules_.push_back(own);
    }
}

IndexTree Table::tree(std::size_t dataIndex)
{
    const DataIndex& index = def_.data.at(dataIndex);
    return IndexTree(pager_, def_.page, index.root, rowAt(index.map));
}

/// The place where the row's bytes lie.
RowId Table::follow(RowId id, int hops)
{
    const Page& page = pager_.read(id.page);
    require(isDataPage(page) && ownerOf(page) == def_.page, "a row on a page of another table");
    const Slot slot = slotOf(page, id.row);
    if (!slot.pointer || slot.size == 0)
        return id;
    require(hops < kHops, "a row leads in a circle");
    const RowId target = rowAt(rowBytes(page, id.row).u32(0));
    const Page& there = pager_.read(target.page);
    require(isDataPage(there) && slotOf(there, target.row).size > 0, "an overflow row is lost");
    return follow(target, hops + 1);
}

bool Table::fetch(RowId id, std::string& row)
{
    if (id.page >= pager_.pageCount())
        return false;
    const Page& page = pager_.read(id.page);
    if (!isDataPage(page) || ownerOf(page) != def_.page || id.row >= rowsOf(page))
        return false;
    const Slot slot = slotOf(page, id.row);
    if (slot.hidden || slot.size == 0)
        return false;
    const RowId at = slot.pointer ? follow(id, 0) : id;
    row = rowBytes(pager_.read(at.page), at.row).text();
    return true;
}

Record Table::record(RowId id)
{
    std::string row;
    if (!fetch(id, row))
        throw JetError(jeterr::kRecordDeleted, "the record has been deleted");
    return decodeRow(def_, Bytes(row));
}

Table::Keys Table::keysOf(const Record& record) const
{
    Keys keys;
    for (const DataIndex& index : def_.data)
        keys.push_back(keyOf(def_, index, record));
    return keys;
}

void Table::checkWritable() const
{
    for (const DataIndex& index : def_.data)
        if (!canWriteKey(def_, index))
            throw JetError(jeterr::kNotSupported, "the table has an index of an unknown kind");
}

void Table::check(const Record& record) const
{
    checkWritable();
    for (std::size_t i = 0; i < def_.columns.size(); ++i) {
        const Column& column = def_.columns[i];
        if (column.type == kTextColumn && record[i] && column.size
            && record[i]->size() > column.size)
            throw JetError(jeterr::kTooLong, "the value is longer than its field");
        if (rules_.empty())
            continue;
        if (rules_[i].required && !record[i])
            throw JetError(jeterr::kRequired, "the field must have a value");
        if (!rules_[i].allowZeroLength && column.type == kTextColumn && record[i]
            && record[i]->empty())
            throw JetError(jeterr::kZeroLength, "the field cannot be a zero-length string");
    }
    for (const DataIndex& index : def_.data)
        checkKeyNulls(def_, index, record);
}

bool Table::hasKey(std::size_t dataIndex, const std::string& key)
{
    IndexTree index = tree(dataIndex);
    const IndexTree::Place place = index.lowerBound(key);
    return place.leaf && index.startsWith(place, key);
}

/// `former` are the keys of the record that is being replaced: those may be taken again.
void Table::checkUnique(const Record& record, const Keys& keys, const Keys* former)
{
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (!keys[i] || !(def_.data[i].flags & kUniqueFlag)
            || hasNullKey(def_, def_.data[i], record) || (former && (*former)[i] == keys[i]))
            continue;
        if (hasKey(i, *keys[i]))
            throw JetError(jeterr::kDuplicateKey, "the key is in the table already");
    }
}

void Table::addEntry(std::size_t dataIndex, const std::string& key, RowId id)
{
    const bool distinct = !hasKey(dataIndex, key);
    std::string entry = key;
    addRowId(entry, id);
    tree(dataIndex).insert(entry);
    if (distinct)
        addDistinctKeys(pager_, def_.page, dataIndex, 1);
}

void Table::removeEntry(std::size_t dataIndex, const std::string& key, RowId id)
{
    std::string entry = key;
    addRowId(entry, id);
    tree(dataIndex).erase(entry);
    if (!hasKey(dataIndex, key))
        addDistinctKeys(pager_, def_.page, dataIndex, -1);
}

RowId Table::insert(const Record& record)
{
    Pager::Operation operation(pager_);
    check(record);
    const Keys keys = keysOf(record);
    checkUnique(record, keys, nullptr);
    const RowId id = store(encodeRow(def_, record));
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (keys[i])
            addEntry(i, *keys[i], id);
    addRecords(pager_, def_.page, 1);
    operation.done();
    return id;
}

RowId Table::update(RowId id, const Record& changed)
{
    Pager::Operation operation(pager_);
    check(changed);
    const Record former = record(id);
    const Keys before = keysOf(former), after = keysOf(changed);
    checkUnique(changed, after, &before);
    const std::string row = encodeRow(def_, changed);
    RowId now = id;
    if (!slotOf(pager_.read(id.page), id.row).pointer
        && canReplace(pager_.read(id.page), id.row, row.size())) {
        replaceRow(pager_.write(id.page), id.row, Bytes(row));
        pageChanged(id.page);
    } else {
        unstore(id);
        now = store(row);
    }
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (before[i] == after[i] && now == id)
            continue;
        if (before[i])
            removeEntry(i, *before[i], id);
        if (after[i])
            addEntry(i, *after[i], now);
    }
    releaseLongValues(former, &changed);
    operation.done();
    return now;
}

void Table::erase(RowId id)
{
    Pager::Operation operation(pager_);
    checkWritable();
    const Record former = record(id);
    const Keys keys = keysOf(former);
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (keys[i])
            removeEntry(i, *keys[i], id);
    unstore(id);
    releaseLongValues(former, nullptr);
    addRecords(pager_, def_.page, -1);
    operation.done();
}

void Table::releaseLongValues(const Record& former, const Record* kept)
{
    for (std::size_t i = 0; i < def_.columns.size(); ++i) {
        if (!isLongValue(def_.columns[i].type) || !former[i] || (kept && (*kept)[i] == former[i]))
            continue;
        for (const LongValueMaps& maps : def_.longValues)
            if (maps.column == def_.columns[i].number)
                releaseLongValue(pager_, maps, Bytes(*former[i]));
    }
}

} // namespace velora::jet
