// Damaged files give 3049 or the right answer, never anything worse; and forms of the file that
// this engine does not write itself are read.
#include "jet/DataPage.h"
#include "jet/Engine.h"
#include "jet/RowCodec.h"
#include "support/jet_check.h"
#include "support/jet_memory.h"

#include <doctest/doctest.h>

using namespace velora;
using namespace velora::jet;

namespace {

constexpr wchar_t kPath[] = L"x.mdb";

MemoryFiles sound(int records = 40)
{
    MemoryFiles files;
    const auto db = clsJetDatabase::createDatabase(kPath, kJetLocaleGeneral, files);
    db->beginTrans();
    db->appendTable(descriptionTable(L"A"));
    const auto set = db->openRecordset(L"A");
    for (int i = 0; i < records; ++i) {
        set->addNew();
        set->setField(L"Filename", std::wstring(150, L'n') + std::to_wstring(1000 + i));
        set->setField(L"Title", std::wstring(40, L't'));
        set->update();
    }
    db->commitTrans();
    return files;
}

/// Everything that can be done with a file; answers the error that stopped it, 0 for none.
long useAll(MemoryFiles& files, JetContent& content)
{
    long number = 0;
    try {
        content = readJetFile(files, kPath);
        const auto db = clsJetDatabase::openDatabase(kPath, files);
        db->appendTable(descriptionTable(L"More"));
        const auto set = db->openRecordset(L"A");
        set->setIndex(L"PrimaryKey");
        set->seek(L"=", std::wstring(150, L'n') + L"1020");
        if (!set->noMatch())
            set->deleteRecord();
        set->addNew();
        set->setField(L"Filename", std::wstring(150, L'n') + L"1020x");
        set->update();
        db->deleteTable(L"A");
    } catch (const JetError& error) {
        number = error.number();
    }
    return number;
}

bool isPlausible(long number)
{
    // Damage can look like a table that is missing or of a kind that cannot be written.
    return number == 0 || number == jeterr::kDamaged || number == jeterr::kTableMissing
           || number == jeterr::kObjectMissing || number == jeterr::kNotSupported
           || number == jeterr::kNoSuchIndex || number == jeterr::kItemMissing
           || number == jeterr::kDuplicateKey || number == jeterr::kTooLong
           || number == jeterr::kTooLarge || number == jeterr::kNullInKey
           || number == jeterr::kRecordDeleted || number == jeterr::kTableExists
           || number == jeterr::kAccessDenied || number == jeterr::kTooManyFields;
}

Page pageOf(const MemoryFiles& files, PageNo no)
{
    Page page;
    page.put(0, Bytes(*files.files.at(kPath)).part(no * kPageSize, kPageSize));
    return page;
}

void setPage(MemoryFiles& files, PageNo no, const Page& page)
{
    std::string& bytes = *files.files.at(kPath);
    if (bytes.size() < (no + 1) * kPageSize)
        bytes.resize((no + 1) * kPageSize);
    bytes.replace(no * kPageSize, kPageSize, page.view().text());
}

TableDef defOf(MemoryFiles& files, std::wstring_view table)
{
    Engine engine(files, kPath);
    return engine.table(engine.entry(table, jeterr::kTableMissing))->def();
}

/// Replaces a map's row on its page.
void setMap(MemoryFiles& files, std::uint32_t map, const std::string& row)
{
    Page page = pageOf(files, rowAt(map).page);
    replaceRow(page, rowAt(map).row, Bytes(row));
    setPage(files, rowAt(map).page, page);
}

std::string mapRow(const MemoryFiles& files, std::uint32_t map)
{
    return std::string(rowBytes(pageOf(files, rowAt(map).page), rowAt(map).row).text());
}

} // namespace

TEST_CASE("every byte region flipped: an error or an answer, never worse")
{
    const MemoryFiles good = sound();
    const std::size_t size = good.files.at(kPath)->size();
    for (std::size_t at = 0; at < size;) {
        for (const int flip : {0xFF, 0x01, 0x80}) {
            CAPTURE(at);
            MemoryFiles files(good);
            char& byte = (*files.files.at(kPath))[at];
            byte = static_cast<char>(byte ^ flip);
            JetContent content;
            const long number = useAll(files, content);
            CAPTURE(number);
            REQUIRE(isPlausible(number));
        }
        // The heads of pages byte by byte, the rest in strides that meet every kind of place.
        at += at % kPageSize < 40 ? 1 : 61;
    }
}

