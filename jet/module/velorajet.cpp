#include "jet/module/velorajet.h"

#include "base/text.h"
#include "jet/clsJetDatabase.h"

#include <map>
#include <new>

using namespace velora;

#define EXPORT extern "C" __declspec(dllexport)

namespace {

constexpr long kOutOfMemory = 7;
constexpr long kInternal = 51;

std::map<VJetHandle, std::unique_ptr<clsJetDatabase>> databases;
std::map<VJetHandle, std::unique_ptr<clsJetRecordset>> recordsets;
VJetHandle lastHandle = 0;
std::string lastReason;

template <class Objects>
auto& object(Objects& objects, VJetHandle handle)
{
    const auto found = objects.find(handle);
    if (found == objects.end())
        throw JetError(jeterr::kClosed, "no such object");
    return *found->second;
}
clsJetDatabase& database(VJetHandle handle)
{
    return object(databases, handle);
}
clsJetRecordset& recordset(VJetHandle handle)
{
    return object(recordsets, handle);
}

/// Nothing that is thrown leaves the module.
template <class Body>
long guarded(const Body& body) noexcept
{
    try {
        body();
        return 0;
    } catch (const JetError& error) {
        try {
            lastReason = error.what();
        } catch (...) {
            lastReason.clear();
        }
        return error.number();
    } catch (const std::bad_alloc&) {
        lastReason.clear();
        return kOutOfMemory;
    } catch (...) {
        lastReason.clear();
        return kInternal;
    }
}

std::wstring text(const wchar_t* given)
{
    if (!given)
        throw JetError(jeterr::kInvalidArgument, "a text is missing");
    return given;
}

template <class T>
T& need(T* given)
{
    if (!given)
        throw JetError(jeterr::kInvalidArgument, "an argument is missing");
    return *given;
}

void answer(const JetValue& value, wchar_t* buffer, long capacity, long* length)
{
    need(length) = value ? static_cast<long>(value->size()) : -1;
    const std::wstring shown = value.value_or(std::wstring());
    if (buffer && capacity > static_cast<long>(shown.size()))
        buffer[shown.copy(buffer, shown.size())] = L'\0';
}

void keep(std::unique_ptr<clsJetDatabase> opened, VJetHandle* handle)
{
    VJetHandle& out = need(handle);
    databases[++lastHandle] = std::move(opened);
    out = lastHandle;
}

JetTable tableFrom(const wchar_t* name, const VJetField* fields, long fieldCount,
                   const VJetIndex* indexes, long indexCount)
{
    JetTable table;
    table.name = text(name);
    for (long i = 0; i < fieldCount; ++i) {
        const VJetField& field = need(fields + i);
        table.fields.push_back({text(field.name), kJetText, static_cast<int>(field.size),
                                field.allowZeroLength != 0, false});
    }
    for (long i = 0; i < indexCount; ++i) {
        const VJetIndex& index = need(indexes + i);
        table.indexes.push_back({text(index.name), split(text(index.fields), L';'),
                                 index.primary != 0, index.unique != 0});
    }
    return table;
}

void repair(const std::wstring& path, const JetTable* usual, long* records, long* lost)
{
    const auto repaired = clsJetDatabase::repairDatabase(path, systemJetFiles(), usual);
    if (records)
        *records = repaired.records;
    if (lost)
        *lost = repaired.lost;
}

} // namespace

EXPORT long VJET_CALL VJetCreateDatabase(const wchar_t* path, const wchar_t* locale,
                                         VJetHandle* handle)
{
    return guarded([&] { keep(clsJetDatabase::createDatabase(text(path), text(locale)), handle); });
}

EXPORT long VJET_CALL VJetOpenDatabase(const wchar_t* path, VJetHandle* handle)
{
    return guarded([&] { keep(clsJetDatabase::openDatabase(text(path)), handle); });
}

EXPORT long VJET_CALL VJetCompactDatabase(const wchar_t* source, const wchar_t* destination)
{
    return guarded([&] { clsJetDatabase::compactDatabase(text(source), text(destination)); });
}

EXPORT long VJET_CALL VJetRepairDatabase(const wchar_t* path, long* records, long* lost)
{
    return guarded([&] { repair(text(path), nullptr, records, lost); });
}

EXPORT long VJET_CALL VJetRepairDatabaseAs(const wchar_t* path, const VJetField* fields,
                                           long fieldCount, const VJetIndex* indexes,
                                           long indexCount, long* records, long* lost)
{
    return guarded([&] {
        const JetTable usual = tableFrom(L"Usual", fields, fieldCount, indexes, indexCount);
        repair(text(path), &usual, records, lost);
    });
}

EXPORT long VJET_CALL VJetCloseDatabase(VJetHandle handle)
{
    return guarded([&] {
        database(handle).close();
        databases.erase(handle);
    });
}

