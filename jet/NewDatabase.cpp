#include "jet/NewDatabase.h"

#include "jet/Catalogue.h"
#include "jet/DataPage.h"
#include "jet/Header.h"

namespace velora::jet {
namespace {

constexpr PageNo kFirstPages = 16;
constexpr PageNo kMapPage = 6;
constexpr std::size_t kMapSize = 69;
constexpr unsigned kMaps = 31;
constexpr PageNo kObjectsData = 14;
constexpr PageNo kAcesData = 15;

constexpr Byte kFixed = 0x13;
constexpr Byte kVariable = 0x12;
constexpr Byte kBinary = 0x32;

struct ColumnSpec {
    const wchar_t* name;
    Byte type;
    std::uint16_t number, varIndex, fixedAt, size;
    Byte flags;
};
struct IndexSpec {
    const wchar_t* name;
    std::uint32_t data; ///< also its number
    Byte type;
};
struct DataSpec {
    std::vector<std::uint16_t> columns;
    unsigned map;
    PageNo root;
    Byte flags;
};
struct LongSpec {
    std::uint16_t column;
    unsigned owned; ///< the map of free space is the next one
};

std::uint32_t map(unsigned row)
{
    return pointerTo({kMapPage, static_cast<Byte>(row)});
}

TableDef makeDef(PageNo page, unsigned firstMap, const std::vector<ColumnSpec>& columns,
                 const std::vector<DataSpec>& data, const std::vector<IndexSpec>& indexes,
                 const std::vector<LongSpec>& longs)
{
    TableDef def;
    def.page = page;
    def.pages = {page};
    def.type = kSystemTable;
    def.maxColumns = static_cast<std::uint16_t>(columns.size());
    for (const ColumnSpec& plan : columns) {
        Column column;
        column.name = plan.name;
        column.type = plan.type;
        column.number = plan.number;
        column.varIndex = plan.varIndex;
        column.flags = plan.flags;
        column.fixedAt = plan.fixedAt;
        column.size = plan.size;
        def.varColumns = static_cast<std::uint16_t>(def.varColumns + !column.fixed());
        def.columns.push_back(column);
    }
    for (const DataSpec& plan : data) {
        DataIndex index;
        for (const std::uint16_t number : plan.columns)
            index.columns.push_back({number});
        index.map = map(plan.map);
        index.root = plan.root;
        index.flags = plan.flags;
        def.data.push_back(index);
    }
    for (const IndexSpec& plan : indexes)
        def.indexes.push_back({plan.name, plan.data, plan.data, plan.type});
    def.ownedMap = map(firstMap);
    def.freeMap = map(firstMap + 1);
    for (const LongSpec& plan : longs)
        def.longValues.push_back({plan.column, map(plan.owned), map(plan.owned + 1)});
    return def;
}

TableDef acesDef()
{
    return makeDef(kAcesTable, 18,
                   {{L"ACM", kLongColumn, 2, 0, 4, 4, kFixed},
                    {L"FInheritable", kBoolColumn, 3, 0, 0, 1, kFixed},
                    {L"ObjectId", kLongColumn, 0, 0, 0, 4, kFixed},
                    {L"SID", kBinaryColumn, 1, 0, 0, 510, kBinary}},
                   {{{0}, 20, 9, 0x88}}, {{L"ObjectId", 0, 0}}, {});
}

TableDef queriesDef()
{
    return makeDef(4, 21,
                   {{L"Attribute", kByteColumn, 1, 0, 4, 1, kFixed},
                    {L"Expression", kMemoColumn, 5, 3, 0, 0, kVariable},
                    {L"Flag", kIntColumn, 6, 4, 5, 2, kFixed},
                    {L"LvExtra", kLongColumn, 7, 4, 7, 4, kFixed},
                    {L"Name1", kTextColumn, 3, 1, 0, 510, kVariable},
                    {L"Name2", kTextColumn, 4, 2, 0, 510, kVariable},
                    {L"ObjectId", kLongColumn, 0, 0, 0, 4, kFixed},
                    {L"Order", kBinaryColumn, 2, 0, 0, 510, kVariable}},
                   {{{0, 1, 2}, 25, 10, 0x81}}, {{L"ObjectIdAttribute", 0, 1}}, {{5, 23}});
}

TableDef relationshipsDef()
{
    return makeDef(5, 26,
                   {{L"ccolumn", kLongColumn, 2, 1, 4, 4, kFixed},
                    {L"grbit", kLongColumn, 1, 1, 0, 4, kFixed},
                    {L"icolumn", kLongColumn, 3, 1, 8, 4, kFixed},
                    {L"szColumn", kTextColumn, 5, 2, 0, 510, kVariable},
                    {L"szObject", kTextColumn, 4, 1, 0, 510, kVariable},
                    {L"szReferencedColumn", kTextColumn, 7, 4, 0, 510, kVariable},
                    {L"szReferencedObject", kTextColumn, 6, 3, 0, 510, kVariable},
                    {L"szRelationship", kTextColumn, 0, 0, 0, 510, kVariable}},
                   {{{0}, 28, 11, 0x82}, {{4}, 29, 12, 0x82}, {{6}, 30, 13, 0x82}},
                   {{L"szObject", 1, 0}, {L"szReferencedObject", 2, 0}, {L"szRelationship", 0, 0}},
                   {});
}

/// Row 0 of page 1: what is free, the pages past the end of the file included.
std::string globalMap()
{
    std::string bits(kMapSize, '\xFF');
    bits.replace(0, 5 + kFirstPages / 8, 5 + kFirstPages / 8, '\0');
    return bits;
}

void setBit(Page& page, unsigned row, PageNo no)
{
    const std::size_t at = slotOf(page, row).at + 5 + no / 8;
    page.put8(at, page.u8(at) | 1u << no % 8);
}

void makeTable(Pager& pager, const TableDef& def)
{
    writeTableDef(pager.write(def.page), renderTableDef(def));
    for (const DataIndex& index : def.data) {
        IndexTree::makeEmptyRoot(pager.write(index.root), def.page);
        setBit(pager.write(kMapPage), rowAt(index.map).row, index.root);
    }
}

void makeDataOf(Pager& pager, const TableDef& def, PageNo no)
{
    makeDataPage(pager.write(no), def.page);
    setBit(pager.write(kMapPage), rowAt(def.ownedMap).row, no);
    setBit(pager.write(kMapPage), rowAt(def.freeMap).row, no);
}

enum Sid { kAdmin, kUsers, kEngine, kCreator };

std::string sid(Sid who)
{
    constexpr Byte clear[][2] = {{3, 1}, {2, 1}, {2, 3}, {2, 4}};
    std::string bytes;
    for (int i = 0; i < 2; ++i)
        add8(bytes, clear[who][i] ^ kNewFileSidMask[i]);
    return bytes;
}

void addObjects(Pager& pager)
{
    struct Row {
        std::uint32_t id, parent;
        const wchar_t* name;
        unsigned type;
        Sid owner;
    };
    static constexpr Row rows[] = {
        {0x0F000001, 0x0F000000, L"Tables", 3, kEngine},
        {0x0F000002, 0x0F000000, L"Databases", 3, kEngine},
        {0x0F000003, 0x0F000000, L"Relationships", 3, kEngine},
        {0x10000000, 0x0F000002, L"MSysDb", 2, kAdmin},
        {2, 0x0F000001, L"MSysObjects", 1, kEngine},
        {3, 0x0F000001, L"MSysACEs", 1, kEngine},
        {4, 0x0F000001, L"MSysQueries", 1, kEngine},
        {5, 0x0F000001, L"MSysRelationships", 1, kEngine},
    };
    Table table(pager, readTableDef(pager, kObjectsTable));
    const std::string date = encodeDate(jetNow());
    for (const Row& row : rows) {
        Record record(table.def().columns.size());
        const auto set = [&](const wchar_t* column, std::string value) {
            record[table.columnAt(column)] = std::move(value);
        };
        std::string type;
        add16(type, row.type);
        set(L"Id", encodeLong(static_cast<std::int32_t>(row.id)));
        set(L"ParentId", encodeLong(static_cast<std::int32_t>(row.parent)));
        set(L"Name", encodeText(row.name));
        set(L"Type", type);
        set(L"DateCreate", date);
        set(L"DateUpdate", date);
        set(L"Owner", sid(row.owner));
        set(L"Flags", encodeLong(static_cast<std::int32_t>(0x80000000)));
        table.insert(record);
    }
}

void addAces(Pager& pager)
{
    struct Row {
        std::int32_t id;
        Sid who;
        std::int32_t rights;
        bool inheritable;
    };
    static constexpr Row rows[] = {
        {2, kAdmin, 0x60000, false},
        {3, kAdmin, 0x60000, false},
        {4, kAdmin, 0x60000, false},
        {5, kAdmin, 0xE0000, false},
        {0x0F000001, kCreator, 0xF00FE, true},
        {0x0F000001, kAdmin, 0x60001, false},
        {0x0F000003, kCreator, 0xF00FE, true},
        {0x0F000003, kAdmin, 0x60001, false},
        {0x0F000002, kAdmin, 0x60000, false},
        {0x10000000, kAdmin, 0x6000E, false},
        {0x10000000, kUsers, 0xE, false},
        {4, kUsers, 0x14, false},
        {5, kUsers, 0x14, false},
        {2, kUsers, 0x14, false},
        {0x0F000001, kUsers, 0xFFEFF, true},
        {0x0F000003, kUsers, 0xFFFFF, true},
    };
    Table table(pager, readTableDef(pager, kAcesTable));
    for (const Row& row : rows) {
        Record record(table.def().columns.size());
        record[table.columnAt(L"ObjectId")] = encodeLong(row.id);
        record[table.columnAt(L"SID")] = sid(row.who);
        record[table.columnAt(L"ACM")] = encodeLong(row.rights);
        record[table.columnAt(L"FInheritable")] = std::string(1, row.inheritable ? '\1' : '\0');
        table.insert(record);
    }
}

} // namespace

TableDef standardObjectsDef()
{
    return makeDef(kObjectsTable, 0,
                   {{L"Connect", kMemoColumn, 9, 3, 0, 0, kVariable},
                    {L"Database", kMemoColumn, 8, 2, 0, 0, kVariable},
                    {L"DateCreate", kDateColumn, 4, 1, 10, 8, kFixed},
                    {L"DateUpdate", kDateColumn, 5, 1, 18, 8, kFixed},
                    {L"Flags", kLongColumn, 7, 2, 26, 4, kFixed},
                    {L"ForeignName", kTextColumn, 10, 4, 0, 510, kVariable},
                    {L"Id", kLongColumn, 0, 0, 0, 4, kFixed},
                    {L"Lv", kOleColumn, 13, 7, 0, 0, kVariable},
                    {L"LvExtra", kOleColumn, 16, 10, 0, 0, kVariable},
                    {L"LvModule", kOleColumn, 15, 9, 0, 0, kVariable},
                    {L"LvProp", kOleColumn, 14, 8, 0, 0, kVariable},
                    {L"Name", kTextColumn, 2, 0, 0, 510, kVariable},
                    {L"Owner", kBinaryColumn, 6, 1, 0, 510, kBinary},
                    {L"ParentId", kLongColumn, 1, 0, 4, 4, kFixed},
                    {L"RmtInfoLong", kOleColumn, 12, 6, 0, 0, kVariable},
                    {L"RmtInfoShort", kBinaryColumn, 11, 5, 0, 510, kVariable},
                    {L"Type", kIntColumn, 3, 1, 8, 2, kFixed}},
                   {{{1, 2}, 16, 7, 0x81}, {{0}, 17, 8, 0x81}},
                   {{L"Id", 1, 1}, {L"ParentIdName", 0, 0}},
                   {{9, 4}, {8, 2}, {13, 8}, {16, 14}, {15, 12}, {14, 10}, {12, 6}});
}

void makeNewDatabase(Pager& pager)
{
    Pager::Operation operation(pager);
    for (PageNo i = 0, no = 0; i < kFirstPages; ++i)
        pager.append(no);
    pager.write(0) = newHeader();
    makeDataPage(pager.write(1), 1);
    addRow(pager.write(1), Bytes(globalMap()));
    addRow(pager.write(1), Bytes(std::string(kMapSize, '\0')));
    makeDataPage(pager.write(kMapPage), 0);
    const std::string emptyMap(kMapSize, '\0');
    for (unsigned i = 0; i < kMaps; ++i)
        addRow(pager.write(kMapPage), Bytes(emptyMap));
    const TableDef objects = standardObjectsDef(), aces = acesDef();
    for (const TableDef& def : {objects, aces, queriesDef(), relationshipsDef()})
        makeTable(pager, def);
    makeDataOf(pager, objects, kObjectsData);
    makeDataOf(pager, aces, kAcesData);
    addObjects(pager);
    addAces(pager);
    operation.done();
}

} // namespace velora::jet
