#include "jet/TableDef.h"

#include "base/text.h"

#include <algorithm>

namespace velora::jet {
namespace {

constexpr std::uint32_t kDefMark = 1625;
constexpr std::uint32_t kIndexMark = 1923;
constexpr std::size_t kHead = 63;
constexpr std::size_t kCountSize = 12;
constexpr std::size_t kColumnSize = 25;
constexpr std::size_t kDataIndexSize = 52;
constexpr std::size_t kLogicalSize = 28;
constexpr std::size_t kKeyColumns = 10;
constexpr std::uint16_t kNoColumn = 0xFFFF;
constexpr std::size_t kMaxColumns = 255;
constexpr std::size_t kMaxIndexes = 64;
constexpr std::size_t kMaxDefinition = 1u << 17;

/// Reads the parts of a definition one behind the other.
class Cursor {
public:
    explicit Cursor(Bytes bytes, std::size_t at) : bytes_(bytes), at_(at) {}
    Bytes take(std::size_t size)
    {
        const Bytes part = bytes_.part(at_, size);
        at_ += size;
        return part;
    }
    std::wstring name()
    {
        const std::size_t size = take(2).u16(0);
        return fromUtf16le(take(size).text());
    }
    bool has(std::size_t size) const { return bytes_.size() - at_ >= size; }

private:
    Bytes bytes_;
    std::size_t at_;
};

/// The definition's bytes out of the page and those that continue it.
std::string gather(Pager& pager, PageNo no, std::vector<PageNo>& pages)
{
    std::string all;
    std::size_t length = 0;
    while (no) {
        const Page& page = pager.read(no);
        require(page.u8(0) == kDefPage && page.u8(1) == 1, "no table definition page");
        require(std::find(pages.begin(), pages.end(), no) == pages.end(),
                "a table definition leads in a circle");
        pages.push_back(no);
        if (pages.size() == 1) {
            length = page.u32(8);
            require(length >= kHead && length <= kMaxDefinition,
                    "a table definition of a strange length");
            all = page.view().text();
        } else {
            all += page.view().from(8).text();
        }
        if (all.size() >= length)
            break;
        no = page.u32(4);
    }
    require(all.size() >= length, "a table definition is cut short");
    all.resize(length);
    return all;
}

Column readColumn(Bytes bytes)
{
    Column column;
    column.type = bytes.u8(0);
    column.number = bytes.u16(5);
    column.varIndex = bytes.u16(7);
    column.position = bytes.u16(9);
    column.sortOrder = bytes.u32(11);
    column.flags = bytes.u8(15);
    column.ext = bytes.u8(16);
    column.fixedAt = bytes.u16(21);
    column.size = bytes.u16(23);
    require(column.number < kMaxColumns, "a column number that cannot be");
    return column;
}

DataIndex readDataIndex(Bytes bytes)
{
    DataIndex index;
    for (std::size_t i = 0; i < kKeyColumns; ++i) {
        const std::uint16_t number = bytes.u16(4 + 3 * i);
        if (number != kNoColumn)
            index.columns.push_back({number, bytes.u8(6 + 3 * i) == 1});
    }
    index.map = bytes.u32(34);
    index.root = bytes.u32(38);
    index.flags = bytes.u8(46);
    return index;
}

void addName(std::string& to, const std::wstring& name)
{
    const std::string bytes = toUtf16le(name);
    add16(to, static_cast<unsigned>(bytes.size()));
    to += bytes;
}

void renderColumn(std::string& to, const Column& column)
{
    add8(to, column.type);
    add32(to, kDefMark);
    add16(to, column.number);
    add16(to, column.varIndex);
    add16(to, column.position);
    add32(to, column.sortOrder);
    add8(to, column.flags);
    add8(to, column.ext);
    add32(to, 0);
    add16(to, column.fixedAt);
    add16(to, column.size);
}

void renderDataIndex(std::string& to, const DataIndex& index)
{
    add32(to, kIndexMark);
    for (std::size_t i = 0; i < kKeyColumns; ++i) {
        add16(to, i < index.columns.size() ? index.columns[i].number : kNoColumn);
        add8(to, i < index.columns.size() && index.columns[i].ascending);
    }
    add32(to, index.map);
    add32(to, index.root);
    add32(to, 0);
    add8(to, index.flags);
    to.append(5, '\0');
}

void renderLogical(std::string& to, const LogicalIndex& index)
{
    add32(to, kDefMark);
    add32(to, index.number);
    add32(to, index.data);
    add8(to, 0);
    add32(to, 0xFFFFFFFF);
    add32(to, 0);
    add8(to, 4);
    add8(to, 4);
    add8(to, index.type);
    add32(to, 0);
}

/// Everything must hang together before anybody relies on it.
void check(const TableDef& def)
{
    for (const DataIndex& index : def.data)
        for (const KeyColumn& key : index.columns)
            require(def.find(key.number), "an index on a column that is not there");
    for (const LogicalIndex& index : def.indexes)
        require(index.data < def.data.size(), "an index that is not there");
}

} // namespace

std::size_t fixedSize(Byte type)
{
    switch (type) {
    case kByteColumn: return 1;
    case kIntColumn: return 2;
    case kLongColumn:
    case kSingleColumn: return 4;
    case kCurrencyColumn:
    case kDoubleColumn:
    case kDateColumn: return 8;
    case kGuidColumn: return 16;
    case kNumericColumn: return 17;
    default: return 0;
    }
}

const Column* TableDef::find(std::uint16_t number) const
{
    for (const Column& column : columns)
        if (column.number == number)
            return &column;
    return nullptr;
}

TableDef readTableDef(Pager& pager, PageNo no)
{
    TableDef def;
    def.page = no;
    const std::string all = gather(pager, no, def.pages);
    const Bytes bytes(all);
    def.type = bytes.u8(40);
    def.maxColumns = bytes.u16(41);
    def.varColumns = bytes.u16(43);
    const std::size_t columns = bytes.u16(45);
    const std::size_t logical = bytes.u32(47);
    const std::size_t data = bytes.u32(51);
    def.ownedMap = bytes.u32(55);
    def.freeMap = bytes.u32(59);
    require(columns <= kMaxColumns && def.maxColumns <= kMaxColumns && logical <= 4 * kMaxIndexes
                && data <= kMaxIndexes,
            "a table definition with too many parts");

    Cursor cursor(bytes, kHead + kCountSize * data);
    for (std::size_t i = 0; i < columns; ++i)
        def.columns.push_back(readColumn(cursor.take(kColumnSize)));
    for (Column& column : def.columns)
        column.name = cursor.name();
    for (std::size_t i = 0; i < data; ++i)
        def.data.push_back(readDataIndex(cursor.take(kDataIndexSize)));
    for (std::size_t i = 0; i < logical; ++i) {
        const Bytes part = cursor.take(kLogicalSize);
        def.indexes.push_back({{}, part.u32(4), part.u32(8), part.u8(23)});
    }
    for (LogicalIndex& index : def.indexes)
        index.name = cursor.name();
    while (cursor.has(2)) {
        const std::uint16_t column = cursor.take(2).u16(0);
        if (column == kNoColumn)
            break;
        const Bytes maps = cursor.take(8);
        def.longValues.push_back({column, maps.u32(0), maps.u32(4)});
    }
    check(def);
    return def;
}

std::string renderTableDef(const TableDef& def)
{
    std::string to;
    add32(to, kHeaderPage);
    add32(to, 0);
    add32(to, 0);
    add32(to, kDefMark);
    add32(to, 0);
    add32(to, 0);
    add8(to, 1);
    to.append(15, '\0');
    add8(to, def.type);
    add16(to, def.maxColumns);
    add16(to, def.varColumns);
    add16(to, static_cast<unsigned>(def.columns.size()));
    add32(to, static_cast<std::uint32_t>(def.indexes.size()));
    add32(to, static_cast<std::uint32_t>(def.data.size()));
    add32(to, def.ownedMap);
    add32(to, def.freeMap);
    to.append(kCountSize * def.data.size(), '\0');
    for (const Column& column : def.columns)
        renderColumn(to, column);
    for (const Column& column : def.columns)
        addName(to, column.name);
    for (const DataIndex& index : def.data)
        renderDataIndex(to, index);
    for (const LogicalIndex& index : def.indexes)
        renderLogical(to, index);
    for (const LogicalIndex& index : def.indexes)
        addName(to, index.name);
    for (const LongValueMaps& maps : def.longValues) {
        add16(to, maps.column);
        add32(to, maps.owned);
        add32(to, maps.free);
    }
    add16(to, kNoColumn);
    if (to.size() > kPageSize - 8)
        throw JetError(jeterr::kTooManyFields, "the table has too many fields");
    return to;
}

void writeTableDef(Page& page, const std::string& definition)
{
    page = {};
    page.put(0, Bytes(definition));
    page.put8(0, kDefPage);
    page.put8(1, 1);
    page.put16(2, static_cast<unsigned>(kPageSize - 8 - definition.size()));
    page.put32(8, static_cast<std::uint32_t>(definition.size()));
}

std::uint32_t recordCount(Pager& pager, PageNo def)
{
    return pager.read(def).u32(16);
}

void addRecords(Pager& pager, PageNo def, int change)
{
    Page& page = pager.write(def);
    page.put32(16, page.u32(16) + static_cast<std::uint32_t>(change));
}

void addDistinctKeys(Pager& pager, PageNo def, std::size_t dataIndex, int change)
{
    const std::size_t at = kHead + kCountSize * dataIndex + 4;
    Page& page = pager.write(def);
    page.put32(at, page.u32(at) + static_cast<std::uint32_t>(change));
}

} // namespace velora::jet
