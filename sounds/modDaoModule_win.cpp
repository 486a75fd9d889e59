// The embedded engine, by the flat interface of its module.
#include "base/handles.h"
#include "base/text.h"
#include "core/modMain.h"
#include "jet/module/velorajet.h"
#include "sounds/modDao.h"

namespace velora {
namespace {

/// The module's functions. It stays loaded as long as anything that came from it.
struct Module {
    Library library;
    bool complete = true; // before the functions, which clear it
#define VJET(name) decltype(&::name) name = get<decltype(&::name)>(#name)
    VJET(VJetCreateDatabase);
    VJET(VJetOpenDatabase);
    VJET(VJetCompactDatabase);
    VJET(VJetRepairDatabaseAs);
    VJET(VJetCloseDatabase);
    VJET(VJetTableCount);
    VJET(VJetTableName);
    VJET(VJetAppendTable);
    VJET(VJetRenameTable);
    VJET(VJetDeleteTable);
    VJET(VJetBeginTrans);
    VJET(VJetCommitTrans);
    VJET(VJetRollback);
    VJET(VJetOpenRecordset);
    VJET(VJetCloseRecordset);
    VJET(VJetSetIndex);
    VJET(VJetSeek);
    VJET(VJetMove);
    VJET(VJetMoveFirst);
    VJET(VJetPosition);
    VJET(VJetRecordCount);
    VJET(VJetAddNew);
    VJET(VJetEdit);
    VJET(VJetUpdate);
    VJET(VJetDelete);
    VJET(VJetGetField);
    VJET(VJetSetField);
    VJET(VJetReason);
#undef VJET

    explicit Module(Library loaded) : library(std::move(loaded)) {}
    void check(long number) const
    {
        if (number != 0)
            throw JetError(number, VJetReason());
    }

private:
    template <class Function>
    Function get(const char* name)
    {
        const auto found = reinterpret_cast<Function>(
            reinterpret_cast<void*>(GetProcAddress(library.get(), name)));
        complete = complete && found;
        return found;
    }
};
using ModulePtr = std::shared_ptr<Module>;

std::wstring text(std::wstring_view view)
{
    return std::wstring(view);
}

class Recordset final : public DaoRecordset {
public:
    Recordset(ModulePtr module, VJetHandle handle) : jet_(std::move(module)), handle_(handle) {}
    ~Recordset() override { jet_->VJetCloseRecordset(handle_); }

    void setIndex(std::wstring_view name) override
    {
        jet_->check(jet_->VJetSetIndex(handle_, text(name).c_str()));
    }
    bool seek(std::wstring_view key) override
    {
        long noMatch = 1;
        jet_->check(jet_->VJetSeek(handle_, L"=", text(key).c_str(), &noMatch));
        return noMatch == 0;
    }
    void moveFirst() override { jet_->check(jet_->VJetMoveFirst(handle_)); }
    void move(long rows) override { jet_->check(jet_->VJetMove(handle_, rows)); }
    bool eof() override
    {
        long bof = 0, eof = 0;
        jet_->check(jet_->VJetPosition(handle_, &bof, &eof));
        return eof != 0;
    }
    long recordCount() override
    {
        long count = 0;
        jet_->check(jet_->VJetRecordCount(handle_, &count));
        return count;
    }
    JetValue field(std::wstring_view name) override
    {
        wchar_t buffer[256];
        long length = 0;
        const std::wstring field = text(name);
        jet_->check(jet_->VJetGetField(handle_, field.c_str(), buffer, std::size(buffer), &length));
        if (length < 0)
            return std::nullopt;
        if (static_cast<std::size_t>(length) < std::size(buffer))
            return std::wstring(buffer, static_cast<std::size_t>(length));
        std::wstring value(static_cast<std::size_t>(length) + 1, L'\0');
        jet_->check(jet_->VJetGetField(handle_, field.c_str(), value.data(), length + 1, &length));
        value.pop_back();
        return value;
    }
    void setField(std::wstring_view name, const JetValue& value) override
    {
        jet_->check(
            jet_->VJetSetField(handle_, text(name).c_str(), value ? value->c_str() : nullptr));
    }
    void addNew() override { jet_->check(jet_->VJetAddNew(handle_)); }
    void edit() override { jet_->check(jet_->VJetEdit(handle_)); }
    void update() override { jet_->check(jet_->VJetUpdate(handle_)); }
    void deleteRecord() override { jet_->check(jet_->VJetDelete(handle_)); }

private:
    ModulePtr jet_;
    VJetHandle handle_;
};

/// A table as the module takes it; refers to the texts of the table it was made from.
struct FlatTable {
    explicit FlatTable(const JetTable& table)
    {
        for (const JetField& field : table.fields)
            fields.push_back({field.name.c_str(), field.size, field.allowZeroLength});
        joined.reserve(table.indexes.size());
        for (const JetIndex& index : table.indexes) {
            std::wstring& names = joined.emplace_back();
            for (const std::wstring& field : index.fields)
                names += (names.empty() ? L"" : L";") + field;
            indexes.push_back({index.name.c_str(), names.c_str(), index.primary, index.unique});
        }
    }
    FlatTable(const FlatTable&) = delete;
    FlatTable& operator=(const FlatTable&) = delete;
    long fieldCount() const { return static_cast<long>(fields.size()); }
    long indexCount() const { return static_cast<long>(indexes.size()); }