EXPORT long VJET_CALL VJetTableCount(VJetHandle handle, long* count)
{
    return guarded([&] { need(count) = static_cast<long>(database(handle).tableNames().size()); });
}

EXPORT long VJET_CALL VJetTableName(VJetHandle handle, long index, wchar_t* buffer, long capacity,
                                    long* length)
{
    return guarded([&] {
        const auto names = database(handle).tableNames();
        if (index < 0 || index >= static_cast<long>(names.size()))
            throw JetError(jeterr::kItemMissing, "there is no such table");
        answer(names[static_cast<std::size_t>(index)], buffer, capacity, length);
    });
}

EXPORT long VJET_CALL VJetAppendTable(VJetHandle handle, const wchar_t* name,
                                      const VJetField* fields, long fieldCount,
                                      const VJetIndex* indexes, long indexCount)
{
    return guarded([&] {
        database(handle).appendTable(tableFrom(name, fields, fieldCount, indexes, indexCount));
    });
}

EXPORT long VJET_CALL VJetRenameTable(VJetHandle handle, const wchar_t* name,
                                      const wchar_t* newName)
{
    return guarded([&] { database(handle).renameTable(text(name), text(newName)); });
}

EXPORT long VJET_CALL VJetDeleteTable(VJetHandle handle, const wchar_t* name)
{
    return guarded([&] { database(handle).deleteTable(text(name)); });
}

EXPORT long VJET_CALL VJetBeginTrans(VJetHandle handle)
{
    return guarded([&] { database(handle).beginTrans(); });
}

EXPORT long VJET_CALL VJetCommitTrans(VJetHandle handle)
{
    return guarded([&] { database(handle).commitTrans(); });
}

EXPORT long VJET_CALL VJetRollback(VJetHandle handle)
{
    return guarded([&] { database(handle).rollback(); });
}

EXPORT long VJET_CALL VJetOpenRecordset(VJetHandle handle, const wchar_t* table, VJetHandle* opened)
{
    return guarded([&] {
        VJetHandle& out = need(opened);
        recordsets[lastHandle + 1] = database(handle).openRecordset(text(table));
        out = ++lastHandle;
    });
}

EXPORT long VJET_CALL VJetCloseRecordset(VJetHandle handle)
{
    return guarded([&] {
        recordset(handle).close();
        recordsets.erase(handle);
    });
}

EXPORT long VJET_CALL VJetSetIndex(VJetHandle handle, const wchar_t* index)
{
    return guarded([&] { recordset(handle).setIndex(text(index)); });
}

EXPORT long VJET_CALL VJetSeek(VJetHandle handle, const wchar_t* comparison, const wchar_t* key,
                               long* noMatch)
{
    return guarded([&] {
        recordset(handle).seek(text(comparison), text(key));
        need(noMatch) = recordset(handle).noMatch();
    });
}

EXPORT long VJET_CALL VJetMove(VJetHandle handle, long rows)
{
    return guarded([&] { recordset(handle).move(rows); });
}

EXPORT long VJET_CALL VJetMoveFirst(VJetHandle handle)
{
    return guarded([&] { recordset(handle).moveFirst(); });
}

EXPORT long VJET_CALL VJetMoveLast(VJetHandle handle)
{
    return guarded([&] { recordset(handle).moveLast(); });
}

EXPORT long VJET_CALL VJetPosition(VJetHandle handle, long* bof, long* eof)
{
    return guarded([&] {
        need(bof) = recordset(handle).bof();
        need(eof) = recordset(handle).eof();
    });
}

EXPORT long VJET_CALL VJetRecordCount(VJetHandle handle, long* count)
{
    return guarded([&] { need(count) = recordset(handle).recordCount(); });
}

EXPORT long VJET_CALL VJetAddNew(VJetHandle handle)
{
    return guarded([&] { recordset(handle).addNew(); });
}

EXPORT long VJET_CALL VJetEdit(VJetHandle handle)
{
    return guarded([&] { recordset(handle).edit(); });
}

EXPORT long VJET_CALL VJetUpdate(VJetHandle handle)
{
    return guarded([&] { recordset(handle).update(); });
}

EXPORT long VJET_CALL VJetDelete(VJetHandle handle)
{
    return guarded([&] { recordset(handle).deleteRecord(); });
}

EXPORT long VJET_CALL VJetGetField(VJetHandle handle, const wchar_t* field, wchar_t* buffer,
                                   long capacity, long* length)
{
    return guarded([&] { answer(recordset(handle).field(text(field)), buffer, capacity, length); });
}

EXPORT long VJET_CALL VJetSetField(VJetHandle handle, const wchar_t* field, const wchar_t* value)
{
    return guarded(
        [&] { recordset(handle).setField(text(field), value ? JetValue(value) : JetValue()); });
}

EXPORT const char* VJET_CALL VJetReason(void)
{
    return lastReason.c_str();
}
