#include "jet/clsJetDatabase.h"

#include "base/text.h"
#include "jet/Engine.h"
#include "jet/Maintenance.h"
#include "jet/Walk.h"

namespace velora {
namespace {

/// ";LANGID=0x0409;CP=1252;COUNTRY=0": of what it can say only this sort order is known.
void checkLocale(std::wstring_view locale)
{
    for (const std::wstring& part : split(locale, L';')) {
        const std::wstring item = lower(trim(part));
        if ((item.starts_with(L"langid=") && item != L"langid=0x0409")
            || (item.starts_with(L"cp=") && item != L"cp=1252"))
            throw JetError(jeterr::kInvalidArgument, "the sort order is not known");
    }
}

void refuseSystem(const jet::CatalogueEntry& entry)
{
    if (entry.isSystem())
        throw JetError(jeterr::kAccessDenied, "the engine's own tables cannot be changed");
}

} // namespace

clsJetDatabase::clsJetDatabase(std::shared_ptr<jet::Engine> engine) : engine_(std::move(engine)) {}

clsJetDatabase::~clsJetDatabase()
{
    engine_->close();
}

std::unique_ptr<clsJetDatabase>
clsJetDatabase::createDatabase(const std::wstring& path, std::wstring_view locale, JetFiles& files)
{
    checkLocale(locale);
    jet::createFile(files, path);
    return openDatabase(path, files);
}

std::unique_ptr<clsJetDatabase> clsJetDatabase::openDatabase(const std::wstring& path,
                                                             JetFiles& files)
{
    return std::unique_ptr<clsJetDatabase>(
        new clsJetDatabase(std::make_shared<jet::Engine>(files, path)));
}

void clsJetDatabase::compactDatabase(const std::wstring& source, const std::wstring& destination,
                                     JetFiles& files)
{
    jet::compact(files, source, destination);
}

clsJetDatabase::Repaired clsJetDatabase::repairDatabase(const std::wstring& path, JetFiles& files,
                                                        const JetTable* usual)
{
    return jet::repair(files, path, usual);
}

void clsJetDatabase::close()
{
    engine_->close();
}

std::vector<std::wstring> clsJetDatabase::tableNames()
{
    std::vector<std::wstring> names;
    for (const jet::CatalogueEntry& entry : engine_->catalogue().list())
        if (entry.type == jet::kLocalTable)
            names.push_back(entry.name);
    return names;
}

JetTable clsJetDatabase::tableDef(std::wstring_view name)
{
    const jet::CatalogueEntry entry = engine_->entry(name, jeterr::kObjectMissing);
    const auto table = engine_->table(entry);
    const jet::TableDef& def = table->def();
    JetTable answer;
    answer.name = entry.name;
    for (std::size_t i = 0; i < def.columns.size(); ++i) {
        const jet::Column& column = def.columns[i];
        const int size = column.type == jet::kTextColumn ? column.size / 2 : column.size;
        answer.fields.push_back({column.name, column.type, size, table->rule(i).allowZeroLength,
                                 table->rule(i).required});
    }
    for (const jet::LogicalIndex& index : def.indexes) {
        const jet::DataIndex& data = def.data[index.data];
        JetIndex item{index.name, {}, index.type == 1, (data.flags & jet::kUniqueFlag) != 0};
        for (const jet::KeyColumn& key : data.columns)
            item.fields.push_back(def.find(key.number)->name);
        answer.indexes.push_back(item);
    }
    return answer;
}

bool clsJetDatabase::hasTable(std::wstring_view name)
{
    const auto found = engine_->catalogue().find(name);
    return found && found->type == jet::kLocalTable;
}

void clsJetDatabase::appendTable(const JetTable& table)
{
    engine_->catalogue().create(jet::newTable(table));
}

void clsJetDatabase::renameTable(std::wstring_view name, std::wstring_view newName)
{
    const jet::CatalogueEntry entry = engine_->entry(name, jeterr::kObjectMissing);
    refuseSystem(entry);
    jet::checkName(newName);
    if (startsWithNoCase(newName, L"MSys"))
        throw JetError(jeterr::kBadName, "the name is the engine's own");
    engine_->catalogue().rename(entry, newName);
}

void clsJetDatabase::deleteTable(std::wstring_view name)
{
    const jet::CatalogueEntry entry = engine_->entry(name, jeterr::kObjectMissing);
    refuseSystem(entry);
    engine_->catalogue().remove(entry);
    engine_->forget(static_cast<jet::PageNo>(entry.id));
}

std::unique_ptr<clsJetRecordset> clsJetDatabase::openRecordset(std::wstring_view table)
{
    const jet::CatalogueEntry entry = engine_->entry(table, jeterr::kTableMissing);
    return std::unique_ptr<clsJetRecordset>(new clsJetRecordset(engine_, engine_->table(entry)));
}

void clsJetDatabase::beginTrans()
{
    engine_->pager().begin();
}

void clsJetDatabase::commitTrans()
{
    engine_->pager().commit();
}

void clsJetDatabase::rollback()
{
    engine_->pager().rollback();
    engine_->forgetUndone();
}

} // namespace velora
