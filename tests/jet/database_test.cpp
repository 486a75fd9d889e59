#include "jet/clsJetDatabase.h"
#include "support/jet_check.h"
#include "support/jet_memory.h"

#include <doctest/doctest.h>
#include <functional>

using namespace velora;

namespace {

constexpr wchar_t kPath[] = L"w.mdb";

std::unique_ptr<clsJetDatabase> newDatabase(MemoryFiles& files)
{
    auto db = clsJetDatabase::createDatabase(kPath, kJetLocaleGeneral, files);
    db->appendTable(descriptionTable(L"AOL Sounds"));
    return db;
}

void add(clsJetRecordset& set, const std::wstring& name, JetValue title = L"t")
{
    set.addNew();
    set.setField(L"Filename", name);
    set.setField(L"Title", std::move(title));
    set.update();
}

long errorOf(const std::function<void()>& run)
{
    try {
        run();
    } catch (const JetError& error) {
        return error.number();
    }
    return 0;
}

std::vector<std::wstring> walk(clsJetRecordset& set)
{
    std::vector<std::wstring> names;
    for (set.moveFirst(); !set.eof(); set.move(1))
        names.push_back(set.field(L"Filename").value_or(L"?"));
    return names;
}

} // namespace

TEST_CASE("a new database holds the engine's tables only, in name order with the user's")
{
    MemoryFiles files;
    const auto db = clsJetDatabase::createDatabase(kPath, kJetLocaleGeneral, files);
    CHECK(files.files.at(kPath)->size() == 16 * 4096);
    CHECK(db->tableNames()
          == std::vector<std::wstring>{L"MSysACEs", L"MSysObjects", L"MSysQueries",
                                       L"MSysRelationships"});
    for (const wchar_t* name : {L"Windows Directory", L"AOL Sounds", L"aol Directory"})
        db->appendTable(descriptionTable(name));
    const auto names = db->tableNames();
    REQUIRE(names.size() == 7);
    CHECK(names[0] == L"aol Directory");
    CHECK(names[1] == L"AOL Sounds");
    CHECK(names[6] == L"Windows Directory");
    CHECK(db->hasTable(L"WINDOWS DIRECTORY"));
    db->close();
    CHECK(checkJetFile(files, kPath) == "");
    CHECK_FALSE(files.exists(L"w.mdb.jrn"));
}

TEST_CASE("seek finds by the sort order's equality")
{
    MemoryFiles files;
    const auto db = newDatabase(files);
    const auto set = db->openRecordset(L"AOL Sounds");
    for (const wchar_t* name : {L"Hello.wav", L"r\u00E9sum\u00E9.mid", L"it's.wav", L"\u0416.wav"})
        add(*set, name, name);
    CHECK(errorOf([&] { set->seek(L"=", L"x"); }) == jeterr::kNoCurrentIndex);
    set->setIndex(L"primarykey");
    for (const wchar_t* name :
         {L"hello.WAV", L"HELLO.wav  ", L"R\u00C9SUM\u00C9.MID", L"\u0416.WAV"}) {
        set->seek(L"=", name);
        CHECK_FALSE(set->noMatch());
    }
    for (const wchar_t* name : {L"resume.mid", L"its.wav", L"hello.wa", L"", L"\u0417.wav"}) {
        set->seek(L"=", name);
        CHECK(set->noMatch());
        CHECK(errorOf([&] { set->field(L"Title"); }) == jeterr::kNoCurrentRecord);
    }
    set->seek(L"=", L"IT'S.WAV");
    CHECK(set->field(L"title") == L"it's.wav");
    CHECK_FALSE(set->field(L"Genre").has_value());
    CHECK(errorOf([&] { set->seek(L">", L"a"); }) == jeterr::kInvalidArgument);
}

TEST_CASE("records walk in the index's order, both ways, and through deletions")
{
    MemoryFiles files;
    const auto db = newDatabase(files);
    const auto set = db->openRecordset(L"AOL Sounds");
    CHECK(set->eof());
    for (const wchar_t* name : {L"c", L"A", L"b", L"e", L"D"})
        add(*set, name);
    CHECK(walk(*set) == std::vector<std::wstring>{L"A", L"b", L"c", L"D", L"e"});
    set->moveLast();
    CHECK(set->field(L"Filename") == L"e");
    set->move(-3);
    CHECK(set->field(L"Filename") == L"b");
    set->move(-2);
    CHECK(set->bof());
    CHECK(errorOf([&] { set->move(-1); }) == jeterr::kNoCurrentRecord);
    set->move(1);
    CHECK(set->field(L"Filename") == L"A");
    set->move(2);
    set->deleteRecord();
    CHECK(errorOf([&] { set->field(L"Title"); }) == jeterr::kNoCurrentRecord);
    set->move(1);
    CHECK(set->field(L"Filename") == L"D");
    set->move(-1);
    CHECK(set->field(L"Filename") == L"b");
    CHECK(set->recordCount() == 4);
    set->move(9);
    CHECK(set->eof());
}

