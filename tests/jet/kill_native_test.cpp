// A real writer, really killed, 200 times at random moments.
#include "base/files.h"
#include "base/random.h"
#include "support/jet_check.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

#include <csignal>
#include <cstdio>
#include <sys/wait.h>
#include <unistd.h>

using namespace velora;

namespace {

/// Changes the database for ever: pairs of records that are only ever written together, and tables.
[[noreturn]] void write(const std::wstring& path, std::uint64_t seed)
{
    try {
        SystemRandom random(seed);
        const auto db = clsJetDatabase::openDatabase(path);
        const auto set = db->openRecordset(L"Pairs");
        set->setIndex(L"PrimaryKey");
        for (;;) {
            const std::wstring name = std::to_wstring(static_cast<int>(random.rnd() * 300));
            db->beginTrans();
            for (const wchar_t* half : {L"left ", L"right "}) {
                set->seek(L"=", half + name);
                if (set->noMatch()) {
                    set->addNew();
                    set->setField(L"Filename", half + name);
                    set->setField(L"Comments", std::wstring(200, L'c'));
                    set->update();
                } else {
                    set->deleteRecord();
                }
            }
            db->commitTrans();
            if (random.rnd() < 0.1) {
                if (db->hasTable(L"Sometimes"))
                    db->deleteTable(L"Sometimes");
                else
                    db->appendTable(descriptionTable(L"Sometimes"));
            }
        }
    } catch (const JetError& error) {
        std::fprintf(stderr, "the writer failed: %ld %s\n", error.number(), error.what());
    }
    _exit(1);
}

} // namespace

TEST_CASE("200 kills at random moments never leave a file that is not whole")
{
    const TempDir dir;
    const std::wstring path = dir.file(L"killed.mdb");
    clsJetDatabase::createDatabase(path, kJetLocaleGeneral)
        ->appendTable(descriptionTable(L"Pairs"));
    SystemRandom random(3);
    int withJournal = 0;
    std::size_t most = 0;
    for (int kill = 0; kill < 200; ++kill) {
        CAPTURE(kill);
        const pid_t child = fork();
        REQUIRE(child >= 0);
        if (child == 0)
            write(path, static_cast<std::uint64_t>(kill) + 1);
        usleep(static_cast<useconds_t>(500 + random.rnd() * 15000));
        REQUIRE(::kill(child, SIGKILL) == 0);
        int status = 0;
        REQUIRE(waitpid(child, &status, 0) == child);
        REQUIRE(WIFSIGNALED(status));
        withJournal += fileExists(path + L".jrn");
        REQUIRE(checkJetFile(systemJetFiles(), path) == "");
        const JetContent content = readJetFile(systemJetFiles(), path);
        const auto& pairs = content.at(L"Pairs");
        most = std::max(most, pairs.size());
        std::map<std::wstring, int> halves;
        for (const auto& record : pairs)
            ++halves[record[0]->substr(record[0]->find(L' '))];
        for (const auto& [name, count] : halves)
            REQUIRE(count == 2);
    }
    // The writer must have been in the middle of something, and have done something.
    CHECK(withJournal > 20);
    CHECK(most > 10);
}
