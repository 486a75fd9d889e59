#include "sounds/clsDatabase.h"

#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "clsDatabase";
constexpr wchar_t kFile[] = L"wav descriptions.mdb";
constexpr wchar_t kIndex[] = L"PrimaryKey";

/// Errors after which nothing more is to be had from the file: every row of a list would meet them.
bool endsUse(long number)
{
    return number == jeterr::kDamaged || number == jeterr::kDiskError || number == jeterr::kClosed;
}

JetValue nullWhenEmpty(const std::wstring& text)
{
    return text.empty() ? JetValue() : JetValue(text);
}

} // namespace

clsDatabase::clsDatabase(std::wstring dataFolder, DatabaseServices services)
    : services_(std::move(services)), folder_(std::move(dataFolder)),
      path_(joinPath(folder_, kFile))
{
}

clsDatabase::~clsDatabase()
{
    forget();
}

void clsDatabase::close()
{
    tablesChanged();
    database_.reset();
}

void clsDatabase::forget()
{
    trap(kModule, [&] { close(); });
    engine_.reset();
}

DaoEngine& clsDatabase::engine()
{
    if (!engine_)
        engine_ = services_.createEngine();
    return *engine_;
}

DaoDatabase& clsDatabase::database()
{
    if (!database_)
        throw JetError(jeterr::kClosed, "the database is closed");
    return *database_;
}

void clsDatabase::tablesChanged()
{
    recordsets_.clear();
    tables_.reset();
}

const std::vector<std::wstring>& clsDatabase::tables()
{
    if (!tables_) {
        tables_ = database().tableNames();
        std::erase_if(*tables_, [](const std::wstring& name) { return !isCategory(name); });
    }
    return *tables_;
}

DaoRecordset& clsDatabase::recordset(std::wstring_view table)
{
    const auto found = recordsets_.find(table);
    if (found != recordsets_.end() && found->second)
        return *found->second;
    auto opened = database().openRecordset(table);
    opened->setIndex(kIndex);
    return *(recordsets_[std::wstring(table)] = std::move(opened));
}

DaoRecordset* clsDatabase::searchable(const std::wstring& table)
{
    const auto found = recordsets_.find(table);
    if (found != recordsets_.end())
        return found->second.get();
    try {
        return &recordset(table);
    } catch (const JetError& error) {
        if (endsUse(error.number()))
            throw;
        reportCurrentException(kModule, "IsMatch");
        recordsets_[table] = nullptr;
        return nullptr;
    }
}

void clsDatabase::inTransaction(const std::function<void()>& body)
{
    database().beginTrans();
    try {
        body();
        database().commitTrans();
    } catch (...) {
        const std::exception_ptr error = std::current_exception();
        trap(kModule, [&] { database().rollback(); });
        std::rethrow_exception(error);
    }
}

// --- Records ----------------------------------------------------------------------------------

void clsDatabase::load(DaoRecordset& set)
{
    for (const DescriptionField& field : kDescriptionFields)
        record_.*field.value = set.field(field.name).value_or(std::wstring());
}

void clsDatabase::store(DaoRecordset& set, const Description& record)
{
    const Description cut = cutToSizes(record);
    for (const DescriptionField& field : kDescriptionFields)
        set.setField(field.name, nullWhenEmpty(cut.*field.value));
}

bool clsDatabase::addOne(DaoRecordset& set, const Description& record)
{
    const std::wstring key = cutToSizes(record).fileName;
    if (trimView(key).empty() || set.seek(key))
        return false;
    set.addNew();
    store(set, record);
    set.update();
    return true;
}

bool clsDatabase::IsMatch(std::wstring_view fileName)
{
    return trap(
        kModule,
        [&] {
            if (!isOpen() || fileName.empty())
                return false;
            try {
                const std::wstring key = cutToSize(fileName, kDescriptionFields.front().size);
                for (const std::wstring& table : tables()) {
                    DaoRecordset* const set = searchable(table);
                    if (!set || !set->seek(key))
                        continue;
                    load(*set);
                    matchTable_ = table;
                    return true;
                }
                return false;
            } catch (const JetError& error) {
                if (endsUse(error.number()))
                    close();
                throw;
            }
        },
        false);
}

bool clsDatabase::atRecord(const std::function<void(DaoRecordset&)>& body, const char* procedure)
{
    return trap(
        kModule,
        [&] {
            if (!isOpen())
                return false;
            DaoRecordset& set = recordset(table_);
            if (!set.seek(cutToSizes(record_).fileName))
                return false;
            body(set);
            return true;
        },
        false, procedure);
}

bool clsDatabase::GetWavDescription()
{
    return atRecord([&](DaoRecordset& set) { load(set); });
}

bool clsDatabase::AddWavDescription()
{
    return trap(
        kModule, [&] { return isOpen() && addOne(recordset(table_), record_); }, false);
}

bool clsDatabase::EditWavDescription()
{
    return atRecord([&](DaoRecordset& set) {
        set.edit();
        store(set, record_);
        set.update();
    });
}

bool clsDatabase::DeleteWavDescription()
{
    return atRecord([](DaoRecordset& set) { set.deleteRecord(); });
}

bool clsDatabase::TransferRecord(std::wstring_view fileName, std::wstring_view from,
                                 std::wstring_view to)
{
    return trap(
        kModule,
        [&] {
            if (!isOpen() || equalNoCase(from, to))
                return false;
            DaoRecordset& source = recordset(from);
            DaoRecordset& target = recordset(to);
            if (!source.seek(fileName))
                return false;
            load(source);
            bool moved = false;
            inTransaction([&] {
                moved = addOne(target, record_);
                if (moved)
                    source.deleteRecord();
            });
            return moved;
        },
        false);
}

std::vector<Description> clsDatabase::GetRecords()
{
    return trap(
        kModule,
        [&] {
            std::vector<Description> records;
            if (!isOpen())
                return records;
            DaoRecordset& set = recordset(table_);
            const Description kept = record_;
            if (set.recordCount() > 0)
                for (set.moveFirst(); !set.eof(); set.move(1)) {
                    load(set);
                    if (term_.empty() || holdsTerm(record_, term_))
                        records.push_back(record_);
                }
            record_ = kept;
            return records;
        },
        std::vector<Description>());
}

long clsDatabase::GetRecordCount(std::wstring_view table)
{
    return trap(
        kModule, [&] { return isOpen() ? recordset(table).recordCount() : 0L; }, 0L);
}

// --- Categories -------------------------------------------------------------------------------

std::vector<std::wstring> clsDatabase::GetTables()
{
    return trap(
        kModule, [&] { return isOpen() ? tables() : std::vector<std::wstring>(); },
        std::vector<std::wstring>());
}

bool clsDatabase::AddTable(std::wstring_view name)
{
    return trap(
        kModule,
        [&] {
            if (!isOpen() || !isCategory(name))
                return false;
            database().appendTable(categoryTable(name));
            tablesChanged();
            return true;
        },
        false);
}

bool clsDatabase::DeleteTable(std::wstring_view name)
{
    return trap(
        kModule,
        [&] {
            if (!isOpen() || !isCategory(name))
                return false;
            tablesChanged(); // no table goes while a recordset of it is open
            database().deleteTable(name);
            return true;
        },
        false);
}

bool clsDatabase::EditTable(std::wstring_view name, std::wstring_view newName)
{
    return trap(
        kModule,
        [&] {
            if (!isOpen() || !isCategory(name) || !isCategory(newName))
                return false;
            tablesChanged();
            database().renameTable(name, newName);
            return true;
        },
        false);
}

} // namespace velora
