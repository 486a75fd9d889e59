// A COM server that answers DAO's calls by way of the embedded engine.
#include "sounds/daoserver/daoserver.h"
#include "jet/clsJetDatabase.h"
#include "sounds/daoserver/NamedObject.h"

namespace velora::test {
namespace {

using Db = std::shared_ptr<clsJetDatabase>;
using Set = std::shared_ptr<clsJetRecordset>;

/// The databases of the workspace: its transactions are theirs.
std::vector<std::weak_ptr<clsJetDatabase>> workspace;

LateValue newField()
{
    const auto field = std::make_shared<JetField>();
    return object(
        {
            {L"Name=", [=](const Call& call) { field->name = call.text(0); }},
            {L"Type=", [=](const Call& call) { field->type = static_cast<int>(call.number(0)); }},
            {L"Size=", [=](const Call& call) { field->size = static_cast<int>(call.number(0)); }},
            {L"AllowZeroLength=",
             [=](const Call& call) { field->allowZeroLength = call.number(0) != 0; }},
        },
        field);
}

LateValue newIndex()
{
    const auto index = std::make_shared<JetIndex>();
    return object(
        {
            {L"Name=", [=](const Call& call) { index->name = call.text(0); }},
            {L"Fields=", [=](const Call& call) { index->fields = {call.text(0)}; }},
            {L"Primary=", [=](const Call& call) { index->primary = call.number(0) != 0; }},
            {L"Unique=", [=](const Call& call) { index->unique = call.number(0) != 0; }},
        },
        index);
}

LateValue newTable()
{
    const auto table = std::make_shared<JetTable>();
    const auto fields = [=](const Call& call) {
        table->fields.push_back(call.content<JetField>(0));
    };
    const auto indexes = [=](const Call& call) {
        table->indexes.push_back(call.content<JetIndex>(0));
    };
    return object(
        {
            {L"Name=", [=](const Call& call) { table->name = call.text(0); }},
            {L"CreateField", [](const Call&) { return newField(); }},
            {L"CreateIndex", [](const Call&) { return newIndex(); }},
            {L"Fields",
             [=](const Call&) {
                 return object({{L"Append", fields}});
             }},
            {L"Indexes",
             [=](const Call&) {
                 return object({{L"Append", indexes}});
             }},
        },
        table);
}

LateValue tableDef(const Db& db, const std::wstring& name)
{
    const auto present = std::make_shared<std::wstring>(name);
    return object({
        {L"Name", [=](const Call&) { return *present; }},
        {L"Name=",
         [=](const Call& call) {
             db->renameTable(*present, call.text(0));
             *present = call.text(0);
         }},
    });
}

std::wstring tableName(clsJetDatabase& db, const Call& call)
{
    const auto names = db.tableNames();
    const bool byNumber = call.isNumber(0);
    const auto at = byNumber ? static_cast<std::size_t>(call.number(0)) : 0;
    if (byNumber ? at >= names.size() : !db.hasTable(call.text(0)))
        throw JetError(jeterr::kItemMissing, "no such table");
    return byNumber ? names[at] : call.text(0);
}

LateValue tableDefs(const Db& db)
{
    return object({
        {L"Refresh", [](const Call&) {}},
        {L"Count", [=](const Call&) { return static_cast<long>(db->tableNames().size()); }},
        {L"Item", [=](const Call& call) { return tableDef(db, tableName(*db, call)); }},
        {L"Append", [=](const Call& call) { db->appendTable(call.content<JetTable>(0)); }},
        {L"Delete", [=](const Call& call) { db->deleteTable(call.text(0)); }},
    });
}

LateValue field(const Set& set, const std::wstring& name)
{
    return object({{L"Value", [=](const Call&) {
                        const JetValue value = set->field(name);
                        return value ? LateValue(*value) : LateValue::null();
                    }}});
}

LateValue fields(const Set& set)
{
    return object({{L"Item", [=](const Call& call) { return field(set, call.text(0)); }}});
}

LateValue recordset(const Set& set)
{
    return object({
        {L"Fields", [=](const Call&) { return fields(set); }},
        {L"NoMatch", [=](const Call&) { return set->noMatch(); }},
        {L"EOF", [=](const Call&) { return set->eof(); }},
        {L"RecordCount", [=](const Call&) { return set->recordCount(); }},
        {L"Index=", [=](const Call& call) { set->setIndex(call.text(0)); }},
        {L"Collect=",
         [=](const Call& call) {
             set->setField(call.text(0), call.isNull(1) ? JetValue() : JetValue(call.text(1)));
         }},
        {L"Seek", [=](const Call& call) { set->seek(call.text(0), call.text(1)); }},
        {L"Move", [=](const Call& call) { set->move(call.number(0)); }},
        {L"MoveFirst", [=](const Call&) { set->moveFirst(); }},
        {L"AddNew", [=](const Call&) { set->addNew(); }},
        {L"Edit", [=](const Call&) { set->edit(); }},
        {L"Update", [=](const Call&) { set->update(); }},
        {L"Delete", [=](const Call&) { set->deleteRecord(); }},
        {L"Close", [=](const Call&) { set->close(); }},
    });
}

LateValue database(const Db& db)
{
    workspace.push_back(db);
    return object({
        {L"TableDefs", [=](const Call&) { return tableDefs(db); }},
        {L"CreateTableDef", [](const Call&) { return newTable(); }},
        {L"OpenRecordset",
         [=](const Call& call) {
             if (call.number(1) != 1)
                 throw JetError(jeterr::kInvalidArgument, "not opened as a table");
             return recordset(db->openRecordset(call.text(0)));
         }},
        {L"Close", [=](const Call&) { db->close(); }},
    });
}

Member ofWorkspace(void (clsJetDatabase::*act)())
{
    return [=](const Call&) {
        std::erase_if(workspace, [](const auto& db) { return db.expired(); });
        for (const auto& db : workspace)
            (*db.lock().*act)();
    };
}

LateValue dbEngine()
{
    Members members = {
        {L"CreateDatabase",
         [](const Call& call) {
             return database(clsJetDatabase::createDatabase(call.text(0), call.text(1)));
         }},
        {L"OpenDatabase",
         [](const Call& call) { return database(clsJetDatabase::openDatabase(call.text(0))); }},
        {L"RepairDatabase", [](const Call& call) { clsJetDatabase::repairDatabase(call.text(0)); }},
        {L"CompactDatabase",
         [](const Call& call) { clsJetDatabase::compactDatabase(call.text(0), call.text(1)); }},
        {L"BeginTrans", ofWorkspace(&clsJetDatabase::beginTrans)},
        {L"CommitTrans", ofWorkspace(&clsJetDatabase::commitTrans)},
        {L"Rollback", ofWorkspace(&clsJetDatabase::rollback)},
    };
    // Its later releases have no RepairDatabase: with this variable, this one has none either.
    if (GetEnvironmentVariableW(kNoRepairVariable, nullptr, 0))
        members.erase(L"RepairDatabase");
    return object(std::move(members));
}

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
        const LateValue engine = dbEngine();
        return engine.variant().pdispVal->QueryInterface(id, out);
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
