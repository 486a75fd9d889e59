#include "jet/Maintenance.h"

#include "base/text.h"
#include "jet/DataPage.h"
#include "jet/Engine.h"
#include "jet/Header.h"
#include "jet/IndexKey.h"
#include "jet/LongValue.h"
#include "jet/NewDatabase.h"

#include <algorithm>
#include <map>

namespace velora::jet {
namespace {

/// Records copied in one transaction: few enough to keep memory small.
constexpr int kBatch = 2000;

[[noreturn]] void cannotCarry()
{
    throw JetError(jeterr::kNotSupported, "the database holds more than can be carried over");
}

/// A file under construction; removed again unless it is put in place.
class Building {
public:
    Building(JetFiles& files, const std::wstring& final)
        : files_(files), final_(final), path_(buildPath(final))
    {
        Pager pager(files_, path_, JetFiles::Mode::replace);
        makeNewDatabase(pager);
    }
    ~Building()
    {
        engine_.reset();
        try {
            if (files_.exists(path_))
                files_.remove(path_);
        } catch (...) {
            // It is replaced the next time.
        }
    }
    Building(const Building&) = delete;
    Building& operator=(const Building&) = delete;

    Engine& engine()
    {
        if (!engine_)
            engine_ = std::make_unique<Engine>(files_, path_);
        return *engine_;
    }
    void putInPlace()
    {
        engine_.reset();
        if (files_.exists(Journal::pathFor(final_)))
            files_.remove(Journal::pathFor(final_));
        files_.rename(path_, final_);
    }

private:
    JetFiles& files_;
    std::wstring final_, path_;
    std::unique_ptr<Engine> engine_;
};

/// Inserts many records, a batch at a time.
class Filler {
public:
    Filler(Engine& engine, Table& table) : pager_(engine.pager()), table_(table) { pager_.begin(); }
    void add(const Record& record)
    {
        table_.insert(record);
        if (++inBatch_ == kBatch) {
            pager_.commit();
            pager_.begin();
            inBatch_ = 0;
        }
    }
    void finish() { pager_.commit(); }

private:
    Pager& pager_;
    Table& table_;
    int inBatch_ = 0;
};

/// The same table for another file: columns numbered anew, pages left open.
TableDef definitionFor(const TableDef& source)
{
    TableDef def;
    std::map<std::uint16_t, std::uint16_t> numbers;
    std::uint16_t fixedAt = 0;
    for (Column column : source.columns) {
        if (isLongValue(column.type) || (column.flags & kAutoNumberFlag)
            || (column.fixed() && !fixedSize(column.type) && column.type != kBoolColumn))
            cannotCarry();
        const auto number = static_cast<std::uint16_t>(def.columns.size());
        numbers[column.number] = number;
        column.number = column.position = number;
        column.varIndex = def.varColumns;
        column.fixedAt = 0;
        if (!column.fixed()) {
            ++def.varColumns;
        } else {
            column.fixedAt = fixedAt;
            fixedAt = static_cast<std::uint16_t>(fixedAt + fixedSize(column.type));
        }
        def.columns.push_back(column);
    }
    def.maxColumns = static_cast<std::uint16_t>(def.columns.size());
    for (DataIndex index : source.data) {
        if (!canWriteKey(source, index))
            cannotCarry();
        for (KeyColumn& key : index.columns)
            key.number = numbers.at(key.number);
        def.data.push_back(index);
    }
    def.indexes = source.indexes;
    for (const LogicalIndex& index : def.indexes)
        if (index.type > 1)
            cannotCarry();
    return def;
}

std::shared_ptr<Table> makeTable(Engine& to, const CatalogueEntry& entry, const TableDef& def,
                                 const std::string& properties)
{
    to.catalogue().create({entry.name, definitionFor(def), properties});
    return to.table(to.entry(entry.name, jeterr::kObjectMissing));
}

bool isOwnTable(const std::wstring& name)
{
    return name == L"MSysObjects" || name == L"MSysACEs" || name == L"MSysQueries"
           || name == L"MSysRelationships";
}

/// The user's tables in name order; 3251 when there is anything else of the user's.
std::vector<CatalogueEntry> userTables(Engine& source)
{
    for (const CatalogueEntry& entry : source.catalogue().all()) {
        const bool container = entry.type == 2 || entry.type == 3;
        if (!container
            && (entry.type != kLocalTable || (entry.isSystem() && !isOwnTable(entry.name))))
            cannotCarry();
    }
    std::vector<CatalogueEntry> tables;
    for (const CatalogueEntry& entry : source.catalogue().list())
        if (entry.type == kLocalTable && !entry.isSystem())
            tables.push_back(entry);
    return tables;
}

void copyRecords(Engine& source, Table& from, Engine& target, Table& to)
{
    Filler filler(target, to);
    std::uint32_t copied = 0;
    const TableDef& def = from.def();
    if (def.data.empty()) {
        from.scan([&](RowId, Bytes row) {
            filler.add(decodeRow(def, row));
            ++copied;
            return true;
        });
    } else {
        std::size_t order = 0;
        for (const LogicalIndex& index : def.indexes)
            if (index.type == 1)
                order = index.data;
        IndexTree tree = from.tree(order);
        std::string former;
        for (auto place = tree.first(); place.leaf; place = tree.after(place)) {
            source.pager().trim();
            const std::string entry = tree.entry(place);
            require(entry > former, "an index is out of order");
            former = entry;
            filler.add(from.record(rowIdAt(Bytes(entry), entry.size() - kRowIdSize)));
            ++copied;
        }
    }
    // A copy that lacks records must not take the original's place.
    require(copied == from.recordCount(), "the index does not hold every record");
    filler.finish();
}

/// What can still be read of a file, by the owners that its data pages name.
class Salvage {
public:
    Salvage(JetFiles& files, const std::wstring& path)
        : pager_(files, path, JetFiles::Mode::existing)
    {
        for (PageNo no = 1; no < pager_.pageCount(); ++no) {
            pager_.trim();
            const Page& page = pager_.read(no);
            if (isDataPage(page))
                pages_[ownerOf(page)].push_back(no);
        }
    }

