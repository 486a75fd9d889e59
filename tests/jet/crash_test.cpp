// A writer that is stopped at any moment leaves the file as before or after its operation.
#include "support/jet_check.h"
#include "support/jet_memory.h"

#include <doctest/doctest.h>
#include <functional>

using namespace velora;

namespace {

constexpr wchar_t kPath[] = L"d.mdb";

void add(clsJetRecordset& set, const std::wstring& name, std::size_t length = 20)
{
    set.addNew();
    set.setField(L"Filename", name);
    set.setField(L"Title", std::wstring(length, L't'));
    set.setField(L"Comments", std::wstring(length, L'c'));
    set.update();
}

/// Three tables; "A" with two levels of index whose leaves are nearly full.
MemoryFiles startingPoint()
{
    MemoryFiles files;
    const auto db = clsJetDatabase::createDatabase(kPath, kJetLocaleGeneral, files);
    db->beginTrans();
    for (const wchar_t* name : {L"A", L"B", L"C"})
        db->appendTable(descriptionTable(name));
    const auto a = db->openRecordset(L"A");
    for (int i = 0; i < 45; ++i)
        add(*a, std::wstring(200, L'a') + std::to_wstring(1000 + 2 * i));
    const auto b = db->openRecordset(L"B");
    for (int i = 0; i < 5; ++i)
        add(*b, L"b" + std::to_wstring(i), 200);
    db->commitTrans();
    return files;
}

struct Operation {
    const char* name;
    std::function<void(JetFiles&)> run;
};

const std::vector<Operation>& operations()
{
    const auto inDb = [](std::function<void(clsJetDatabase&)> change) {
        return [change](JetFiles& files) {
            const auto db = clsJetDatabase::openDatabase(kPath, files);
            change(*db);
        };
    };
    static const std::vector<Operation> all = {
        {"insert that splits a leaf", inDb([](clsJetDatabase& db) {
             const auto set = db.openRecordset(L"A");
             add(*set, std::wstring(200, L'a') + L"1031");
         })},
        {"edit that moves a record", inDb([](clsJetDatabase& db) {
             const auto set = db.openRecordset(L"A");
             set->setIndex(L"PrimaryKey");
             set->seek(L"=", std::wstring(200, L'a') + L"1000");
             set->edit();
             set->setField(L"Filename", L"z");
             set->setField(L"Artist", std::wstring(255, L'x'));
             set->setField(L"Album", std::wstring(255, L'x'));
             set->update();
         })},
        {"delete", inDb([](clsJetDatabase& db) {
             const auto set = db.openRecordset(L"B");
             set->deleteRecord();
         })},
        {"append a table",
         inDb([](clsJetDatabase& db) { db.appendTable(descriptionTable(L"New")); })},
        {"rename a table", inDb([](clsJetDatabase& db) { db.renameTable(L"A", L"Renamed"); })},
        {"delete a table", inDb([](clsJetDatabase& db) { db.deleteTable(L"A"); })},
        {"a transaction", inDb([](clsJetDatabase& db) {
             db.beginTrans();
             const auto set = db.openRecordset(L"C");
             for (int i = 0; i < 20; ++i)
                 add(*set, L"c" + std::to_wstring(i), 250);
             db.deleteTable(L"B");
             db.commitTrans();
         })},
        {"repair", [](JetFiles& files) { clsJetDatabase::repairDatabase(kPath, files); }},
        {"compact, and the copy in its place",
         [](JetFiles& files) {
             clsJetDatabase::compactDatabase(kPath, L"d.tmp", files);
             files.rename(L"d.tmp", kPath);
         }},
    };
    return all;
}

} // namespace

TEST_CASE("a kill at any step leaves the state before or after")
{
    const MemoryFiles start = startingPoint();
    JetContent before;
    {
        MemoryFiles copy(start);
        before = readJetFile(copy, kPath);
    }
    for (const Operation& operation : operations()) {
        CAPTURE(operation.name);
        MemoryFiles whole(start);
        operation.run(whole);
        const JetContent after = readJetFile(whole, kPath);
        const long steps = whole.steps;
        bool sawBefore = false, sawAfter = false;
        // The big files are only sampled towards their middle; ends and commits lie at the borders.
        const auto stride = [&](long at) { return at < 50 || at + 50 > steps ? 1 : 61; };
        for (long budget = 0; budget < steps; budget += stride(budget)) {
            CAPTURE(budget);
            MemoryFiles files(start);
            files.budget = budget;
            try {
                operation.run(files);
            } catch (const WriterKilled&) {
            }
            MemoryFiles left(files);
            REQUIRE(checkJetFile(left, kPath) == "");
            const JetContent content = readJetFile(left, kPath);
            REQUIRE((content == before || content == after));
            sawBefore = sawBefore || content == before;
            sawAfter = sawAfter || content == after;
        }
        CHECK(sawBefore);
        CHECK((sawAfter || before == after));
    }
}

