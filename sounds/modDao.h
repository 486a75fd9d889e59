#pragma once
// The database operations that the descriptions need, shaped as DAO's, whoever answers them: the
// system's DAO or the engine beside the program. Errors are thrown as JetError with DAO's number.
#include "jet/JetError.h"
#include "jet/clsJetDatabase.h" // the shapes of tables and values

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// No engine can be created.
inline constexpr long kCannotCreateObject = 429;

/// A table recordset. Closed by its destructor.
class DaoRecordset {
public:
    virtual ~DaoRecordset() = default;
    virtual void setIndex(std::wstring_view name) = 0;
    /// Seeks "=" the key on the index; true when there is one, which is the current record then.
    virtual bool seek(std::wstring_view key) = 0;
    virtual void moveFirst() = 0;
    virtual void move(long rows) = 0;
    virtual bool eof() = 0;
    virtual long recordCount() = 0;
    virtual JetValue field(std::wstring_view name) = 0;
    virtual void setField(std::wstring_view name, const JetValue& value) = 0;
    virtual void addNew() = 0;
    virtual void edit() = 0;
    virtual void update() = 0;
    virtual void deleteRecord() = 0;
};

/// An open database. Closed by its destructor, after its recordsets have gone.
class DaoDatabase {
public:
    virtual ~DaoDatabase() = default;
    /// All tables in the database's order, the engine's own included.
    virtual std::vector<std::wstring> tableNames() = 0;
    virtual void appendTable(const JetTable& table) = 0;
    virtual void renameTable(std::wstring_view name, std::wstring_view newName) = 0;
    virtual void deleteTable(std::wstring_view name) = 0;
    virtual std::unique_ptr<DaoRecordset> openRecordset(std::wstring_view table) = 0;
    virtual void beginTrans() = 0;
    virtual void commitTrans() = 0;
    virtual void rollback() = 0;
};

class DaoEngine {
public:
    virtual ~DaoEngine() = default;
    virtual std::unique_ptr<DaoDatabase> createDatabase(const std::wstring& path,
                                                        std::wstring_view locale) = 0;
    virtual std::unique_ptr<DaoDatabase> openDatabase(const std::wstring& path) = 0;
    /// In place; a table whose definition is lost is taken to be as `usual`, where the engine can.
    virtual void repairDatabase(const std::wstring& path, const JetTable& usual) = 0;
    virtual void compactDatabase(const std::wstring& source, const std::wstring& destination) = 0;
};

/// The system's DAO 3.6; null when it cannot be created. COM must be initialised.
std::unique_ptr<DaoEngine> createSystemDao();
/// The engine in velorajet.dll beside the program; null when it is not there.
std::unique_ptr<DaoEngine> createEmbeddedDao();
/// The first of the two that can be created; throws JetError 429 when none can.
std::unique_ptr<DaoEngine> createDaoEngine();

} // namespace velora
