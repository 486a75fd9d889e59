#include "jet/Engine.h"

#include "base/text.h"
#include "jet/Header.h"
#include "jet/NewDatabase.h"

#include <algorithm>

namespace velora::jet {
namespace {

constexpr std::size_t kMaxName = 64;
constexpr int kMaxTextSize = 255;
constexpr std::size_t kMaxFields = 255;
constexpr std::size_t kMaxTableIndexes = 32;
constexpr std::size_t kMaxKeyFields = 10;

Column textColumn(const JetField& field, std::size_t number)
{
    checkName(field.name);
    if (field.type != kJetText || field.size < 1 || field.size > kMaxTextSize)
        throw JetError(jeterr::kBadFieldType, "only text fields of 1 to 255 characters");
    Column column;
    column.name = field.name;
    column.number = column.varIndex = column.position = static_cast<std::uint16_t>(number);
    column.size = static_cast<std::uint16_t>(2 * field.size);
    return column;
}

std::uint16_t columnNumber(const TableDef& def, const std::wstring& name)
{
    for (const Column& column : def.columns)
        if (equalNoCase(column.name, name))
            return column.number;
    throw JetError(jeterr::kItemMissing, "an index on a field that is not in the table");
}

void addIndex(TableDef& def, const JetIndex& index, std::size_t number)
{
    checkName(index.name);
    if (index.fields.empty() || index.fields.size() > kMaxKeyFields)
        throw JetError(jeterr::kInvalidArgument, "an index has one to ten fields");
    DataIndex data;
    for (const std::wstring& field : index.fields)
        data.columns.push_back({columnNumber(def, field)});
    data.flags = kAlwaysFlag;
    if (index.primary || index.unique)
        data.flags |= kUniqueFlag;
    if (index.primary)
        data.flags |= kRequiredFlag;
    def.data.push_back(data);
    const auto own = static_cast<std::uint32_t>(number);
    def.indexes.push_back({index.name, own, own, static_cast<Byte>(index.primary)});
}

/// True when two of the names are the same.
template <class Items>
bool namedTwice(const Items& items)
{
    std::vector<std::wstring> names;
    for (const auto& item : items)
        names.push_back(lower(item.name));
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) != names.end();
}

} // namespace

void checkName(std::wstring_view name)
{
    const bool bad = std::any_of(name.begin(), name.end(), [](wchar_t c) {
        return c < L' ' || std::wstring_view(L".!`[]").find(c) != std::wstring_view::npos;
    });
    if (name.empty() || toUtf16le(name).size() > 2 * kMaxName || name.front() == L' ' || bad)
        throw JetError(jeterr::kBadName, "not a valid name");
}

NewTable newTable(const JetTable& table)
{
    checkName(table.name);
    if (startsWithNoCase(table.name, L"MSys"))
        throw JetError(jeterr::kBadName, "the name is the engine's own");
    if (table.fields.empty() || table.fields.size() > kMaxFields
        || table.indexes.size() > kMaxTableIndexes)
        throw JetError(jeterr::kTooManyFields, "a table has 1 to 255 fields and up to 32 indexes");
    if (namedTwice(table.fields) || namedTwice(table.indexes))
        throw JetError(jeterr::kFieldTwice, "a field or index is there twice");
    NewTable made;
    made.name = table.name;
    std::vector<FieldRule> rules;
    for (const JetField& field : table.fields) {
        made.def.columns.push_back(textColumn(field, made.def.columns.size()));
        rules.push_back({field.name, field.allowZeroLength, field.required});
    }
    made.def.maxColumns = made.def.varColumns = static_cast<std::uint16_t>(made.def.columns.size());
    for (const JetIndex& index : table.indexes)
        addIndex(made.def, index, made.def.data.size());
    std::sort(
        made.def.indexes.begin(), made.def.indexes.end(),
        [](const LogicalIndex& a, const LogicalIndex& b) { return lower(a.name) < lower(b.name); });
    made.properties = renderFieldRules(rules);
    return made;
}

std::wstring buildPath(const std::wstring& path)
{
    return path + L".new";
}

void createFile(JetFiles& files, const std::wstring& path)
{
    if (files.exists(path))
        throw JetError(jeterr::kDatabaseExists, "the file exists");
    const std::wstring building = buildPath(path);
    {
        Pager pager(files, building, JetFiles::Mode::replace);
        makeNewDatabase(pager);
    }
    if (files.exists(Journal::pathFor(path)))
        files.remove(Journal::pathFor(path));
    files.rename(building, path);
}

Engine::Engine(JetFiles& files, const std::wstring& path)
    : files_(files), path_(path),
      pager_(std::make_unique<Pager>(files, path, JetFiles::Mode::existing))
{
    checkHeader(pager_->read(0));
    catalogue_ = std::make_unique<Catalogue>(*pager_);
    require(catalogue_->find(L"MSysObjects").has_value(), "the catalogue does not hold itself");
}

Pager& Engine::pager()
{
    if (!pager_)
        throw JetError(jeterr::kClosed, "the database is closed");
    return *pager_;
}

Catalogue& Engine::catalogue()
{
    pager().trim();
    return *catalogue_;
}

void Engine::close()
{
    catalogue_.reset();
    tables_.clear();
    pager_.reset();
}

CatalogueEntry Engine::entry(std::wstring_view name, long missing)
{
    auto found = catalogue().find(name);
    if (!found || found->type != kLocalTable)
        throw JetError(missing, "there is no such table");
    return *found;
}

std::shared_ptr<Table> Engine::table(const CatalogueEntry& entry)
{
    const auto no = static_cast<PageNo>(entry.id);
    auto& cached = tables_[no];
    try {
        if (!cached) {
            cached = std::make_shared<Table>(pager(), readTableDef(pager(), no));
            cached->setRules(readFieldRules(catalogue().propertiesOf(entry)));
        }
    } catch (...) {
        tables_.erase(no);
        throw;
    }
    return cached;
}

Table& Engine::live(const std::shared_ptr<Table>& table)
{
    pager().trim();
    const auto found = tables_.find(table->page());
    if (found == tables_.end() || found->second != table)
        throw JetError(jeterr::kClosed, "the table has been deleted");
    return *table;
}

void Engine::forgetUndone()
{
    std::vector<PageNo> present;
    for (const CatalogueEntry& entry : catalogue().list())
        present.push_back(static_cast<PageNo>(entry.id));
    std::erase_if(tables_, [&](const auto& item) {
        return std::find(present.begin(), present.end(), item.first) == present.end();
    });
}

} // namespace velora::jet
