#pragma once
// The database of descriptions: for each category a table of records, found by file name.
//
// Every operation but Init answers its neutral value while the database is closed, and reports what
// the engine refuses to the log. Only Init, Repair and Compact speak to the user.
#include "sounds/modDao.h"
#include "sounds/modDescription.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

struct DatabaseServices {
    /// Throws JetError 429 when there is none.
    std::function<std::unique_ptr<DaoEngine>()> createEngine = createDaoEngine;
    /// Shows a message (marked up) with OK alone. Pumps.
    std::function<void(const std::wstring& prompt, int style)> message;
};

/// How far a long operation is. Answering false ends it; what is done stays. It may pump.
using DatabaseProgress = std::function<bool(std::size_t done, std::size_t all)>;

class clsDatabase {
public:
    /// `dataFolder` without a trailing separator. Opens nothing yet.
    clsDatabase(std::wstring dataFolder, DatabaseServices services);
    ~clsDatabase();
    clsDatabase(const clsDatabase&) = delete;
    clsDatabase& operator=(const clsDatabase&) = delete;

    /// Repairs the file in place and opens it again. The user is told; pumps.
    bool Repair();
    /// Compacts the file into a copy that takes its place. The user is told; pumps.
    bool Compact();

    struct Filled {
        std::size_t files = 0;   ///< sound files found
        std::size_t added = 0;   ///< of them, those that got a record
        std::size_t present = 0; ///< those that had one already, which stays as it is
        bool whole = true;       ///< neither stopped nor broken off by an error
    };
    /// Adds a record to Table for each sound file of the folder, from its tag.
    Filled GetWavs(const std::wstring& folder, const DatabaseProgress& progress = {});
    /// The same for records that come from elsewhere.
    Filled AddRecords(const std::vector<Description>& records,
                      const DatabaseProgress& progress = {});

    bool AddTable(std::wstring_view name);
    /// A new file with its three categories, opened. Throws JetError.
    void Create();
    /// Loads the first record of that file name, of the first table that holds one.
    bool IsDescription(std::wstring_view fileName) { return IsMatch(fileName); }
    const std::wstring& DatabasePath() const { return path_; }
    bool IsMatch(std::wstring_view fileName);
    /// Replaces the record of FileName in Table; false when there is none.
    bool EditWavDescription();
    /// The categories in the database's order.
    std::vector<std::wstring> GetTables();
    /// False when Table holds a record of FileName, or FileName is empty.
    bool AddWavDescription();
    bool DeleteWavDescription();
    bool DeleteTable(std::wstring_view name);
    bool EditTable(std::wstring_view name, std::wstring_view newName);
    long GetRecordCount(std::wstring_view table);
    /// Loads the record of FileName in Table.
    bool GetWavDescription();
    /// Opens the file, or makes it; repairs it or makes it anew after telling the user. False: the
    /// user knows that the descriptions are off.
    bool Init();

    const std::wstring& FileName() const { return record_.fileName; }
    const std::wstring& Title() const { return record_.title; }
    const std::wstring& Artist() const { return record_.artist; }
    const std::wstring& Album() const { return record_.album; }
    const std::wstring& Year() const { return record_.year; }
    const std::wstring& Comments() const { return record_.comments; }
    const std::wstring& Genre() const { return record_.genre; }
    const std::wstring& Compression() const { return record_.compression; }
    const std::wstring& Term() const { return term_; }
    const std::wstring& Table() const { return table_; }
    void SetFileName(std::wstring_view value) { record_.fileName = value; }
    void SetTerm(std::wstring_view value) { term_ = value; }
    void SetTable(std::wstring_view value) { table_ = value; }
    /// All eight at once.
    const Description& Record() const { return record_; }
    void SetRecord(const Description& record) { record_ = record; }

    bool isOpen() const { return database_ != nullptr; }
    /// The table in which IsMatch found the record.
    const std::wstring& matchTable() const { return matchTable_; }
    /// The records of Table that hold Term, in the order of their names.
    std::vector<Description> GetRecords();
    /// Moves a record to another table in one step; false when that has one of the name already.
    bool TransferRecord(std::wstring_view fileName, std::wstring_view from, std::wstring_view to);
    void close();
    /// Closes the file and lets the engine go.
    void forget();

private:
    enum class Missing { make, fail };
    void open(Missing missing);
    void keepFormer();
    bool recover(const JetError& error);
    bool recoverDamaged();
    bool fail(const wchar_t* prompt);
    DaoEngine& engine();
    DaoDatabase& database();
    /// The open table, on its index; kept open until the tables change.
    DaoRecordset& recordset(std::wstring_view table);
    /// Null for a table of somebody else's making that has no such index: told once, then passed
    /// over.
    DaoRecordset* searchable(const std::wstring& table);
    void tablesChanged();
    const std::vector<std::wstring>& tables();
    void load(DaoRecordset& set);
    static void store(DaoRecordset& set, const Description& record);
    /// Calls `body` with Table at the record of FileName; false when there is none.
    bool atRecord(const std::function<void(DaoRecordset&)>& body,
                  const char* procedure = __builtin_FUNCTION());
    bool addOne(DaoRecordset& set, const Description& record);
    Filled fill(std::size_t count, const std::function<Description(std::size_t)>& make,
                const DatabaseProgress& progress);
    void makeFirstTables();
    /// All that `body` does, or nothing of it.
    void inTransaction(const std::function<void()>& body);

    DatabaseServices services_;
    std::wstring folder_, path_;
    std::unique_ptr<DaoEngine> engine_;
    std::unique_ptr<DaoDatabase> database_;
    std::map<std::wstring, std::unique_ptr<DaoRecordset>, std::less<>> recordsets_;
    std::optional<std::vector<std::wstring>> tables_;
    Description record_;
    std::wstring term_, table_, matchTable_;
};

} // namespace velora
