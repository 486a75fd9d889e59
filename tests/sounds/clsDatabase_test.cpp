// The description database over the embedded engine, on the disk.
#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "sounds/clsDatabase.h"
#include "sounds/clsMP3.h"
#include "support/dao_jet.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

using Names = std::vector<std::wstring>;
const Names kFirst = {L"AOL Directory", L"AOL Sounds", L"Windows Directory"};

struct Bench {
    TempDir temp;
    std::vector<std::wstring> said;
    /// Thrown by the next attempts to open or make the file.
    std::vector<long> refusals;
    clsDatabase db{joinPath(temp.path(), L"data"),
                   {[this] { return makeEngine(); },
                    [this](const std::wstring& prompt, int) { said.push_back(prompt); }}};

    std::unique_ptr<DaoEngine> makeEngine()
    {
        if (!refusals.empty() && refusals.front() == kCannotCreateObject)
            throw JetError(kCannotCreateObject, "none");
        struct Refusing final : DaoEngine {
            explicit Refusing(Bench& owner) : bench(owner) {}
            void refuse()
            {
                if (bench.refusals.empty())
                    return;
                const long number = bench.refusals.front();
                bench.refusals.erase(bench.refusals.begin());
                if (number)
                    throw JetError(number, "refused");
            }
            std::unique_ptr<DaoDatabase> createDatabase(const std::wstring& path,
                                                        std::wstring_view locale) override
            {
                refuse();
                return jet.createDatabase(path, locale);
            }
            std::unique_ptr<DaoDatabase> openDatabase(const std::wstring& path) override
            {
                refuse();
                return jet.openDatabase(path);
            }
            void repairDatabase(const std::wstring& path, const JetTable& usual) override
            {
                jet.repairDatabase(path, usual);
            }
            void compactDatabase(const std::wstring& from, const std::wstring& to) override
            {
                jet.compactDatabase(from, to);
            }
            Bench& bench;
            test::JetDao jet;
        };
        return std::make_unique<Refusing>(*this);
    }
    std::wstring file(const wchar_t* name)
    {
        return joinPath(joinPath(temp.path(), L"data"), name);
    }
    /// Of the database, open or not.
    std::uint64_t size()
    {
        for (const FileEntry& entry : listFolder(joinPath(temp.path(), L"data"), L".mdb"))
            return entry.size;
        return 0;
    }
    bool add(const wchar_t* table, const Description& record)
    {
        db.SetTable(table);
        db.SetRecord(record);
        return db.AddWavDescription();
    }
    /// The messages shown since the last call, one word of each.
    std::wstring told()
    {
        std::wstring all;
        for (const std::wstring& prompt : said)
            for (const wchar_t* part :
                 {L"Error #429", L"attempt repairs", L"successfully repaired", L"repair successful",
                  L"cannot repair", L"successfully compacted", L"engine error", L"Disk error"})
                if (prompt.find(part) != prompt.npos)
                    all += part + std::wstring(L"; ");
        said.clear();
        return all;
    }
};

} // namespace

TEST_CASE("a new database holds its three categories; records come back as they went in")
{
    Bench bench;
    REQUIRE(bench.db.Init());
    CHECK(bench.db.GetTables() == kFirst);
    CHECK(bench.db.DatabasePath() == bench.file(L"wav descriptions.mdb"));
    const Description hello{L"Hello.wav", L"Hi",         L"Orv",    L"Voices",
                            L"1999",      L"A greeting", L"Speech", L"PCM"};
    CHECK(bench.add(L"AOL Sounds", hello));
    CHECK_FALSE(bench.add(L"AOL Sounds", {L"HELLO.WAV", L"again"}));
    CHECK_FALSE(bench.add(L"AOL Sounds", {L"", L"nameless"}));
    CHECK_FALSE(bench.add(L"No such table", hello));

    bench.db.SetRecord({});
    REQUIRE(bench.db.IsMatch(L"hello.WAV"));
    CHECK(bench.db.Record() == hello);
    CHECK(bench.db.matchTable() == L"AOL Sounds");
    CHECK(bench.db.Compression() == L"PCM");
    CHECK_FALSE(bench.db.IsDescription(L"hello"));

    bench.db.SetTable(L"AOL Sounds");
    bench.db.SetRecord({L"hello.wav", L"Changed"});
    CHECK(bench.db.EditWavDescription());
    bench.db.SetRecord({L"hello.wav"});
    REQUIRE(bench.db.GetWavDescription());
    CHECK(bench.db.Title() == L"Changed");
    CHECK(bench.db.Comments() == L""); // stored as Null
    CHECK(bench.db.GetRecordCount(L"AOL Sounds") == 1);
    CHECK(bench.db.DeleteWavDescription());
    CHECK_FALSE(bench.db.DeleteWavDescription());
    CHECK_FALSE(bench.db.EditWavDescription());
    CHECK(bench.db.GetRecordCount(L"AOL Sounds") == 0);
}

