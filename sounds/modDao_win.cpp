// The system's DAO, called by name.
#include "base/files.h"
#include "base/trap.h"
#include "sounds/LateObject.h"
#include "sounds/modDao.h"

namespace velora {
namespace {

constexpr wchar_t kEngine[] = L"DAO.DBEngine.36";
constexpr long kOpenTable = 1;                   // table-type recordset
constexpr unsigned long kDaoErrors = 0x800A0000; // DAO's number is the low word
constexpr long kMethodNotFound = 438;

/// The number that DAO itself gives for what went wrong in it.
long daoNumber(unsigned long code)
{
    if ((code & 0xFFFF0000) == kDaoErrors || code < 0x10000)
        return static_cast<long>(code & 0xFFFF);
    return code == static_cast<unsigned long>(DISP_E_UNKNOWNNAME)
                   || code == static_cast<unsigned long>(DISP_E_MEMBERNOTFOUND)
               ? kMethodNotFound
               : static_cast<long>(code);
}

template <class Body>
auto dao(const Body& body)
{
    try {
        return body();
    } catch (const LateError& error) {
        throw JetError(daoNumber(error.code()), error.what());
    }
}

class Recordset final : public DaoRecordset {
public:
    explicit Recordset(LateObject set) : set_(std::move(set))
    {
        fields_ = LateObject(set_.get(L"Fields"));
    }
    ~Recordset() override
    {
        trap("modDao", [&] { set_.call(L"Close"); });
    }

    void setIndex(std::wstring_view name) override
    {
        dao([&] { set_.put(L"Index", name); });
    }
    bool seek(std::wstring_view key) override
    {
        return dao([&] {
            set_.call(L"Seek", L"=", key);
            return !set_.get(L"NoMatch").truth();
        });
    }
    void moveFirst() override
    {
        dao([&] { set_.call(L"MoveFirst"); });
    }
    void move(long rows) override
    {
        dao([&] { set_.call(L"Move", rows); });
    }
    bool eof() override
    {
        return dao([&] { return set_.get(L"EOF").truth(); });
    }
    long recordCount() override
    {
        return dao([&] { return set_.get(L"RecordCount").number(); });
    }
    JetValue field(std::wstring_view name) override
    {
        return dao([&]() -> JetValue {
            const LateValue value = LateObject(fields_.get(L"Item", name)).get(L"Value");
            return value.isNull() ? JetValue() : JetValue(value.text());
        });
    }
    void setField(std::wstring_view name, const JetValue& value) override
    {
        dao([&] { set_.put(L"Collect", name, value ? LateValue(*value) : LateValue::null()); });
    }
    void addNew() override
    {
        dao([&] { set_.call(L"AddNew"); });
    }
    void edit() override
    {
        dao([&] { set_.call(L"Edit"); });
    }
    void update() override
    {
        dao([&] { set_.call(L"Update"); });
    }
    void deleteRecord() override
    {
        dao([&] { set_.call(L"Delete"); });
    }

private:
    LateObject set_, fields_;
};

/// A new table definition, ready to be appended.
LateObject makeTableDef(const LateObject& database, const JetTable& table)
{
    LateObject def(database.call(L"CreateTableDef"));
    def.put(L"Name", table.name);
    const LateObject fields(def.get(L"Fields")), indexes(def.get(L"Indexes"));
    for (const JetField& field : table.fields) {
        const LateObject made(def.call(L"CreateField"));
        made.put(L"Name", field.name);
        made.put(L"Type", static_cast<long>(field.type));
        made.put(L"Size", static_cast<long>(field.size));
        made.put(L"AllowZeroLength", field.allowZeroLength);
        fields.call(L"Append", made.get());
    }
    for (const JetIndex& index : table.indexes) {
        const LateObject made(def.call(L"CreateIndex"));
        made.put(L"Name", index.name);
        std::wstring names;
        for (const std::wstring& field : index.fields)
            names += (names.empty() ? L"" : L";") + field;
        made.put(L"Fields", names);
        made.put(L"Primary", index.primary);
        made.put(L"Unique", index.unique || index.primary);
        indexes.call(L"Append", made.get());
    }
    return def;
}

class Database final : public DaoDatabase {
public:
    Database(const LateObject& engine, LateObject database)
        : engine_(LateValue(engine.get())), database_(std::move(database))
    {
    }
    ~Database() override
    {
        trap("modDao", [&] { database_.call(L"Close"); });
    }

    std::vector<std::wstring> tableNames() override
    {
        return dao([&] {
            const LateObject defs = tableDefs();
            defs.call(L"Refresh");
            const long count = defs.get(L"Count").number();
            std::vector<std::wstring> names;
            for (long i = 0; i < count; ++i)
                names.push_back(LateObject(defs.get(L"Item", i)).get(L"Name").text());
            return names;
        });
    }
    void appendTable(const JetTable& table) override
    {
        dao([&] { tableDefs().call(L"Append", makeTableDef(database_, table).get()); });
    }
    void renameTable(std::wstring_view name, std::wstring_view newName) override
    {
        dao([&] { LateObject(tableDefs().get(L"Item", name)).put(L"Name", newName); });
    }
    void deleteTable(std::wstring_view name) override
    {
        dao([&] { tableDefs().call(L"Delete", name); });
    }
    std::unique_ptr<DaoRecordset> openRecordset(std::wstring_view table) override
    {
        return dao([&] {
            return std::make_unique<Recordset>(
                LateObject(database_.call(L"OpenRecordset", table, kOpenTable)));
        });
    }
    void beginTrans() override
    {
        dao([&] { engine_.call(L"BeginTrans"); });
    }
    void commitTrans() override
    {
        dao([&] { engine_.call(L"CommitTrans"); });
    }
    void rollback() override
    {
        dao([&] { engine_.call(L"Rollback"); });
    }

private:
    LateObject tableDefs() const { return LateObject(database_.get(L"TableDefs")); }

    LateObject engine_, database_;
};

class Engine final : public DaoEngine {
public:
    explicit Engine(LateObject engine) : engine_(std::move(engine)) {}

    std::unique_ptr<DaoDatabase> createDatabase(const std::wstring& path,
                                                std::wstring_view locale) override
    {
        return dao([&] {
            return std::make_unique<Database>(
                engine_, LateObject(engine_.call(L"CreateDatabase", path, locale)));
        });
    }
    std::unique_ptr<DaoDatabase> openDatabase(const std::wstring& path) override
    {
        return dao([&] {
            return std::make_unique<Database>(engine_,
                                              LateObject(engine_.call(L"OpenDatabase", path)));
        });
    }
    void repairDatabase(const std::wstring& path, const JetTable&) override
    {
        try {
            dao([&] { engine_.call(L"RepairDatabase", path); });
        } catch (const JetError& error) {
            // Its later releases repair while they compact.
            if (error.number() != kMethodNotFound && error.number() != jeterr::kNotSupported)
                throw;
            const std::wstring repaired = path + L".tmp";
            deleteFile(repaired);
            compactDatabase(path, repaired);
            moveFile(repaired, path);
        }
    }
    void compactDatabase(const std::wstring& source, const std::wstring& destination) override
    {
        dao([&] { engine_.call(L"CompactDatabase", source, destination); });
    }

private:
    LateObject engine_;
};

} // namespace

std::unique_ptr<DaoEngine> createSystemDao()
{
    LateObject engine = LateObject::create(kEngine);
    return engine ? std::make_unique<Engine>(std::move(engine)) : nullptr;
}

} // namespace velora