    struct Found {
        CatalogueEntry entry;
        std::string properties;
    };
    std::vector<Found> tables()
    {
        const TableDef def = objectsDef();
        std::vector<Found> found;
        bool any = false;
        rows(kObjectsTable, [&](RowId id, Bytes row) {
            const CatalogueEntry entry = Catalogue::entryOf(def, id, decodeRow(def, row));
            any = true;
            if (entry.type != kLocalTable || entry.isSystem())
                return;
            found.push_back({entry, propertiesOf(entry)});
        });
        require(any, "nothing of the catalogue is left");
        std::sort(found.begin(), found.end(), [](const Found& a, const Found& b) {
            return lower(a.entry.name) < lower(b.entry.name);
        });
        return found;
    }

    std::optional<TableDef> definition(PageNo no)
    {
        try {
            return readTableDef(pager_, no);
        } catch (const JetError&) {
            return std::nullopt;
        }
    }

    /// Visits each row that can be found; answers how many could not be read.
    template <class Visit>
    long rows(PageNo owner, const Visit& visit)
    {
        long lost = 0;
        for (const PageNo no : pages_[owner]) {
            pager_.trim();
            for (std::size_t i = 0; i < rowCount(no); ++i) {
                try {
                    std::string row;
                    if (fetch({no, static_cast<Byte>(i)}, row))
                        visit(RowId{no, static_cast<Byte>(i)}, Bytes(row));
                } catch (const JetError& error) {
                    if (error.number() != jeterr::kDamaged)
                        throw;
                    ++lost;
                }
            }
        }
        return lost;
    }

private:
    std::size_t rowCount(PageNo no)
    {
        try {
            return std::min(rowsOf(pager_.read(no)), kMaxRows);
        } catch (const JetError&) {
            return 0;
        }
    }

    bool fetch(RowId id, std::string& row)
    {
        Slot slot = slotOf(pager_.read(id.page), id.row);
        if (slot.hidden || slot.size == 0)
            return false;
        for (int hops = 0; slot.pointer; ++hops) {
            require(hops < 8, "a row leads in a circle");
            id = rowAt(rowBytes(pager_.read(id.page), id.row).u32(0));
            slot = slotOf(pager_.read(id.page), id.row);
        }
        row = rowBytes(pager_.read(id.page), id.row).text();
        return true;
    }

