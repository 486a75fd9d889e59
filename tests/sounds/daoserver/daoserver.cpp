// A COM server that answers DAO's calls by way of the embedded engine.
#include "sounds/daoserver/daoserver.h"
#include "jet/clsJetDatabase.h"
#include "sounds/daoserver/NamedObject.h"

#include <algorithm>

namespace velora::test {
namespace {

using Db = std::shared_ptr<clsJetDatabase>;
using Set = std::shared_ptr<clsJetRecordset>;

/// The databases of the workspace: its transactions are theirs.
std::vector<std::weak_ptr<clsJetDatabase>> workspace;

LateValue nothing()
{
    return {};
}

template <class Object>
Object& as(IDispatch* object)
{
    auto* found = dynamic_cast<Object*>(object);
    if (!found)
        throw JetError(jeterr::kConversion, "another kind of object is needed");
    return *found;
}

class NewField final : public NamedObject {
public:
    JetField field;

protected:
    LateValue call(const Call& call) override
    {
        if (call.sets(L"Name"))
            field.name = call.text(0);
        else if (call.sets(L"Type"))
            field.type = static_cast<int>(call.number(0));
        else if (call.sets(L"Size"))
            field.size = static_cast<int>(call.number(0));
        else if (call.sets(L"AllowZeroLength"))
            field.allowZeroLength = call.number(0) != 0;
        else
            throw NoMember();
        return nothing();
    }
};

class NewIndex final : public NamedObject {
public:
    JetIndex index;

protected:
    LateValue call(const Call& call) override
    {
        if (call.sets(L"Name"))
            index.name = call.text(0);
        else if (call.sets(L"Fields"))
            index.fields = {call.text(0)};
        else if (call.sets(L"Primary"))
            index.primary = call.number(0) != 0;
        else if (call.sets(L"Unique"))
            index.unique = call.number(0) != 0;
        else
            throw NoMember();
        return nothing();
    }
};

/// The fields or indexes of a table that is being made.
template <class Item, class Items>
class NewItems final : public NamedObject {
public:
    using Added = void (*)(Items&, const Item&);
    NewItems(std::shared_ptr<JetTable> table, Items& items, Added add)
        : table_(std::move(table)), items_(items), add_(add)
    {
    }

protected:
    LateValue call(const Call& call) override
    {
        if (!call.is(L"Append"))
            throw NoMember();
        add_(items_, as<Item>(call.object(0)));
        return nothing();
    }

private:
    std::shared_ptr<JetTable> table_; // keeps the items
    Items& items_;
    Added add_;
};

class NewTable final : public NamedObject {
public:
    std::shared_ptr<JetTable> table = std::make_shared<JetTable>();

protected:
    LateValue call(const Call& call) override
    {
        if (call.sets(L"Name"))
            return table->name = call.text(0), nothing();
        if (call.is(L"CreateField"))
            return made<NewField>();
        if (call.is(L"CreateIndex"))
            return made<NewIndex>();
        using Fields = NewItems<NewField, std::vector<JetField>>;
        using Indexes = NewItems<NewIndex, std::vector<JetIndex>>;
        if (call.is(L"Fields"))
            return made<Fields>(table, table->fields, [](auto& items, const NewField& one) {
                items.push_back(one.field);
            });
        if (call.is(L"Indexes"))
            return made<Indexes>(table, table->indexes, [](auto& items, const NewIndex& one) {
                items.push_back(one.index);
            });
        throw NoMember();
    }
};

class TableDef final : public NamedObject {
public:
    TableDef(Db db, std::wstring name) : db_(std::move(db)), name_(std::move(name)) {}

protected:
    LateValue call(const Call& call) override
    {
        if (call.is(L"Name"))
            return LateValue(name_);
        if (!call.sets(L"Name"))
            throw NoMember();
        db_->renameTable(name_, call.text(0));
        name_ = call.text(0);
        return nothing();
    }

private:
    Db db_;
    std::wstring name_;
};

class TableDefs final : public NamedObject {
public:
    explicit TableDefs(Db db) : db_(std::move(db)) {}

protected:
    LateValue call(const Call& call) override
    {
        if (call.is(L"Refresh"))
            return nothing();
        if (call.is(L"Count"))
            return LateValue(static_cast<long>(db_->tableNames().size()));
        if (call.is(L"Item"))
            return made<TableDef>(db_, item(call));
        if (call.is(L"Append"))
            return db_->appendTable(*as<NewTable>(call.object(0)).table), nothing();
        if (call.is(L"Delete"))
            return db_->deleteTable(call.text(0)), nothing();
        throw NoMember();
    }

private:
    std::wstring item(const Call& call)
    {
        const auto names = db_->tableNames();
        if (call.isNumber(0)) {
            if (call.number(0) < 0 || call.number(0) >= static_cast<long>(names.size()))
                throw JetError(jeterr::kItemMissing, "no such table");
            return names[static_cast<std::size_t>(call.number(0))];
        }
        if (!db_->hasTable(call.text(0)))
            throw JetError(jeterr::kItemMissing, "no such table");
        return call.text(0);
    }
    Db db_;
};

class Field final : public NamedObject {
public:
    Field(Set set, std::wstring name) : set_(std::move(set)), name_(std::move(name)) {}

protected:
    LateValue call(const Call& call) override
    {
        if (!call.is(L"Value"))
            throw NoMember();
        const JetValue value = set_->field(name_);
        return value ? LateValue(*value) : LateValue::null();
    }

private:
    Set set_;
    std::wstring name_;
};

class Fields final : public NamedObject {
public:
    explicit Fields(Set set) : set_(std::move(set)) {}

protected:
    LateValue call(const Call& call) override
    {
        if (!call.is(L"Item"))
            throw NoMember();
        return made<Field>(set_, call.text(0));
    }

private:
    Set set_;
};

class Recordset final : public NamedObject {
public:
    explicit Recordset(Set set) : set_(std::move(set)) {}

protected:
    LateValue call(const Call& call) override
    {
        if (call.put)
            return put(call), nothing();
        if (call.is(L"Fields"))
            return made<Fields>(set_);
        if (call.is(L"NoMatch"))
            return LateValue(set_->noMatch());
        if (call.is(L"EOF"))
            return LateValue(set_->eof());
        if (call.is(L"RecordCount"))
            return LateValue(set_->recordCount());
        act(call);
        return nothing();
    }

private:
    void put(const Call& call)
    {
        if (call.sets(L"Index"))
            set_->setIndex(call.text(0));
        else if (call.sets(L"Collect"))
            set_->setField(call.text(0), call.arguments.at(1)->vt == VT_NULL
                                             ? JetValue()
                                             : JetValue(call.text(1)));
        else
            throw NoMember();
    }
    void act(const Call& call)
    {
        if (call.is(L"Seek"))
            set_->seek(call.text(0), call.text(1));
        else if (call.is(L"Move"))
            set_->move(call.number(0));
        else if (call.is(L"MoveFirst"))
            set_->moveFirst();
        else if (call.is(L"AddNew"))
            set_->addNew();
        else if (call.is(L"Edit"))
            set_->edit();
        else if (call.is(L"Update"))
            set_->update();
        else if (call.is(L"Delete"))
            set_->deleteRecord();
        else if (call.is(L"Close"))
            set_->close();
        else
            throw NoMember();
    }
    Set set_;
};

class Database final : public NamedObject {
public:
    explicit Database(Db db) : db_(std::move(db)) { workspace.push_back(db_); }

protected:
    LateValue call(const Call& call) override
    {
        if (call.is(L"TableDefs"))
            return made<TableDefs>(db_);
        if (call.is(L"CreateTableDef"))
            return made<NewTable>();
        if (call.is(L"OpenRecordset") && call.number(1) == 1)
            return made<Recordset>(Set(db_->openRecordset(call.text(0))));
        if (call.is(L"Close"))
            return db_->close(), nothing();
        throw NoMember();
    }

private:
    Db db_;
};

class DBEngine final : public NamedObject {
protected:
    /// Its later releases have no RepairDatabase: with this variable, this one has none either.
    bool knows(const std::wstring& name) const override
    {
        return name != L"RepairDatabase" || !GetEnvironmentVariableW(kNoRepairVariable, nullptr, 0);
    }
    LateValue call(const Call& call) override
    {
        if (call.is(L"CreateDatabase"))
            return made<Database>(Db(clsJetDatabase::createDatabase(call.text(0), call.text(1))));
        if (call.is(L"OpenDatabase"))
            return made<Database>(Db(clsJetDatabase::openDatabase(call.text(0))));
        if (call.is(L"RepairDatabase"))
            return clsJetDatabase::repairDatabase(call.text(0)), nothing();
        if (call.is(L"CompactDatabase"))
            return clsJetDatabase::compactDatabase(call.text(0), call.text(1)), nothing();
        if (call.is(L"BeginTrans"))
            return all([](clsJetDatabase& db) { db.beginTrans(); }), nothing();
        if (call.is(L"CommitTrans"))
            return all([](clsJetDatabase& db) { db.commitTrans(); }), nothing();
        if (call.is(L"Rollback"))
            return all([](clsJetDatabase& db) { db.rollback(); }), nothing();
        throw NoMember();
    }

private:
    template <class Act>
    void all(const Act& act)
    {
        std::erase_if(workspace, [](const auto& db) { return db.expired(); });
        for (const auto& db : workspace)
            act(*db.lock());
    }
};

class Factory final : public IClassFactory {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** out) override
    {
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IClassFactory);
        *out = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    // One for the life of the module.
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** out) override
    {
        *out = nullptr;
        if (outer)
            return CLASS_E_NOAGGREGATION;
        auto* engine = new DBEngine;
        engine->AddRef();
        const HRESULT result = engine->QueryInterface(id, out);
        engine->Release();
        return result;
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

} // namespace
} // namespace velora::test

extern "C" __declspec(dllexport) HRESULT WINAPI DllGetClassObject(REFCLSID, REFIID id, void** out)
{
    static velora::test::Factory factory;
    return factory.QueryInterface(id, out);
}

extern "C" __declspec(dllexport) HRESULT WINAPI DllCanUnloadNow()
{
    return S_FALSE;
}
