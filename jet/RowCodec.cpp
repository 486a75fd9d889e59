#include "jet/RowCodec.h"

#include "base/text.h"
#include "jet/DataPage.h"
#include "jet/IndexKey.h"

#include <algorithm>
#include <bit>

namespace velora::jet {
namespace {

constexpr std::uint32_t kGeneralSort = 0x0409;

/// Where the parts of a row lie.
struct Layout {
    std::size_t columns = 0; ///< that the row knows of
    std::size_t mask = 0;
    std::size_t varCount = 0;
    std::size_t countAt = 0; ///< of the number of variable columns
    std::size_t fixedEnd = 0;
};

Layout layoutOf(const TableDef& def, Bytes row)
{
    Layout layout;
    layout.columns = row.u16(0);
    const std::size_t maskSize = (layout.columns + 7) / 8;
    require(row.size() >= 2 + maskSize, "a row is too short");
    layout.mask = row.size() - maskSize;
    layout.fixedEnd = layout.mask;
    if (def.varColumns) {
        require(layout.mask >= 4, "a row is too short");
        layout.countAt = layout.mask - 2;
        layout.varCount = row.u16(layout.countAt);
        const std::size_t table = 2 * (layout.varCount + 1);
        require(table + 2 <= layout.countAt, "a row is too short");
        layout.fixedEnd = layout.countAt - table;
    }
    return layout;
}

bool present(Bytes row, const Layout& layout, const Column& column)
{
    return column.number < layout.columns
           && row.u8(layout.mask + column.number / 8) & 1u << column.number % 8;
}

std::string variableValue(Bytes row, const Layout& layout, std::size_t index)
{
    const std::size_t at = layout.countAt - 2 * (index + 1);
    const std::size_t from = row.u16(at), to = row.u16(at - 2);
    require(from >= 2 && from <= to && to <= layout.fixedEnd, "a field lies outside its row");
    return std::string(row.part(from, to - from).text());
}

RawValue fieldOf(Bytes row, const Layout& layout, const Column& column)
{
    const bool set = present(row, layout, column);
    if (column.type == kBoolColumn)
        return std::string(1, set ? '\1' : '\0');
    if (!set)
        return std::nullopt;
    if (column.fixed()) {
        const std::size_t size = fixedSize(column.type) ? fixedSize(column.type) : column.size;
        require(2u + column.fixedAt + size <= layout.fixedEnd, "a field lies outside its row");
        return std::string(row.part(2u + column.fixedAt, size).text());
    }
    if (column.varIndex >= layout.varCount)
        return std::nullopt;
    return variableValue(row, layout, column.varIndex);
}

std::size_t fixedArea(const TableDef& def)
{
    std::size_t end = 0;
    for (const Column& column : def.columns)
        if (column.fixed() && column.type != kBoolColumn) {
            const std::size_t size = fixedSize(column.type) ? fixedSize(column.type) : column.size;
            end = std::max(end, column.fixedAt + size);
        }
    return end;
}

} // namespace

RawValue decodeField(const TableDef& def, Bytes row, const Column& column)
{
    return fieldOf(row, layoutOf(def, row), column);
}

Record decodeRow(const TableDef& def, Bytes row)
{
    const Layout layout = layoutOf(def, row);
    Record record;
    record.reserve(def.columns.size());
    for (const Column& column : def.columns)
        record.push_back(fieldOf(row, layout, column));
    return record;
}

std::string encodeRow(const TableDef& def, const Record& record)
{
    std::string row;
    add16(row, def.maxColumns);
    row.append(fixedArea(def), '\0');
    std::string mask((def.maxColumns + 7u) / 8, '\0');
    std::vector<const std::string*> variable(def.varColumns);
    for (std::size_t i = 0; i < def.columns.size(); ++i) {
        const Column& column = def.columns[i];
        const RawValue& value = record[i];
        const bool isBool = column.type == kBoolColumn;
        if (!value || (isBool && *value != std::string_view("\1", 1)))
            continue;
        require(column.number < def.maxColumns, "a column number that cannot be");
        char& byte = mask[column.number / 8];
        byte = static_cast<char>(byte | 1 << column.number % 8);
        if (isBool)
            continue;
        if (column.fixed()) {
            row.replace(2u + column.fixedAt, value->size(), *value);
        } else {
            require(column.varIndex < def.varColumns, "a column number that cannot be");
            variable[column.varIndex] = &*value;
        }
    }
    if (def.varColumns) {
        std::vector<std::size_t> offsets;
        for (const std::string* value : variable) {
            offsets.push_back(row.size());
            if (value)
                row += *value;
        }
        offsets.push_back(row.size());
        for (std::size_t i = offsets.size(); i--;)
            add16(row, static_cast<unsigned>(offsets[i]));
        add16(row, def.varColumns);
    }
    row += mask;
    if (row.size() > kMaxRow)
        throw JetError(jeterr::kTooLong, "the record is too long");
    return row;
}

std::wstring decodeText(std::string_view bytes)
{
    if (!bytes.starts_with("\xFF\xFE"))
        return fromUtf16le(bytes);
    std::string units;
    bool single = true;
    for (std::size_t i = 2; i < bytes.size();) {
        if (bytes[i] == '\0') {
            single = !single;
            ++i;
        } else if (single) {
            units += bytes[i++];
            units += '\0';
        } else {
            if (i + 1 >= bytes.size())
                break;
            units += bytes.substr(i, 2);
            i += 2;
        }
    }
    return fromUtf16le(units);
}

std::string encodeText(std::wstring_view text)
{
    return toUtf16le(text);
}

std::int32_t decodeLong(std::string_view bytes)
{
    return static_cast<std::int32_t>(Bytes(bytes).u32(0));
}

std::string encodeLong(std::int32_t value)
{
    std::string bytes;
    add32(bytes, static_cast<std::uint32_t>(value));
    return bytes;
}

std::string encodeDate(double days)
{
    const auto bits = std::bit_cast<std::uint64_t>(days);
    std::string bytes;
    add32(bytes, static_cast<std::uint32_t>(bits));
    add32(bytes, static_cast<std::uint32_t>(bits >> 32));
    return bytes;
}

void addKeyPart(std::string& key, const Column& column, const RawValue& value, bool ascending)
{
    if (!value)
        addNullKey(key, ascending);
    else if (column.type == kLongColumn)
        addLongKey(key, decodeLong(*value), ascending);
    else if (column.type == kTextColumn && column.sortOrder == kGeneralSort)
        addTextKey(key, decodeText(*value), ascending);
    else
        throw JetError(jeterr::kNotSupported, "the index has a key of an unknown kind");
}

bool canWriteKey(const TableDef& def, const DataIndex& index)
{
    return std::all_of(index.columns.begin(), index.columns.end(), [&](const KeyColumn& key) {
        const Column* column = def.find(key.number);
        return column
               && (column->type == kLongColumn
                   || (column->type == kTextColumn && column->sortOrder == kGeneralSort));
    });
}

bool hasNullKey(const TableDef& def, const DataIndex& index, const Record& record)
{
    for (const KeyColumn& key : index.columns) {
        const Column* column = def.find(key.number);
        if (!record[static_cast<std::size_t>(column - def.columns.data())])
            return true;
    }
    return false;
}

void checkKeyNulls(const TableDef& def, const DataIndex& index, const Record& record)
{
    if ((index.flags & kRequiredFlag) && hasNullKey(def, index, record))
        throw JetError(jeterr::kNullInKey, "the key must not be Null");
}

std::optional<std::string> keyOf(const TableDef& def, const DataIndex& index, const Record& record)
{
    std::string bytes;
    bool anyValue = false;
    for (const KeyColumn& key : index.columns) {
        const Column* column = def.find(key.number);
        const RawValue& value = record[static_cast<std::size_t>(column - def.columns.data())];
        anyValue = anyValue || value;
        addKeyPart(bytes, *column, value, key.ascending);
    }
    if (!anyValue && (index.flags & kIgnoreNulls))
        return std::nullopt;
    return bytes;
}

} // namespace velora::jet