    /// The catalogue's own definition, or what it is in every file when it cannot be read.
    TableDef objectsDef()
    {
        auto def = definition(kObjectsTable);
        const TableDef standard = standardObjectsDef();
        const bool usable =
            def && def->columns.size() == standard.columns.size()
            && std::equal(def->columns.begin(), def->columns.end(), standard.columns.begin(),
                          [](const Column& a, const Column& b) {
                              return a.name == b.name && a.type == b.type && a.number == b.number;
                          });
        return usable ? *def : standard;
    }

    std::string propertiesOf(const CatalogueEntry& entry)
    {
        try {
            return entry.properties ? readLongValue(pager_, Bytes(*entry.properties))
                                    : std::string();
        } catch (const JetError&) {
            return {};
        }
    }

    Pager pager_;
    std::map<PageNo, std::vector<PageNo>> pages_;
};

/// Errors of a single record: it is lost, the others are not.
bool isRecordError(long number)
{
    return number == jeterr::kDuplicateKey || number == jeterr::kNullInKey
           || number == jeterr::kRequired || number == jeterr::kZeroLength
           || number == jeterr::kTooLong;
}

/// The definition by which most of the table's rows can be read: its own, or the usual one.
std::optional<TableDef> bestDefinition(Salvage& salvage, PageNo no,
                                       const std::optional<NewTable>& usual)
{
    const auto own = salvage.definition(no);
    if (!usual)
        return own;
    const auto lostBy = [&](const TableDef& def) {
        return salvage.rows(no, [&](RowId, Bytes row) {
            const Record record = decodeRow(def, row);
            for (const DataIndex& index : def.data)
                require(!(index.flags & kRequiredFlag) || !hasNullKey(def, index, record),
                        "a record without its key");
        });
    };
    const long lostByOwn = own ? lostBy(*own) : 0;
    if (own && (lostByOwn == 0 || lostByOwn <= lostBy(usual->def)))
        return own;
    return usual->def;
}

void salvageTable(Salvage& salvage, Salvage::Found found, Engine& to,
                  const std::optional<NewTable>& usual, clsJetDatabase::Repaired& repaired)
{
    const auto no = static_cast<PageNo>(found.entry.id);
    const auto def = bestDefinition(salvage, no, usual);
    if (!def) {
        repaired.lost += 1 + salvage.rows(no, [](RowId, Bytes) {});
        return;
    }
    if (found.properties.empty() && usual)
        found.properties = usual->properties;
    const auto table = makeTable(to, found.entry, *def, found.properties);
    Filler filler(to, *table);
    repaired.lost += salvage.rows(no, [&](RowId, Bytes row) {
        try {
            filler.add(decodeRow(*def, row));
            ++repaired.records;
        } catch (const JetError& error) {
            if (!isRecordError(error.number()))
                throw;
            ++repaired.lost;
        }
    });
    filler.finish();
    ++repaired.tables;
}

} // namespace

void compact(JetFiles& files, const std::wstring& source, const std::wstring& destination)
{
    Engine from(files, source);
    if (files.exists(destination))
        throw JetError(jeterr::kDatabaseExists, "the file exists");
    Building building(files, destination);
    Engine& to = building.engine();
    for (const CatalogueEntry& entry : userTables(from)) {
        const auto table = from.table(entry);
        const auto copy = makeTable(to, entry, table->def(), from.catalogue().propertiesOf(entry));
        copyRecords(from, *table, to, *copy);
    }
    building.putInPlace();
}

clsJetDatabase::Repaired repair(JetFiles& files, const std::wstring& path, const JetTable* usual)
{
    clsJetDatabase::Repaired repaired;
    const std::optional<NewTable> known = usual ? std::optional(newTable(*usual)) : std::nullopt;
    std::optional<Salvage> salvage(std::in_place, files, path);
    const auto tables = salvage->tables();
    Building building(files, path);
    for (const Salvage::Found& found : tables) {
        try {
            salvageTable(*salvage, found, building.engine(), known, repaired);
        } catch (const JetError& error) {
            // A second row of the same name is a stale one; a name that no table can have is
            // damage.
            if (error.number() != jeterr::kTableExists && !isRecordError(error.number()))
                throw;
            ++repaired.lost;
        }
    }
    require(tables.empty() || repaired.tables > 0, "no table could be read");
    // The file must be free before another takes its place.
    salvage.reset();
    building.putInPlace();
    return repaired;
}

} // namespace velora::jet
