#pragma once
// The embedded engine for Jet 4 database files, with the operations of DAO that Velora uses.
//
// A database is open for one user at a time. Every operation is atomic by itself: a kill at any
// moment leaves the file as before or after it. beginTrans/commitTrans make many operations one,
// which also makes them fast. All errors are thrown as JetError with DAO's number.
#include "jet/JetError.h"
#include "jet/JetFile.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

namespace jet {
class Engine;
class Table;
struct Walk;
} // namespace jet

inline constexpr int kJetText = 10;
inline constexpr wchar_t kJetLocaleGeneral[] = L";LANGID=0x0409;CP=1252;COUNTRY=0";

struct JetField {
    std::wstring name;
    int type = kJetText;
    int size = 255; ///< characters, 1..255
    bool allowZeroLength = false;
    bool required = false;
};

struct JetIndex {
    std::wstring name;
    std::vector<std::wstring> fields;
    bool primary = false; ///< implies unique and no null
    bool unique = false;
};

struct JetTable {
    std::wstring name;
    std::vector<JetField> fields;
    std::vector<JetIndex> indexes;
};

/// A field's value; absent is Null.
using JetValue = std::optional<std::wstring>;

class clsJetRecordset;

class clsJetDatabase {
public:
    /// Makes the file; 3204 when it exists. Only the General sort order is known (3001 otherwise).
    static std::unique_ptr<clsJetDatabase> createDatabase(const std::wstring& path,
                                                          std::wstring_view locale,
                                                          JetFiles& files = systemJetFiles());
    static std::unique_ptr<clsJetDatabase> openDatabase(const std::wstring& path,
                                                        JetFiles& files = systemJetFiles());
    /// Copies every table, in name order with records in key order, into a new file; 3204 when
    /// `destination` exists, 3251 when the source holds more than this engine can carry over.
    static void compactDatabase(const std::wstring& source, const std::wstring& destination,
                                JetFiles& files = systemJetFiles());
    struct Repaired {
        int tables = 0;
        long records = 0;
        long lost = 0; ///< records that could not be read, or whose key was there already
    };
    /// Rebuilds the file in place from its data pages alone, trusting neither indexes nor maps.
    /// A table whose definition cannot be read, or reads fewer of its records, is taken to be as
    /// `usual` says. 3049 when no table can be found; the file is then as it was.
    static Repaired repairDatabase(const std::wstring& path, JetFiles& files = systemJetFiles(),
                                   const JetTable* usual = nullptr);

    ~clsJetDatabase();
    clsJetDatabase(const clsJetDatabase&) = delete;
    clsJetDatabase& operator=(const clsJetDatabase&) = delete;

    /// Recordsets that are still open answer 3420 from then on; an open transaction is undone.
    void close();

    /// Every table, the engine's own ("MSys...") included, in name order.
    std::vector<std::wstring> tableNames();
    /// Fields and indexes of a table; 3011 when it is missing.
    JetTable tableDef(std::wstring_view name);
    bool hasTable(std::wstring_view name);
    void appendTable(const JetTable& table);
    void renameTable(std::wstring_view name, std::wstring_view newName);
    void deleteTable(std::wstring_view name);

    /// A table recordset; without an index until setIndex. 3078 when the table is missing.
    std::unique_ptr<clsJetRecordset> openRecordset(std::wstring_view table);

    /// Not nested. An operation that fails inside leaves the others of the transaction alone.
    void beginTrans();
    void commitTrans();
    void rollback();

private:
    explicit clsJetDatabase(std::shared_ptr<jet::Engine> engine);
    std::shared_ptr<jet::Engine> engine_;
};

class clsJetRecordset {
public:
    ~clsJetRecordset();
    clsJetRecordset(const clsJetRecordset&) = delete;
    clsJetRecordset& operator=(const clsJetRecordset&) = delete;

    /// The index that seek and move follow; places the record set on its first record.
    void setIndex(std::wstring_view name);
    /// Only "=": the first record whose key equals the values, by the sort order's rules (case and
    /// trailing blanks do not count). No match: noMatch() and no current record.
    void seek(std::wstring_view comparison, std::wstring_view key);
    /// The same for an index of several fields; the first few will do.
    void seekFields(std::wstring_view comparison, const std::vector<JetValue>& key);
    bool noMatch() const;

    void moveFirst();
    void moveLast();
    /// By rows of the index's order; past an end there is no current record (bof or eof).
    void move(long rows);
    bool bof() const;
    bool eof() const;

    long recordCount();
    std::vector<std::wstring> fieldNames() const;
    /// Of the record under edit, else of the current one.
    JetValue field(std::wstring_view name);
    void setField(std::wstring_view name, JetValue value);

    void addNew();
    void edit();
    /// Stores the record under edit. After addNew the current record is the former one, after edit
    /// the record itself.
    void update();
    void cancelUpdate();
    /// Deletes the current record; there is none until the next move or seek.
    void deleteRecord();
    void close();

private:
    friend class clsJetDatabase;
    clsJetRecordset(std::shared_ptr<jet::Engine> engine, std::shared_ptr<jet::Table> table);
    std::unique_ptr<jet::Walk> walk_;
};

} // namespace velora