TEST_CASE("a kill while an interrupted operation is being finished changes nothing")
{
    const MemoryFiles start = startingPoint();
    // Stop the writer right after its journal was complete: then every step of the recovery.
    MemoryFiles whole(start);
    operations()[0].run(whole);
    const JetContent after = readJetFile(whole, kPath);
    for (long first = 0; first < whole.steps; ++first) {
        MemoryFiles files(start);
        files.budget = first;
        try {
            operations()[0].run(files);
        } catch (const WriterKilled&) {
        }
        MemoryFiles probe(files);
        if (readJetFile(probe, kPath) != after)
            continue;
        for (long second = 0; second < 60; ++second) {
            MemoryFiles again(files);
            again.budget = second;
            try {
                readJetFile(again, kPath);
            } catch (const WriterKilled&) {
            }
            MemoryFiles left(again);
            REQUIRE(readJetFile(left, kPath) == after);
            REQUIRE(checkJetFile(left, kPath) == "");
        }
    }
}

TEST_CASE("a disk that fails once gives 3043 and loses nothing")
{
    const MemoryFiles start = startingPoint();
    for (std::size_t which : {0u, 3u, 5u, 6u}) {
        const Operation& operation = operations()[which];
        CAPTURE(operation.name);
        MemoryFiles whole(start);
        const JetContent before = readJetFile(whole, kPath);
        whole.steps = 0;
        operation.run(whole);
        const JetContent after = readJetFile(whole, kPath);
        for (long budget = 0; budget < whole.steps; budget += budget < 60 ? 1 : 13) {
            CAPTURE(budget);
            MemoryFiles files(start);
            files.budget = budget;
            files.failOnce = true;
            long number = 0;
            try {
                operation.run(files);
            } catch (const JetError& error) {
                number = error.number();
            }
            files.budget = -1;
            // What fails after the operation is only the journal's removal.
            REQUIRE((number == jeterr::kDiskError || number == 0));
            REQUIRE(checkJetFile(files, kPath) == "");
            const JetContent content = readJetFile(files, kPath);
            REQUIRE((content == after || (number != 0 && content == before)));
        }
    }
}

TEST_CASE("after a failed write the open database still works, or says 3043 until it is reopened")
{
    MemoryFiles files = startingPoint();
    auto db = clsJetDatabase::openDatabase(kPath, files);
    const auto set = db->openRecordset(L"C");
    int refused = 0;
    for (int i = 0; i < 60; ++i) {
        files.failOnce = true;
        files.budget = i;
        try {
            add(*set, L"n" + std::to_wstring(i));
        } catch (const JetError& error) {
            REQUIRE(error.number() == jeterr::kDiskError);
            ++refused;
        }
        files.failOnce = false;
        files.budget = -1;
    }
    CHECK(refused > 0);
    CHECK(set->recordCount() == 60 - refused);
    db->close();
    CHECK(checkJetFile(files, kPath) == "");
    // One more may be there: the one whose journal was complete when the file could not be written.
    const auto kept = static_cast<int>(readJetFile(files, kPath)[L"C"].size());
    CHECK((kept == 60 - refused || kept == 61 - refused));
}

TEST_CASE("a journal that belongs to another file is dropped")
{
    const MemoryFiles start = startingPoint();
    MemoryFiles whole(start);
    operations()[4].run(whole);
    for (long budget = 0; budget < whole.steps; ++budget) {
        MemoryFiles files(start);
        files.budget = budget;
        try {
            operations()[4].run(files);
        } catch (const WriterKilled&) {
        }
        if (!files.exists(L"d.mdb.jrn"))
            continue;
        // Somebody puts an older copy, or another database, in the place of the file.
        MemoryFiles other(files);
        MemoryFiles replaced(start);
        const auto db = clsJetDatabase::openDatabase(kPath, replaced);
        db->renameTable(L"C", L"Other");
        db->close();
        other.files[kPath] = replaced.files[kPath];
        REQUIRE(checkJetFile(other, kPath) == "");
        REQUIRE(readJetFile(other, kPath).count(L"Other") == 1);
        REQUIRE(readJetFile(other, kPath).count(L"A") == 1);
        REQUIRE_FALSE(other.exists(L"d.mdb.jrn"));
    }
}