TEST_CASE("whole pages zeroed, filled or put in each other's place")
{
    const MemoryFiles good = sound();
    const auto pages = static_cast<PageNo>(good.files.at(kPath)->size() / kPageSize);
    Page ones;
    ones.bytes.fill(0xFF);
    for (PageNo no = 0; no < pages; ++no)
        for (PageNo from = 0; from < pages + 2; ++from) {
            MemoryFiles files(good);
            setPage(files, no, from < pages ? pageOf(good, from) : from == pages ? Page{} : ones);
            JetContent content;
            REQUIRE(isPlausible(useAll(files, content)));
        }
}

TEST_CASE("a file cut anywhere")
{
    const MemoryFiles good = sound();
    const std::string bytes = *good.files.at(kPath);
    for (std::size_t size = 0; size < bytes.size(); size += 1024) {
        MemoryFiles files;
        files.files[kPath] = std::make_shared<std::string>(bytes.substr(0, size));
        JetContent content;
        REQUIRE(isPlausible(useAll(files, content)));
    }
}

TEST_CASE("repair needs neither indexes nor maps")
{
    const MemoryFiles good = sound();
    MemoryFiles copy(good);
    const JetContent before = readJetFile(copy, kPath);
    MemoryFiles files(good);
    const auto pages = static_cast<PageNo>(good.files.at(kPath)->size() / kPageSize);
    for (PageNo no = 0; no < pages; ++no) {
        const Page page = pageOf(good, no);
        const bool map = isDataPage(page) && (ownerOf(page) == 0 || ownerOf(page) == 1);
        if (no == 0 || map || page.u8(0) == kNodePage || page.u8(0) == kLeafPage)
            setPage(files, no, Page{});
    }
    CHECK_THROWS_AS(clsJetDatabase::openDatabase(kPath, files), JetError);
    const auto repaired = clsJetDatabase::repairDatabase(kPath, files);
    CHECK(repaired.tables == 1);
    CHECK(repaired.records == 40);
    CHECK(repaired.lost == 0);
    CHECK(readJetFile(files, kPath) == before);
    CHECK(checkJetFile(files, kPath) == "");
    const auto db = clsJetDatabase::openDatabase(kPath, files);
    CHECK_FALSE(db->tableDef(L"A").fields[0].allowZeroLength);
}

TEST_CASE("repair leaves out what it cannot read, and a file without a catalogue as it was")
{
    MemoryFiles files = sound();
    const TableDef def = defOf(files, L"A");
    PageNo data = 0;
    for (PageNo no = 16; !data; ++no) {
        const Page page = pageOf(files, no);
        if (isDataPage(page) && ownerOf(page) == def.page)
            data = no;
    }
    Page page = pageOf(files, data);
    const std::size_t rows = rowsOf(page);
    page.bytes[slotOf(page, 1).at] = 0xEE; // the row's number of columns
    setPage(files, data, page);
    const auto repaired = clsJetDatabase::repairDatabase(kPath, files);
    CHECK(repaired.lost == 1);
    CHECK(repaired.records == 39);
    CHECK(rows > 2);

    MemoryFiles hopeless;
    hopeless.files[kPath] = std::make_shared<std::string>(std::string(80000, 'z'));
    CHECK_THROWS_AS(clsJetDatabase::repairDatabase(kPath, hopeless), JetError);
    CHECK(*hopeless.files.at(kPath) == std::string(80000, 'z'));
    CHECK(hopeless.files.size() == 1);
}

TEST_CASE("repair takes a lost definition from what the caller knows")
{
    const MemoryFiles good = sound();
    MemoryFiles copy(good);
    const TableDef def = defOf(copy, L"A");
    const JetContent before = readJetFile(copy, kPath);
    const JetTable usual = descriptionTable(L"any");
    for (const bool zeroed : {true, false}) {
        CAPTURE(zeroed);
        MemoryFiles files(good);
        Page page = zeroed ? Page{} : pageOf(files, def.page);
        if (!zeroed)
            page.put16(43, 0); // "no variable columns": a definition that reads, but wrongly
        setPage(files, def.page, page);
        MemoryFiles without(files);
        if (zeroed)
            CHECK_THROWS_AS(clsJetDatabase::repairDatabase(kPath, without), JetError);
        const auto repaired = clsJetDatabase::repairDatabase(kPath, files, &usual);
        CHECK(repaired.records == 40);
        CHECK(repaired.lost == 0);
        CHECK(readJetFile(files, kPath) == before);
        CHECK(checkJetFile(files, kPath) == "");
    }
}