TEST_CASE("a name held in two categories: the first in the database's order answers")
{
    Bench bench;
    REQUIRE(bench.db.Init());
    CHECK(bench.add(L"Windows Directory", {L"ding.wav", L"of Windows"}));
    CHECK(bench.add(L"AOL Sounds", {L"ding.wav", L"of AOL"}));
    REQUIRE(bench.db.IsMatch(L"ding.wav"));
    CHECK(bench.db.Title() == L"of AOL");
}

TEST_CASE("a table of another program's making hides no description and is reported once")
{
    static int reports;
    reports = 0;
    const ErrorSink former = setErrorSink([](const ErrorRecord&) noexcept { ++reports; });
    Bench bench;
    REQUIRE(bench.db.Init());
    CHECK(bench.add(L"AOL Sounds", {L"x.wav", L"X"}));
    bench.db.close();
    clsJetDatabase::openDatabase(bench.db.DatabasePath())->appendTable({L"AAA", {{L"Other"}}, {}});
    REQUIRE(bench.db.Init());
    for (int i = 0; i < 3; ++i)
        CHECK(bench.db.IsMatch(L"x.wav"));
    CHECK(reports == 1);
    setErrorSink(former);
}

TEST_CASE("categories are added, renamed and deleted; the engine's own are invisible")
{
    Bench bench;
    REQUIRE(bench.db.Init());
    CHECK(bench.db.AddTable(L"Mine"));
    CHECK_FALSE(bench.db.AddTable(L"mine"));
    CHECK_FALSE(bench.db.AddTable(L"MSysMine"));
    CHECK_FALSE(bench.db.AddTable(L"a.b"));
    CHECK(bench.add(L"Mine", {L"x.wav", L"X"}));
    CHECK_FALSE(bench.db.EditTable(L"Mine", L"AOL Sounds"));
    CHECK_FALSE(bench.db.EditTable(L"Mine", L"MSysMine"));
    CHECK(bench.db.EditTable(L"Mine", L"Ours"));
    REQUIRE(bench.db.IsMatch(L"x.wav"));
    CHECK(bench.db.matchTable() == L"Ours");
    CHECK_FALSE(bench.db.DeleteTable(L"MSysObjects"));
    CHECK(bench.db.DeleteTable(L"Ours"));
    CHECK_FALSE(bench.db.IsMatch(L"x.wav"));
    CHECK(bench.db.GetTables() == kFirst);
}

TEST_CASE("values are cut to their sizes, never in the middle of a character")
{
    Bench bench;
    REQUIRE(bench.db.Init());
    const std::wstring clef = fromUtf8("\xF0\x9D\x84\x9E"); // two units
    std::wstring clefs;
    for (int i = 0; i < 200; ++i)
        clefs += clef;
    const std::wstring longName(300, L'n');
    CHECK(bench.add(L"AOL Sounds", {longName, clefs, L"a", L"", L"19999", std::wstring(256, L'c'),
                                    std::wstring(101, L'g'), std::wstring(100, L'k')}));
    REQUIRE(bench.db.IsMatch(longName));
    CHECK(bench.db.FileName() == longName.substr(0, 255));
    CHECK(bench.db.Title() == clefs.substr(0, 127 * clef.size()));
    CHECK(bench.db.Year() == L"1999");
    CHECK(bench.db.Comments().size() == 255);
    CHECK(bench.db.Genre().size() == 100);
    CHECK(bench.db.Compression().size() == 100);
}

