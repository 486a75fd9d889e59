#include "jet/Walk.h"

#include "base/text.h"
#include "jet/DataPage.h"
#include "jet/IndexKey.h"
#include "jet/LongValue.h"

#include <algorithm>
#include <bit>

namespace velora::jet {

Table& Walk::live()
{
    if (!engine)
        throw JetError(jeterr::kClosed, "the recordset is closed");
    return engine->live(table);
}

void Walk::needCurrent()
{
    if (at != At::record)
        throw JetError(jeterr::kNoCurrentRecord, "there is no current record");
}

void Walk::settle(IndexTree::Place place, bool forward)
{
    if (!place.leaf) {
        at = forward ? At::end : At::begin;
        return;
    }
    std::string found = live().tree(*index).entry(place);
    // Where a step leads is behind (before) where it came from, or the index goes in circles.
    require(at != At::record || (forward ? found > entry : found < entry),
            "an index is out of order");
    row = rowIdAt(Bytes(found), found.size() - kRowIdSize);
    require(live().fetch(row, bytes), "an index entry without its row");
    entry = std::move(found);
    at = At::record;
}

void Walk::settleRow(RowId id, bool found, bool forward)
{
    at = found ? At::record : forward ? At::end : At::begin;
    row = id;
}

void Walk::toEdge(bool last)
{
    Table& own = live();
    at = last ? At::end : At::begin;
    if (index) {
        IndexTree tree = own.tree(*index);
        settle(last ? tree.last() : tree.first(), !last);
        if (at != At::record && !last)
            at = At::end;
    } else {
        stepByPages(!last);
    }
}

void Walk::step(bool forward)
{
    if (at == At::begin || at == At::end) {
        if ((at == At::end) == forward)
            throw JetError(jeterr::kNoCurrentRecord, "there is no further record");
        toEdge(!forward);
    } else if (index) {
        stepByIndex(forward);
    } else {
        stepByPages(forward);
    }
}

void Walk::stepByIndex(bool forward)
{
    IndexTree tree = live().tree(*index);
    IndexTree::Place place = tree.lowerBound(entry);
    if (forward) {
        if (place.leaf && tree.startsWith(place, entry))
            place = tree.after(place);
    } else {
        place = place.leaf ? tree.before(place) : tree.last();
    }
    at = At::record;
    settle(place, forward);
}

/// Without an index: by page and slot.
void Walk::stepByPages(bool forward)
{
    Table& own = live();
    std::vector<PageNo> pages = own.ownedPages();
    const auto isBefore = [](RowId a, RowId b) {
        return a.page != b.page ? a.page < b.page : a.row < b.row;
    };
    const bool fromEdge = at == At::begin || at == At::end;
    const RowId from = fromEdge ? RowId{} : row;
    if (!forward)
        std::reverse(pages.begin(), pages.end());
    for (const PageNo no : pages) {
        if (!fromEdge && (forward ? no < from.page : no > from.page))
            continue;
        const std::size_t rows = std::min(rowsOf(engine->pager().read(no)), kMaxRows);
        for (std::size_t i = 0; i < rows; ++i) {
            const RowId id{no, static_cast<Byte>(forward ? i : rows - 1 - i)};
            if (!fromEdge && (forward ? !isBefore(from, id) : !isBefore(id, from)))
                continue;
            if (own.fetch(id, bytes)) {
                settleRow(id, true, forward);
                return;
            }
        }
    }
    settleRow({}, false, forward);
}

std::string Walk::keyFrom(const std::vector<JetValue>& values)
{
    const TableDef& def = live().def();
    const DataIndex& data = def.data[*index];
    if (values.empty() || values.size() > data.columns.size())
        throw JetError(jeterr::kInvalidArgument, "the key has another number of fields");
    std::string key;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Column& column = *def.find(data.columns[i].number);
        addKeyPart(key, column, fromValue(column, values[i]), data.columns[i].ascending);
    }
    return key;
}

JetValue toValue(Pager& pager, const Column& column, const RawValue& raw)
{
    if (!raw)
        return std::nullopt;
    const Bytes bytes(*raw);
    switch (column.type) {
    case kTextColumn: return decodeText(*raw);
    case kMemoColumn: return decodeText(readLongValue(pager, bytes));
    case kBoolColumn: return bytes.u8(0) ? L"True" : L"False";
    case kByteColumn: return std::to_wstring(bytes.u8(0));
    case kIntColumn: return std::to_wstring(static_cast<std::int16_t>(bytes.u16(0)));
    case kLongColumn: return std::to_wstring(decodeLong(*raw));
    default: throw JetError(jeterr::kNotSupported, "a field of a kind that cannot be read");
    }
}

RawValue fromValue(const Column& column, const JetValue& value)
{
    if (!value)
        return std::nullopt;
    if (column.type == kTextColumn)
        return encodeText(*value);
    if (column.type != kLongColumn)
        throw JetError(jeterr::kNotSupported, "a field of a kind that cannot be written");
    const auto number = parseLong(*value);
    if (!number || *number < INT32_MIN || *number > INT32_MAX)
        throw JetError(jeterr::kConversion, "the value is no number");
    return encodeLong(static_cast<std::int32_t>(*number));
}

} // namespace velora::jet