TEST_CASE("edit changes the record in its place, the key included")
{
    MemoryFiles files;
    const auto db = newDatabase(files);
    const auto set = db->openRecordset(L"AOL Sounds");
    for (const wchar_t* name : {L"a", L"b", L"c"})
        add(*set, name);
    set->setIndex(L"PrimaryKey");
    set->seek(L"=", L"b");
    set->edit();
    set->setField(L"Filename", L"z");
    set->setField(L"Title", std::nullopt);
    CHECK(set->field(L"Filename") == L"z");
    set->cancelUpdate();
    CHECK(set->field(L"Filename") == L"b");
    set->edit();
    set->setField(L"Filename", L"z");
    set->setField(L"Title", std::nullopt);
    set->setField(L"Year", L"1999");
    set->update();
    CHECK(set->field(L"Filename") == L"z");
    CHECK_FALSE(set->field(L"Title").has_value());
    CHECK(set->field(L"Year") == L"1999");
    set->move(-1);
    CHECK(set->field(L"Filename") == L"c");
    // Only its case changes: the same key, another value.
    set->edit();
    set->setField(L"Filename", L"C");
    set->update();
    CHECK(walk(*set) == std::vector<std::wstring>{L"a", L"C", L"z"});
}

TEST_CASE("what is refused, and by which number")
{
    MemoryFiles files;
    const auto db = newDatabase(files);
    const auto set = db->openRecordset(L"AOL Sounds");
    add(*set, L"one");
    const auto put = [&](const wchar_t* field, JetValue value) {
        return errorOf([&] {
            set->addNew();
            set->setField(L"Filename", L"two");
            set->setField(field, value);
            set->update();
        });
    };
    CHECK(put(L"Filename", L"ONE") == jeterr::kDuplicateKey);
    CHECK(put(L"Filename", std::nullopt) == jeterr::kNullInKey);
    CHECK(put(L"Filename", L"") == jeterr::kZeroLength);
    CHECK(put(L"Title", L"") == jeterr::kZeroLength);
    CHECK(put(L"Year", L"12345") == jeterr::kTooLong);
    CHECK(put(L"Title", std::wstring(256, L'x')) == jeterr::kTooLong);
    CHECK(put(L"No such field", L"x") == jeterr::kItemMissing);
    set->cancelUpdate();
    CHECK(errorOf([&] { set->update(); }) == jeterr::kUpdateWithoutEdit);
    CHECK(errorOf([&] { set->setField(L"Title", L"x"); }) == jeterr::kUpdateWithoutEdit);
    CHECK(errorOf([&] { set->setIndex(L"Other"); }) == jeterr::kNoSuchIndex);
    CHECK(set->recordCount() == 1);

    CHECK(errorOf([&] { db->appendTable(descriptionTable(L"aol SOUNDS")); })
          == jeterr::kTableExists);
    CHECK(errorOf([&] { db->openRecordset(L"Nothing"); }) == jeterr::kTableMissing);
    CHECK(errorOf([&] { db->deleteTable(L"Nothing"); }) == jeterr::kObjectMissing);
    CHECK(errorOf([&] { db->renameTable(L"Nothing", L"x"); }) == jeterr::kObjectMissing);
    CHECK(errorOf([&] { db->deleteTable(L"MSysObjects"); }) == jeterr::kAccessDenied);
    CHECK(errorOf([&] { db->renameTable(L"MSysACEs", L"x"); }) == jeterr::kAccessDenied);
    CHECK(errorOf([&] { db->openRecordset(L"MSysObjects")->addNew(); }) == jeterr::kAccessDenied);
    CHECK(errorOf([&] { db->openRecordset(L"MSysObjects")->deleteRecord(); })
          == jeterr::kAccessDenied);
    for (const wchar_t* name : {L"", L" x", L"a.b", L"a!", L"[x]", L"a`", L"a\tb", L"MSysMine"})
        CHECK(errorOf([&] { db->appendTable(descriptionTable(name)); }) == jeterr::kBadName);
    CHECK(errorOf([&] { db->appendTable(descriptionTable(std::wstring(65, L'x'))); })
          == jeterr::kBadName);
    CHECK(errorOf([&] { db->renameTable(L"AOL Sounds", L"a.b"); }) == jeterr::kBadName);

    JetTable table = descriptionTable(L"Wrong");
    table.fields.push_back({L"FILENAME"});
    CHECK(errorOf([&] { db->appendTable(table); }) == jeterr::kFieldTwice);
    table = descriptionTable(L"Wrong");
    table.fields[0].type = 4;
    CHECK(errorOf([&] { db->appendTable(table); }) == jeterr::kBadFieldType);
    table = descriptionTable(L"Wrong");
    table.indexes[0].fields[0] = L"Nothing";
    CHECK(errorOf([&] { db->appendTable(table); }) == jeterr::kItemMissing);
    table.fields.clear();
    CHECK(errorOf([&] { db->appendTable(table); }) == jeterr::kTooManyFields);
    table = {L"Wrong", {}, {}};
    for (int i = 0; i < 200; ++i)
        table.fields.push_back({L"A field with a name " + std::to_wstring(i)});
    CHECK(errorOf([&] { db->appendTable(table); }) == jeterr::kTooManyFields);
    CHECK_FALSE(db->hasTable(L"Wrong"));
    db->close();
    CHECK(checkJetFile(files, kPath) == "");
}