TEST_CASE("a record moves whole, and not onto another")
{
    Bench bench;
    REQUIRE(bench.db.Init());
    CHECK(bench.add(L"AOL Sounds", {L"a.wav", L"A", L"Orv"}));
    CHECK_FALSE(bench.db.TransferRecord(L"a.wav", L"AOL Sounds", L"aol sounds"));
    CHECK(bench.db.TransferRecord(L"a.wav", L"AOL Sounds", L"Windows Directory"));
    CHECK_FALSE(bench.db.TransferRecord(L"a.wav", L"AOL Sounds", L"Windows Directory"));
    REQUIRE(bench.db.IsMatch(L"a.wav"));
    CHECK(bench.db.matchTable() == L"Windows Directory");
    CHECK(bench.db.Artist() == L"Orv");
    CHECK(bench.add(L"AOL Sounds", {L"A.WAV", L"another"}));
    CHECK_FALSE(bench.db.TransferRecord(L"a.wav", L"Windows Directory", L"AOL Sounds"));
    CHECK(bench.db.GetRecordCount(L"AOL Sounds") == 1);
    CHECK(bench.db.GetRecordCount(L"Windows Directory") == 1);
}

TEST_CASE("the records of a category in the order of their names, those that hold the term")
{
    Bench bench;
    REQUIRE(bench.db.Init());
    CHECK(bench.add(L"AOL Sounds", {L"b.wav", L"Bell"}));
    CHECK(bench.add(L"AOL Sounds", {L"a.wav", L"", L"", L"", L"", L"rings a BELL"}));
    CHECK(bench.add(L"AOL Sounds", {L"c.wav", L"Cow"}));
    CHECK(bench.db.GetRecords().size() == 3);
    bench.db.SetTerm(L"bell");
    const auto found = bench.db.GetRecords();
    REQUIRE(found.size() == 2);
    CHECK(found[0].fileName == L"a.wav");
    CHECK(found[1].title == L"Bell");
}

TEST_CASE("a folder fills a category from the tags; what is there stays; it can be stopped")
{
    Bench bench;
    REQUIRE(bench.db.Init());
    const std::wstring folder = bench.temp.folder(L"sounds");
    clsMP3 tag;
    tag.SetTitle(L"A title");
    tag.SetYear(L"2001");
    tag.SetGenre(8);
    replaceFile(joinPath(folder, L"one.wav"), std::string(300, 'x'));
    tag.SaveTag(joinPath(folder, L"one.wav"));
    replaceFile(joinPath(folder, L"TWO.MP3"), std::string(300, 'x')); // no tag
    replaceFile(joinPath(folder, L"three.mid"), "short");
    replaceFile(joinPath(folder, L"old.wav.bak"), "holds .wav");
    replaceFile(joinPath(folder, L"readme.txt"), "no sound");
    makeFolder(joinPath(folder, L"folder.wav"));
    CHECK(bench.add(L"AOL Sounds", {L"two.mp3", L"mine"}));

    bench.db.SetTable(L"AOL Sounds");
    std::size_t last = 0;
    const auto filled = bench.db.GetWavs(folder, [&](std::size_t done, std::size_t all) {
        CHECK(all == 4);
        CHECK(done == ++last);
        return true;
    });
    CHECK(filled.files == 4);
    CHECK(filled.added == 3);
    CHECK(filled.present == 1);
    CHECK(filled.whole);
    REQUIRE(bench.db.IsMatch(L"one.wav"));
    CHECK(bench.db.Title() == L"A title");
    CHECK(bench.db.Year() == L"2001");
    CHECK(bench.db.Genre() == L"Jazz");
    REQUIRE(bench.db.IsMatch(L"two.mp3"));
    CHECK(bench.db.Title() == L"mine");
    REQUIRE(bench.db.IsMatch(L"three.mid"));
    CHECK(bench.db.Genre() == L"");

    bench.db.SetTable(L"Windows Directory");
    const auto stopped =
        bench.db.GetWavs(folder, [](std::size_t done, std::size_t) { return done < 2; });
    CHECK_FALSE(stopped.whole);
    CHECK(stopped.added == 2);
    CHECK(bench.db.GetRecordCount(L"Windows Directory") == 2);
}

