#include "jet/Catalogue.h"

#include "base/clock.h"
#include "base/text.h"
#include "jet/DataPage.h"
#include "jet/IndexKey.h"
#include "jet/LongValue.h"

namespace velora::jet {
namespace {

constexpr std::size_t kMapSize = 69;
// What DAO grants on a new table: all to the administrator, all but its administration to users.
constexpr std::int32_t kAdminRights = 0xF00FE;
constexpr std::int32_t kUserRights = 0xFFEFF;
constexpr Byte kAdmin[2] = {3, 1};
constexpr Byte kUsers[2] = {2, 1};
constexpr Byte kEngine[2] = {2, 3};

std::string encodeInt(int value)
{
    std::string bytes;
    add16(bytes, static_cast<unsigned>(value));
    return bytes;
}

RawValue& at(Record& record, const Table& table, std::wstring_view column)
{
    return record[table.columnAt(column)];
}

/// The map page of a new table, every map empty: owned pages, free space, then one for each index.
void makeMaps(Page& page, std::size_t indexes)
{
    makeDataPage(page, 0);
    const std::string map(kMapSize, '\0');
    for (std::size_t i = 0; i < 2 + indexes; ++i)
        addRow(page, Bytes(map));
}

} // namespace

double jetNow()
{
    const DateTime t = now();
    return static_cast<double>(dateSerial(t))
           + (t.hour * 3600.0 + t.minute * 60.0 + t.second) / 86400.0;
}

Catalogue::Catalogue(Pager& pager)
    : pager_(pager), objects_(pager, readTableDef(pager, kObjectsTable)),
      aces_(pager, readTableDef(pager, kAcesTable))
{
    try {
        for (const wchar_t* name : {L"Id", L"ParentId", L"Name", L"Type", L"DateCreate",
                                    L"DateUpdate", L"Owner", L"Flags", L"LvProp"})
            objects_.columnAt(name);
        for (const wchar_t* name : {L"ACM", L"FInheritable", L"ObjectId", L"SID"})
            aces_.columnAt(name);
    } catch (const JetError&) {
        damaged("the catalogue lacks a column");
    }
}

CatalogueEntry Catalogue::entryOf(const TableDef& def, RowId row, const Record& record)
{
    CatalogueEntry entry;
    entry.row = row;
    bool named = false;
    for (std::size_t i = 0; i < def.columns.size(); ++i) {
        const std::wstring& column = def.columns[i].name;
        if (!record[i])
            continue;
        const Bytes value(*record[i]);
        if (column == L"Id")
            entry.id = static_cast<std::int32_t>(value.u32(0));
        else if (column == L"ParentId")
            entry.parent = static_cast<std::int32_t>(value.u32(0));
        else if (column == L"Type")
            entry.type = static_cast<std::int16_t>(value.u16(0));
        else if (column == L"Flags")
            entry.flags = value.u32(0);
        else if (column == L"LvProp")
            entry.properties = record[i];
        else if (column == L"Name") {
            entry.name = decodeText(*record[i]);
            named = !entry.name.empty();
        }
    }
    require(named && entry.type, "a catalogue row without a name");
    return entry;
}

/// The index over parent and name, by which tables are found and ordered.
std::size_t Catalogue::nameIndex() const
{
    const TableDef& def = objects_.def();
    const std::uint16_t parent = def.columns[objects_.columnAt(L"ParentId")].number;
    const std::uint16_t name = def.columns[objects_.columnAt(L"Name")].number;
    for (std::size_t i = 0; i < def.data.size(); ++i) {
        const auto& key = def.data[i].columns;
        if (key.size() == 2 && key[0].number == parent && key[1].number == name && key[0].ascending
            && key[1].ascending)
            return i;
    }
    damaged("the catalogue lacks its index");
}

std::vector<CatalogueEntry> Catalogue::list()
{
    std::vector<CatalogueEntry> entries;
    std::string key;
    addLongKey(key, kTablesContainer);
    IndexTree tree = objects_.tree(nameIndex());
    std::string former;
    for (auto place = tree.lowerBound(key); place.leaf && tree.startsWith(place, key);
         place = tree.after(place)) {
        const std::string entry = tree.entry(place);
        require(entry > former, "an index is out of order");
        former = entry;
        const RowId row = rowIdAt(Bytes(entry), entry.size() - kRowIdSize);
        entries.push_back(entryOf(objects_.def(), row, objects_.record(row)));
    }
    return entries;
}

std::optional<CatalogueEntry> Catalogue::find(std::wstring_view name)
{
    std::string key;
    addLongKey(key, kTablesContainer);
    addTextKey(key, name);
    IndexTree tree = objects_.tree(nameIndex());
    const auto place = tree.lowerBound(key);
    if (!place.leaf || !tree.startsWith(place, key))
        return std::nullopt;
    const std::string entry = tree.entry(place);
    const RowId row = rowIdAt(Bytes(entry), entry.size() - kRowIdSize);
    std::string bytes;
    require(objects_.fetch(row, bytes), "an index entry without its row");
    return entryOf(objects_.def(), row, decodeRow(objects_.def(), Bytes(bytes)));
}

std::vector<CatalogueEntry> Catalogue::all()
{
    std::vector<CatalogueEntry> entries;
    objects_.scan([&](RowId row, Bytes bytes) {
        entries.push_back(entryOf(objects_.def(), row, decodeRow(objects_.def(), bytes)));
        return true;
    });
    return entries;
}

std::string Catalogue::propertiesOf(const CatalogueEntry& entry)
{
    return entry.properties ? readLongValue(pager_, Bytes(*entry.properties)) : std::string();
}

const LongValueMaps& Catalogue::propertyMaps() const
{
    const std::uint16_t number = objects_.def().columns[objects_.columnAt(L"LvProp")].number;
    for (const LongValueMaps& maps : objects_.def().longValues)
        if (maps.column == number)
            return maps;
    damaged("the catalogue has no room for properties");
}

/// A security id as this file hides it: the mask is worked out from one whose content is known.
std::string Catalogue::sid(Byte first, Byte second)
{
    const auto own = find(L"MSysObjects");
    require(own.has_value(), "the catalogue does not hold itself");
    const Record row = objects_.record(own->row);
    const RawValue& owner = row[objects_.columnAt(L"Owner")];
    require(owner && owner->size() >= 2, "the catalogue has no owner");
    std::string bytes;
    add8(bytes, Bytes(*owner).u8(0) ^ kEngine[0] ^ first);
    add8(bytes, Bytes(*owner).u8(1) ^ kEngine[1] ^ second);
    return bytes;
}

PageNo Catalogue::create(const NewTable& table)
{
    Pager::Operation operation(pager_);
    if (find(table.name))
        throw JetError(jeterr::kTableExists, "the table exists already");
    Space space(pager_);
    TableDef def = table.def;
    def.page = space.allocate();
    const PageNo mapPage = space.allocate();
    makeMaps(pager_.write(mapPage), def.data.size());
    def.ownedMap = pointerTo({mapPage, 0});
    def.freeMap = pointerTo({mapPage, 1});
    for (std::size_t i = 0; i < def.data.size(); ++i) {
        DataIndex& index = def.data[i];
        index.map = pointerTo({mapPage, static_cast<Byte>(2 + i)});
        index.root = space.allocate();
        IndexTree::makeEmptyRoot(pager_.write(index.root), def.page);
        UsageMap(pager_, rowAt(index.map)).add(index.root, space);
    }
    writeTableDef(pager_.write(def.page), renderTableDef(def));
    addObject(def.page, table);
    addAces(def.page);
    operation.done();
    return def.page;
}

void Catalogue::addObject(PageNo id, const NewTable& table)
{
    Record row(objects_.def().columns.size());
    const std::string date = encodeDate(jetNow());
    at(row, objects_, L"Id") = encodeLong(static_cast<std::int32_t>(id));
    at(row, objects_, L"ParentId") = encodeLong(kTablesContainer);
    at(row, objects_, L"Name") = encodeText(table.name);
    at(row, objects_, L"Type") = encodeInt(kLocalTable);
    at(row, objects_, L"DateCreate") = date;
    at(row, objects_, L"DateUpdate") = date;
    at(row, objects_, L"Owner") = sid(kAdmin[0], kAdmin[1]);
    at(row, objects_, L"Flags") = encodeLong(0);
    if (!table.properties.empty())
        at(row, objects_, L"LvProp") = writeLongValue(pager_, propertyMaps(), table.properties);
    objects_.insert(row);
}

void Catalogue::addAces(PageNo id)
{
    struct Grant {
        const Byte* who;
        std::int32_t rights;
    };
    for (const Grant& grant : {Grant{kAdmin, kAdminRights}, Grant{kUsers, kUserRights}}) {
        Record row(aces_.def().columns.size());
        at(row, aces_, L"ObjectId") = encodeLong(static_cast<std::int32_t>(id));
        at(row, aces_, L"SID") = sid(grant.who[0], grant.who[1]);
        at(row, aces_, L"ACM") = encodeLong(grant.rights);
        aces_.insert(row);
    }
}

void Catalogue::removeAces(std::int32_t id)
{
    const std::size_t column = aces_.columnAt(L"ObjectId");
    std::vector<RowId> own;
    aces_.scan([&](RowId row, Bytes bytes) {
        const RawValue value = decodeField(aces_.def(), bytes, aces_.def().columns[column]);
        if (value && decodeLong(*value) == id)
            own.push_back(row);
        return true;
    });
    for (const RowId row : own)
        aces_.erase(row);
}

void Catalogue::rename(const CatalogueEntry& entry, std::wstring_view name)
{
    Pager::Operation operation(pager_);
    const auto there = find(name);
    if (there && there->id != entry.id)
        throw JetError(jeterr::kTableExists, "the table exists already");
    Record row = objects_.record(entry.row);
    at(row, objects_, L"Name") = encodeText(name);
    at(row, objects_, L"DateUpdate") = encodeDate(jetNow());
    objects_.update(entry.row, row);
    operation.done();
}

void Catalogue::remove(const CatalogueEntry& entry)
{
    Pager::Operation operation(pager_);
    Table table(pager_, readTableDef(pager_, static_cast<PageNo>(entry.id)));
    table.release();
    removeAces(entry.id);
    objects_.erase(entry.row);
    operation.done();
}

} // namespace velora::jet