TEST_CASE("files: present, missing, in use, of another kind")
{
    MemoryFiles files;
    auto db = newDatabase(files);
    CHECK(errorOf([&] { clsJetDatabase::createDatabase(kPath, L"", files); })
          == jeterr::kDatabaseExists);
    CHECK(errorOf([&] { clsJetDatabase::openDatabase(kPath, files); }) == jeterr::kInUse);
    CHECK(errorOf([&] { clsJetDatabase::openDatabase(L"none.mdb", files); })
          == jeterr::kFileMissing);
    for (const wchar_t* locale : {L";LANGID=0x0407;CP=1252;COUNTRY=0", L";CP=1250"})
        CHECK(errorOf([&] { clsJetDatabase::createDatabase(L"l.mdb", locale, files); })
              == jeterr::kInvalidArgument);
    CHECK_FALSE(files.exists(L"l.mdb"));
    db->close();
    const std::string good = *files.files.at(kPath);
    std::string bad[] = {
        "",   "text", std::string(70000, 'x'), good.substr(0, 4096), good.substr(0, 20000), good,
        good, good};
    bad[5][0x14] = 0;  // the format before
    bad[6][0xE00] = 0; // a writer of another engine was interrupted
    bad[6][0xE01] = 0;
    bad[7][0x6E] = 0x55; // another sort order
    for (const std::string& content : bad) {
        files.files[L"bad.mdb"] = std::make_shared<std::string>(content);
        CHECK(errorOf([&] { clsJetDatabase::openDatabase(L"bad.mdb", files); })
              == jeterr::kDamaged);
    }
}

TEST_CASE("closed databases, closed recordsets and deleted tables say so")
{
    MemoryFiles files;
    const auto db = newDatabase(files);
    db->appendTable(descriptionTable(L"Other"));
    const auto other = db->openRecordset(L"Other");
    db->deleteTable(L"Other");
    CHECK(errorOf([&] { other->recordCount(); }) == jeterr::kClosed);
    const auto set = db->openRecordset(L"AOL Sounds");
    const auto closed = db->openRecordset(L"AOL Sounds");
    closed->close();
    CHECK(errorOf([&] { closed->moveFirst(); }) == jeterr::kClosed);
    db->close();
    CHECK(errorOf([&] { set->recordCount(); }) == jeterr::kClosed);
    CHECK(errorOf([&] { db->tableNames(); }) == jeterr::kClosed);
}

TEST_CASE("two recordsets on one table see each other's changes")
{
    MemoryFiles files;
    const auto db = newDatabase(files);
    const auto a = db->openRecordset(L"AOL Sounds"), b = db->openRecordset(L"AOL Sounds");
    add(*a, L"x");
    b->moveFirst();
    CHECK(b->field(L"Filename") == L"x");
    a->moveFirst();
    a->deleteRecord();
    CHECK(errorOf([&] { b->edit(); }) == jeterr::kRecordDeleted);
    CHECK(errorOf([&] { b->deleteRecord(); }) == jeterr::kRecordDeleted);
    add(*a, L"y");
    b->move(1);
    CHECK(b->field(L"Filename") == L"y");
}