TEST_CASE("overflow rows are followed, edited and deleted")
{
    MemoryFiles files = sound(3);
    const TableDef def = defOf(files, L"A");
    JetContent before;
    {
        MemoryFiles copy(files);
        before = readJetFile(copy, kPath);
    }
    // Row 1 becomes a pointer to a hidden row on a page of its own.
    PageNo data = 0;
    for (PageNo no = 16; !data; ++no)
        if (isDataPage(pageOf(files, no)) && ownerOf(pageOf(files, no)) == def.page)
            data = no;
    Page page = pageOf(files, data);
    const std::string row(rowBytes(page, 1).text());
    {
        Pager pager(files, kPath, JetFiles::Mode::existing);
        Pager::Operation operation(pager);
        Space space(pager);
        const PageNo other = space.allocate();
        makeDataPage(pager.write(other), def.page);
        addRow(pager.write(other), Bytes(row), true);
        UsageMap(pager, rowAt(def.ownedMap)).add(other, space);
        std::string pointer;
        add32(pointer, pointerTo({other, 0}));
        Page& target = pager.write(data);
        replaceRow(target, 1, Bytes(pointer));
        target.put16(14 + 2, target.u16(14 + 2) | 0x4000);
        operation.done();
    }
    CHECK(checkJetFile(files, kPath) == "");
    CHECK(readJetFile(files, kPath) == before);
    {
        MemoryFiles copy(files);
        CHECK(clsJetDatabase::repairDatabase(kPath, copy).lost == 0);
        CHECK(readJetFile(copy, kPath) == before);
    }
    const auto db = clsJetDatabase::openDatabase(kPath, files);
    const auto set = db->openRecordset(L"A");
    set->setIndex(L"PrimaryKey");
    set->seek(L"=", std::wstring(150, L'n') + L"1001");
    set->edit();
    set->setField(L"Artist", L"changed");
    set->update();
    CHECK(set->field(L"Artist") == L"changed");
    set->deleteRecord();
    CHECK(set->recordCount() == 2);
    db->close();
    CHECK(checkJetFile(files, kPath) == "");
}

TEST_CASE("an overflow row that leads in a circle is damage")
{
    MemoryFiles files = sound(2);
    const TableDef def = defOf(files, L"A");
    for (PageNo no = 16; no < files.files.at(kPath)->size() / kPageSize; ++no) {
        Page page = pageOf(files, no);
        if (!isDataPage(page) || ownerOf(page) != def.page)
            continue;
        std::string pointer;
        add32(pointer, pointerTo({no, 0}));
        replaceRow(page, 0, Bytes(pointer));
        page.put16(14, page.u16(14) | 0x4000);
        setPage(files, no, page);
    }
    JetContent content;
    CHECK(useAll(files, content) == jeterr::kDamaged);
}