TEST_CASE("Init: what each error of the engine leads to")
{
    const struct {
        std::vector<long> refusals;
        const wchar_t* told;
        bool open;
    } cases[] = {
        {{}, L"", true},
        {{429}, L"Error #429; ", false},
        {{3043}, L"Disk error; ", false},
        {{3045}, L"engine error; ", false},
        {{3049}, L"attempt repairs; successfully repaired; repair successful; ", true},
        // It opens no better after the repair: put aside, made anew.
        {{3049, 3049}, L"attempt repairs; cannot repair; ", true},
        {{3049, 3049, 3043}, L"attempt repairs; cannot repair; engine error; ", false},
    };
    for (const auto& c : cases) {
        CAPTURE(c.told);
        Bench bench;
        REQUIRE(bench.db.Init());
        CHECK(bench.add(L"AOL Sounds", {L"kept.wav", L"K"}));
        bench.db.close();
        clsDatabase again(joinPath(bench.temp.path(), L"data"),
                          {[&] { return bench.makeEngine(); },
                           [&](const std::wstring& prompt, int) { bench.said.push_back(prompt); }});
        bench.refusals = c.refusals;
        CHECK(again.Init() == c.open);
        CHECK(bench.told() == c.told);
        CHECK(again.isOpen() == c.open);
        const bool aside = fileExists(bench.file(L"wav description.bad"));
        CHECK(again.IsMatch(L"kept.wav") == (c.open && !aside));
        if (c.open)
            CHECK(again.GetTables() == kFirst);
    }
}

TEST_CASE("a damaged file is repaired with its records; one that is no database is put aside")
{
    Bench bench;
    REQUIRE(bench.db.Init());
    CHECK(bench.add(L"AOL Sounds", {L"kept.wav", L"K"}));
    bench.db.close();
    const std::wstring path = bench.db.DatabasePath();
    std::string bytes = readFile(path).value();
    bytes.replace(2 * 4096, 4096, std::string(4096, '\x5a')); // the catalogue's definition
    replaceFile(path, bytes);
    REQUIRE(bench.db.Init());
    CHECK(bench.told() == L"attempt repairs; successfully repaired; repair successful; ");
    CHECK(bench.db.IsMatch(L"kept.wav"));
    bench.db.close();

    replaceFile(path, "this is no database");
    REQUIRE(bench.db.Init());
    CHECK(bench.told() == L"attempt repairs; cannot repair; ");
    CHECK(readFile(bench.file(L"wav description.bad")) == "this is no database");
    CHECK(bench.db.GetTables() == kFirst);
}

TEST_CASE("Compact keeps the records; three former states of the file are kept")
{
    Bench bench;
    REQUIRE(bench.db.Init());
    for (int i = 0; i < 300; ++i)
        CHECK(bench.add(L"AOL Sounds", {std::to_wstring(i), std::wstring(200, L't')}));
    for (int i = 1; i < 300; ++i) {
        bench.db.SetFileName(std::to_wstring(i));
        CHECK(bench.db.DeleteWavDescription());
    }
    const auto before = bench.size();
    CHECK(bench.db.Compact());
    CHECK(bench.told() == L"successfully compacted; ");
    CHECK(bench.size() < before / 2);
    CHECK_FALSE(fileExists(bench.file(L"wav descriptions.tmp")));
    CHECK(bench.db.IsMatch(L"0"));
    CHECK(bench.db.GetRecordCount(L"AOL Sounds") == 1);

    const std::wstring path = bench.db.DatabasePath();
    std::vector<std::string> states;
    for (int run = 0; run < 5; ++run) {
        bench.db.close();
        states.push_back(readFile(path).value());
        REQUIRE(bench.db.Init());
        CHECK(bench.add(L"AOL Directory", {std::to_wstring(run), L"r"}));
    }
    for (int copy = 1; copy <= 3; ++copy)
        CHECK(readFile(path + L"." + std::to_wstring(copy)) == states[5 - copy]);
    CHECK_FALSE(fileExists(path + L".4"));
}

TEST_CASE("a closed database answers nothing and throws nothing")
{
    Bench bench;
    CHECK_FALSE(bench.db.IsMatch(L"a.wav"));
    CHECK(bench.db.GetTables().empty());
    CHECK_FALSE(bench.db.AddTable(L"Mine"));
    CHECK(bench.db.GetRecords().empty());
    CHECK_FALSE(bench.db.AddRecords({{L"a.wav"}}).whole);
}