TEST_CASE("transactions: all or nothing, and a refused record alone is refused")
{
    MemoryFiles files;
    auto db = newDatabase(files);
    const auto set = db->openRecordset(L"AOL Sounds");
    CHECK(errorOf([&] { db->commitTrans(); }) == jeterr::kTransaction);
    db->beginTrans();
    CHECK(errorOf([&] { db->beginTrans(); }) == jeterr::kTransaction);
    add(*set, L"a");
    CHECK(errorOf([&] { add(*set, L"A"); }) == jeterr::kDuplicateKey);
    add(*set, L"b");
    db->commitTrans();
    CHECK(set->recordCount() == 2);
    db->beginTrans();
    add(*set, L"c");
    db->appendTable(descriptionTable(L"New"));
    const auto fresh = db->openRecordset(L"New");
    add(*fresh, L"n");
    db->rollback();
    CHECK(set->recordCount() == 2);
    CHECK(walk(*set) == std::vector<std::wstring>{L"a", L"b"});
    CHECK(errorOf([&] { fresh->recordCount(); }) == jeterr::kClosed);
    CHECK_FALSE(db->hasTable(L"New"));
    db->beginTrans();
    add(*set, L"d");
    db->close(); // undone
    CHECK(readJetFile(files, kPath)[L"AOL Sounds"].size() == 2);
    CHECK(checkJetFile(files, kPath) == "");
}

TEST_CASE("indexes of several fields, not unique, and descending nulls")
{
    MemoryFiles files;
    const auto db = clsJetDatabase::createDatabase(kPath, kJetLocaleGeneral, files);
    JetTable table{L"T",
                   {{L"Artist", kJetText, 50, true},
                    {L"Title", kJetText, 50, true},
                    {L"Note", kJetText, 50, true, true}},
                   {{L"ByBoth", {L"Artist", L"Title"}, false, true}, {L"ByArtist", {L"Artist"}}}};
    db->appendTable(table);
    const auto set = db->openRecordset(L"T");
    const auto put = [&](JetValue artist, JetValue title, JetValue note = L"n") {
        return errorOf([&] {
            set->addNew();
            set->setField(L"Artist", artist);
            set->setField(L"Title", title);
            set->setField(L"Note", note);
            set->update();
        });
    };
    CHECK(put(L"x", L"1") == 0);
    CHECK(put(L"x", L"2") == 0);
    CHECK(put(L"X", L"2") == jeterr::kDuplicateKey);
    CHECK(put(std::nullopt, L"2") == 0);
    CHECK(put(std::nullopt, L"2") == 0); // nulls are never the same
    CHECK(put(L"", L"") == 0);
    CHECK(put(L"y", L"1", std::nullopt) == jeterr::kRequired);
    CHECK(set->recordCount() == 5);
    set->setIndex(L"ByBoth");
    set->seekFields(L"=", {L"X", L"2"});
    CHECK_FALSE(set->noMatch());
    set->seekFields(L"=", {L"X", L"3"});
    CHECK(set->noMatch());
    CHECK(errorOf([&] { set->seekFields(L"=", {L"a", L"b", L"c"}); }) == jeterr::kInvalidArgument);
    set->setIndex(L"ByArtist");
    set->seek(L"=", L"x");
    CHECK(set->field(L"Title") == L"1");
    set->deleteRecord();
    set->moveFirst();
    CHECK_FALSE(set->field(L"Artist").has_value());
    db->close();
    CHECK(checkJetFile(files, kPath) == "");
    // A table without a primary key is compacted by its first index.
    clsJetDatabase::compactDatabase(kPath, L"c.mdb", files);
    CHECK(checkJetFile(files, L"c.mdb") == "");
    CHECK(readJetFile(files, L"c.mdb")[L"T"].size() == 4);
}

TEST_CASE("deleted tables and records give their pages back")
{
    MemoryFiles files;
    const auto db = newDatabase(files);
    std::size_t size = 0;
    for (int round = 0; round < 6; ++round) {
        db->appendTable(descriptionTable(L"Temporary"));
        const auto set = db->openRecordset(L"Temporary");
        for (int i = 0; i < 60; ++i)
            add(*set, std::wstring(150, L'k') + std::to_wstring(i), std::wstring(250, L't'));
        if (round % 2)
            for (set->moveFirst(); !set->eof(); set->move(1))
                set->deleteRecord();
        db->deleteTable(L"Temporary");
        if (round == 0)
            size = files.files.at(kPath)->size();
        CHECK(files.files.at(kPath)->size() == size);
    }
    db->close();
    CHECK(checkJetFile(files, kPath) == "");
}

TEST_CASE("compacting needs a free destination and leaves nothing behind when it fails")
{
    MemoryFiles files;
    const auto db = newDatabase(files);
    CHECK(errorOf([&] { clsJetDatabase::compactDatabase(kPath, L"c.mdb", files); })
          == jeterr::kInUse);
    db->close();
    clsJetDatabase::compactDatabase(kPath, L"c.mdb", files);
    CHECK(errorOf([&] { clsJetDatabase::compactDatabase(kPath, L"c.mdb", files); })
          == jeterr::kDatabaseExists);
    CHECK(errorOf([&] { clsJetDatabase::compactDatabase(L"no.mdb", L"d.mdb", files); })
          == jeterr::kFileMissing);
    CHECK(files.files.size() == 2);
}
