#pragma once
// The embedded engine behind the program's database interface, linked in: for tests of pure code.
#include "sounds/modDao.h"

namespace velora::test {

class JetDao final : public DaoEngine {
public:
    explicit JetDao(JetFiles& files = systemJetFiles()) : files_(files) {}
    std::unique_ptr<DaoDatabase> createDatabase(const std::wstring& path,
                                                std::wstring_view locale) override
    {
        return std::make_unique<Database>(clsJetDatabase::createDatabase(path, locale, files_));
    }
    std::unique_ptr<DaoDatabase> openDatabase(const std::wstring& path) override
    {
        return std::make_unique<Database>(clsJetDatabase::openDatabase(path, files_));
    }
    void repairDatabase(const std::wstring& path, const JetTable& usual) override
    {
        clsJetDatabase::repairDatabase(path, files_, &usual);
    }
    void compactDatabase(const std::wstring& source, const std::wstring& destination) override
    {
        clsJetDatabase::compactDatabase(source, destination, files_);
    }

private:
    class Recordset final : public DaoRecordset {
    public:
        explicit Recordset(std::unique_ptr<clsJetRecordset> set) : set_(std::move(set)) {}
        void setIndex(std::wstring_view name) override { set_->setIndex(name); }
        bool seek(std::wstring_view key) override
        {
            set_->seek(L"=", key);
            return !set_->noMatch();
        }
        void moveFirst() override { set_->moveFirst(); }
        void move(long rows) override { set_->move(rows); }
        bool eof() override { return set_->eof(); }
        long recordCount() override { return set_->recordCount(); }
        JetValue field(std::wstring_view name) override { return set_->field(name); }
        void setField(std::wstring_view name, const JetValue& value) override
        {
            set_->setField(name, value);
        }
        void addNew() override { set_->addNew(); }
        void edit() override { set_->edit(); }
        void update() override { set_->update(); }
        void deleteRecord() override { set_->deleteRecord(); }

    private:
        std::unique_ptr<clsJetRecordset> set_;
    };
    class Database final : public DaoDatabase {
    public:
        explicit Database(std::unique_ptr<clsJetDatabase> db) : db_(std::move(db)) {}
        std::vector<std::wstring> tableNames() override { return db_->tableNames(); }
        void appendTable(const JetTable& table) override { db_->appendTable(table); }
        void renameTable(std::wstring_view name, std::wstring_view newName) override
        {
            db_->renameTable(name, newName);
        }
        void deleteTable(std::wstring_view name) override { db_->deleteTable(name); }
        std::unique_ptr<DaoRecordset> openRecordset(std::wstring_view table) override
        {
            return std::make_unique<Recordset>(db_->openRecordset(table));
        }
        void beginTrans() override { db_->beginTrans(); }
        void commitTrans() override { db_->commitTrans(); }
        void rollback() override { db_->rollback(); }

    private:
        std::unique_ptr<clsJetDatabase> db_;
    };
    JetFiles& files_;
};

} // namespace velora::test