TEST_CASE("maps that begin later, and maps of another kind")
{
    const MemoryFiles good = sound();
    MemoryFiles reference(good);
    const JetContent before = readJetFile(reference, kPath);
    const TableDef def = defOf(reference, L"A");
    for (const bool wide : {false, true}) {
        CAPTURE(wide);
        MemoryFiles files(good);
        for (const std::uint32_t map : {def.ownedMap, def.freeMap, def.data[0].map}) {
            const std::string former = mapRow(files, map);
            std::string row(69, '\0');
            if (wide) {
                // Type 1: the bits lie on a page of their own, 4 bytes behind its head.
                const auto bits = static_cast<PageNo>(files.files.at(kPath)->size() / kPageSize);
                Page page;
                page.put8(0, kBitmapPage);
                page.put8(1, 1);
                page.put(4, Bytes(former).from(5));
                setPage(files, bits, page);
                row[0] = 1;
                for (int i = 0; i < 4; ++i)
                    row[1 + i] = static_cast<char>(bits >> 8 * i);
            } else {
                row[1] = 16; // the window begins at page 16
                row.replace(5, 62, former.substr(7, 62));
            }
            setMap(files, map, row);
        }
        if (wide) // the three new pages are in use
            setMap(files, 0x100, mapRow(files, 0x100).replace(5, 5, 5, '\0'));
        CHECK(readJetFile(files, kPath) == before);
        CHECK(checkJetFile(files, kPath) == "");
        const auto db = clsJetDatabase::openDatabase(kPath, files);
        const auto set = db->openRecordset(L"A");
        for (int i = 0; i < 200; ++i) {
            set->addNew();
            set->setField(L"Filename", std::wstring(150, L'm') + std::to_wstring(i));
            set->setField(L"Comments", std::wstring(255, L'c'));
            set->update();
        }
        db->close();
        CHECK(checkJetFile(files, kPath) == "");
        clsJetDatabase::openDatabase(kPath, files)->deleteTable(L"A");
        CHECK(checkJetFile(files, kPath) == "");
    }
}

TEST_CASE("a map whose pages lie more than its window apart becomes wide")
{
    MemoryFiles files = sound(1);
    auto db = clsJetDatabase::openDatabase(kPath, files);
    db->appendTable(descriptionTable(L"Filler"));
    const auto fill = [&](const wchar_t* table, int from, int to) {
        db->beginTrans();
        const auto set = db->openRecordset(table);
        for (int i = from; i < to; ++i) {
            set->addNew();
            set->setField(L"Filename", std::to_wstring(i));
            for (const wchar_t* field : {L"Title", L"Artist", L"Album", L"Comments"})
                set->setField(field, std::wstring(255, L'x'));
            set->update();
        }
        db->commitTrans();
    };
    fill(L"A", 0, 3);
    fill(L"Filler", 0, 1200);
    fill(L"A", 3, 6);
    const std::uint32_t map = [&] {
        db->close();
        return defOf(files, L"A").ownedMap;
    }();
    CHECK(mapRow(files, map)[0] == 1);
    CHECK(checkJetFile(files, kPath) == "");
    CHECK(readJetFile(files, kPath)[L"A"].size() == 7);
    db = clsJetDatabase::openDatabase(kPath, files);
    db->deleteTable(L"A");
    db->deleteTable(L"Filler");
    db->close();
    CHECK(checkJetFile(files, kPath) == "");
}

TEST_CASE("a definition over several pages, and compressed text")
{
    MemoryFiles files = sound(5);
    const TableDef def = defOf(files, L"A");
    MemoryFiles reference(files);
    const JetContent before = readJetFile(reference, kPath);
    const auto second = static_cast<PageNo>(files.files.at(kPath)->size() / kPageSize);
    // A page holds all of a small definition: make it seem longer by what follows its end mark.
    Page page = pageOf(files, def.page);
    page.put32(8, 4096 + 300);
    page.put32(4, second);
    setPage(files, def.page, page);
    Page more;
    more.put8(0, kDefPage);
    more.put8(1, 1);
    setPage(files, second, more);
    setMap(files, 0x100, mapRow(files, 0x100).replace(5, 4, 4, '\0'));
    CHECK(readJetFile(files, kPath) == before);
    CHECK(checkJetFile(files, kPath) == "");
    page.put32(4, def.page); // leads in a circle
    setPage(files, def.page, page);
    CHECK_THROWS_AS(readJetFile(files, kPath), JetError);

    // Rows as the real engine compresses them.
    MemoryFiles packed = sound(0);
    {
        Engine engine(packed, kPath);
        const auto table = engine.table(engine.entry(L"A", jeterr::kTableMissing));
        Record record(8);
        record[0] = "\xFF\xFE"
                    "Song.wav";
        record[1] = "\xFF\xFE"
                    "T\xE9";
        table->insert(record);
    }
    const auto db = clsJetDatabase::openDatabase(kPath, packed);
    const auto set = db->openRecordset(L"A");
    set->setIndex(L"PrimaryKey");
    set->seek(L"=", L"SONG.WAV");
    REQUIRE_FALSE(set->noMatch());
    CHECK(set->field(L"Title") == L"T\u00E9");
}