    std::vector<VJetField> fields;
    std::vector<VJetIndex> indexes;
    std::vector<std::wstring> joined;
};

class Database final : public DaoDatabase {
public:
    Database(ModulePtr module, VJetHandle handle) : jet_(std::move(module)), handle_(handle) {}
    ~Database() override { jet_->VJetCloseDatabase(handle_); }

    std::vector<std::wstring> tableNames() override
    {
        long count = 0;
        jet_->check(jet_->VJetTableCount(handle_, &count));
        std::vector<std::wstring> names;
        for (long i = 0; i < count; ++i) {
            wchar_t name[256];
            long length = 0;
            jet_->check(jet_->VJetTableName(handle_, i, name, std::size(name), &length));
            if (length > 0 && length < static_cast<long>(std::size(name)))
                names.emplace_back(name, static_cast<std::size_t>(length));
        }
        return names;
    }
    void appendTable(const JetTable& table) override
    {
        const FlatTable flat(table);
        jet_->check(jet_->VJetAppendTable(handle_, table.name.c_str(), flat.fields.data(),
                                          flat.fieldCount(), flat.indexes.data(),
                                          flat.indexCount()));
    }
    void renameTable(std::wstring_view name, std::wstring_view newName) override
    {
        jet_->check(jet_->VJetRenameTable(handle_, text(name).c_str(), text(newName).c_str()));
    }
    void deleteTable(std::wstring_view name) override
    {
        jet_->check(jet_->VJetDeleteTable(handle_, text(name).c_str()));
    }
    std::unique_ptr<DaoRecordset> openRecordset(std::wstring_view table) override
    {
        VJetHandle opened = 0;
        jet_->check(jet_->VJetOpenRecordset(handle_, text(table).c_str(), &opened));
        return std::make_unique<Recordset>(jet_, opened);
    }
    void beginTrans() override { jet_->check(jet_->VJetBeginTrans(handle_)); }
    void commitTrans() override { jet_->check(jet_->VJetCommitTrans(handle_)); }
    void rollback() override { jet_->check(jet_->VJetRollback(handle_)); }

private:
    ModulePtr jet_;
    VJetHandle handle_;
};

class Engine final : public DaoEngine {
public:
    explicit Engine(ModulePtr module) : jet_(std::move(module)) {}

    std::unique_ptr<DaoDatabase> createDatabase(const std::wstring& path,
                                                std::wstring_view locale) override
    {
        VJetHandle handle = 0;
        jet_->check(jet_->VJetCreateDatabase(path.c_str(), text(locale).c_str(), &handle));
        return std::make_unique<Database>(jet_, handle);
    }
    std::unique_ptr<DaoDatabase> openDatabase(const std::wstring& path) override
    {
        VJetHandle handle = 0;
        jet_->check(jet_->VJetOpenDatabase(path.c_str(), &handle));
        return std::make_unique<Database>(jet_, handle);
    }
    void repairDatabase(const std::wstring& path, const JetTable& usual) override
    {
        const FlatTable flat(usual);
        jet_->check(jet_->VJetRepairDatabaseAs(path.c_str(), flat.fields.data(), flat.fieldCount(),
                                               flat.indexes.data(), flat.indexCount(), nullptr,
                                               nullptr));
    }
    void compactDatabase(const std::wstring& source, const std::wstring& destination) override
    {
        jet_->check(jet_->VJetCompactDatabase(source.c_str(), destination.c_str()));
    }

private:
    ModulePtr jet_;
};

} // namespace

std::unique_ptr<DaoEngine> createEmbeddedDao()
{
    Library library(LoadLibraryW((AppPath() + L"\\velorajet.dll").c_str()));
    if (!library)
        return nullptr;
    auto module = std::make_shared<Module>(std::move(library));
    return module->complete ? std::make_unique<Engine>(std::move(module)) : nullptr;
}

std::unique_ptr<DaoEngine> createDaoEngine()
{
    if (auto system = createSystemDao())
        return system;
    if (auto embedded = createEmbeddedDao())
        return embedded;
    throw JetError(kCannotCreateObject, "neither the system's DAO nor the module can be created");
}

} // namespace velora
