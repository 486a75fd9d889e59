// The database engine beside SQLite (where it is installed: native builds), both on the disk.
#include "base/files.h"
#include "base/text.h"
#include "bench/bench.h"
#include "jet/clsJetDatabase.h"

#include <filesystem>
#include <vector>

#if __has_include(<sqlite3.h>) && __has_include(<dlfcn.h>)
#include <dlfcn.h>
#include <sqlite3.h>
#define BENCH_SQLITE 1
#endif

using namespace velora;
using velora::bench::clockMs;
using velora::bench::Report;

namespace {

constexpr int kRecords = 10000;
constexpr int kLookups = 100000;
constexpr int kSingle = 200;
constexpr const wchar_t* kFields[] = {L"Filename", L"Title",    L"Artist", L"Album",
                                      L"Year",     L"Comments", L"Genre",  L"Compression Type"};

std::wstring nameOf(int i)
{
    return L"Some sound number " + std::to_wstring(i * 7919 % 1000003) + L".wav";
}

std::wstring valueOf(int field, int i)
{
    switch (field) {
    case 0: return nameOf(i);
    case 4: return L"1999";
    default: return L"value " + std::to_wstring(field) + L" of record " + std::to_wstring(i);
    }
}

std::filesystem::path place(const char* name)
{
    const auto path = std::filesystem::temp_directory_path() / name;
    std::filesystem::remove(path);
    return path;
}

struct Times {
    double insert = 0, lookUp = 0, single = 0, walk = 0;
};

void insertJet(clsJetRecordset& set, int i)
{
    set.addNew();
    for (int field = 0; field < 8; ++field)
        set.setField(kFields[field], valueOf(field, i));
    set.update();
}

Times measureJet()
{
    Times times;
    const auto file = place("velora-bench.mdb");
    const auto db = clsJetDatabase::createDatabase(file.wstring(), kJetLocaleGeneral);
    JetTable table{L"Sounds", {}, {{L"PrimaryKey", {L"Filename"}, true, true}}};
    for (const wchar_t* field : kFields)
        table.fields.push_back({field});
    db->appendTable(table);
    const auto set = db->openRecordset(L"Sounds");
    set->setIndex(L"PrimaryKey");
    double start = clockMs();
    db->beginTrans();
    for (int i = 0; i < kRecords; ++i)
        insertJet(*set, i);
    db->commitTrans();
    times.insert = clockMs() - start;

    start = clockMs();
    std::size_t sum = 0;
    for (int i = 0; i < kLookups; ++i) {
        set->seek(L"=", nameOf(i % (kRecords + kRecords / 4)));
        if (!set->noMatch())
            sum += set->field(L"Title")->size();
    }
    times.lookUp = clockMs() - start;

    start = clockMs();
    for (set->moveFirst(); !set->eof(); set->move(1))
        sum += set->field(L"Title")->size();
    times.walk = clockMs() - start;

    start = clockMs();
    for (int i = 0; i < kSingle; ++i)
        insertJet(*set, kRecords + kRecords / 2 + i);
    times.single = clockMs() - start;
    db->close();
    std::filesystem::remove(file);
    if (sum == 0)
        times = {};
    return times;
}

#ifdef BENCH_SQLITE

/// SQLite's functions, loaded so that nothing has to be linked for the benchmark's sake.
struct Sqlite {
    void* library = dlopen("libsqlite3.so.0", RTLD_NOW);
    template <class Function>
    Function* get(const char* name)
    {
        return library ? reinterpret_cast<Function*>(dlsym(library, name)) : nullptr;
    }
    decltype(sqlite3_open)* open = get<decltype(sqlite3_open)>("sqlite3_open");
    decltype(sqlite3_exec)* exec = get<decltype(sqlite3_exec)>("sqlite3_exec");
    decltype(sqlite3_prepare_v2)* prepare = get<decltype(sqlite3_prepare_v2)>("sqlite3_prepare_v2");
    decltype(sqlite3_bind_text)* bind = get<decltype(sqlite3_bind_text)>("sqlite3_bind_text");
    decltype(sqlite3_step)* step = get<decltype(sqlite3_step)>("sqlite3_step");
    decltype(sqlite3_reset)* reset = get<decltype(sqlite3_reset)>("sqlite3_reset");
    decltype(sqlite3_column_text)* column =
        get<decltype(sqlite3_column_text)>("sqlite3_column_text");
    decltype(sqlite3_finalize)* finalize = get<decltype(sqlite3_finalize)>("sqlite3_finalize");
    decltype(sqlite3_close)* close = get<decltype(sqlite3_close)>("sqlite3_close");
};

std::optional<Times> measureSqlite()
{
    Sqlite sqlite;
    if (!sqlite.library)
        return std::nullopt;
    Times times;
    const auto file = place("velora-bench.sqlite");
    sqlite3* db = nullptr;
    sqlite.open(file.c_str(), &db);
    const auto run = [&](const char* sql) { sqlite.exec(db, sql, nullptr, nullptr, nullptr); };
    // The engine has its file to itself as well.
    run("pragma locking_mode = exclusive");
    run("create table Sounds (Filename text primary key collate nocase, Title text, Artist text, "
        "Album text, Year text, Comments text, Genre text, Compression text)");
    sqlite3_stmt *insert = nullptr, *select = nullptr, *walk = nullptr;
    sqlite.prepare(db, "insert into Sounds values (?,?,?,?,?,?,?,?)", -1, &insert, nullptr);
    sqlite.prepare(db, "select Title from Sounds where Filename = ?", -1, &select, nullptr);
    sqlite.prepare(db, "select Title from Sounds order by Filename", -1, &walk, nullptr);
    const auto add = [&](int i) {
        for (int field = 0; field < 8; ++field)
            sqlite.bind(insert, field + 1, toUtf8(valueOf(field, i)).c_str(), -1, SQLITE_TRANSIENT);
        sqlite.step(insert);
        sqlite.reset(insert);
    };
    // The program's text is wide on both sides: so is what it gets back.
    std::size_t sum = 0;
    const auto title = [&](sqlite3_stmt* row) {
        return fromUtf8(reinterpret_cast<const char*>(sqlite.column(row, 0))).size();
    };
    double start = clockMs();
    run("begin");
    for (int i = 0; i < kRecords; ++i)
        add(i);
    run("commit");
    times.insert = clockMs() - start;

    start = clockMs();
    for (int i = 0; i < kLookups; ++i) {
        const std::string name = toUtf8(nameOf(i % (kRecords + kRecords / 4)));
        sqlite.bind(select, 1, name.c_str(), -1, SQLITE_TRANSIENT);
        if (sqlite.step(select) == SQLITE_ROW)
            sum += title(select);
        sqlite.reset(select);
    }
    times.lookUp = clockMs() - start;

    start = clockMs();
    while (sqlite.step(walk) == SQLITE_ROW)
        sum += title(walk);
    times.walk = clockMs() - start;
    sqlite.reset(walk);

    start = clockMs();
    for (int i = 0; i < kSingle; ++i)
        add(kRecords + kRecords / 2 + i);
    times.single = clockMs() - start;
    for (sqlite3_stmt* statement : {insert, select, walk})
        sqlite.finalize(statement);
    sqlite.close(db);
    std::filesystem::remove(file);
    return sum ? std::optional(times) : std::nullopt;
}

#else

std::optional<Times> measureSqlite()
{
    return std::nullopt;
}

#endif

} // namespace

BENCH("database")
{
    constexpr int kRounds = 5;
    // In turns, so that what else the machine does falls upon both.
    std::vector<Times> own, peers;
    for (int round = 0; round < kRounds; ++round) {
        own.push_back(measureJet());
        if (const std::optional<Times> peer = measureSqlite())
            peers.push_back(*peer);
    }
    if (peers.empty())
        report.note("SQLite is not here: times without a peer");
    const auto middle = [](const std::vector<Times>& rounds, double Times::*part) {
        std::vector<double> ms;
        for (const Times& times : rounds)
            ms.push_back(times.*part);
        return bench::median(ms);
    };
    const auto row = [&](const char* what, double Times::*part) {
        const double ms = middle(own, part);
        if (!peers.empty())
            report.row(std::string("SQLite: ") + what, middle(peers, part));
        report.row(std::string("Velora: ") + what, ms,
                   peers.empty() ? std::nullopt : std::optional(middle(peers, part)));
    };
    row("100,000 lookups by name, a field read", &Times::lookUp);
    row("10,000 records in one transaction", &Times::insert);
    row("10,000 records walked in key order", &Times::walk);
    row("200 records, each a transaction of its own", &Times::single);
}
