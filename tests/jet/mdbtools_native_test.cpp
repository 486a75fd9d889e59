// Debian's mdbtools, which know the format independently, read what the engine writes.
#include "base/files.h"
#include "base/text.h"
#include "support/jet_stress.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstdio>

using namespace velora;

namespace {

/// What a command prints. It has to succeed, and to say nothing on the side.
std::string output(const TempDir& dir, const std::string& command)
{
    const std::wstring side = dir.file(L"stderr");
    const std::string line = command + " 2>" + toUtf8(side);
    std::FILE* pipe = popen(line.c_str(), "r");
    REQUIRE(pipe);
    std::string text;
    char block[4096];
    for (std::size_t got; (got = std::fread(block, 1, sizeof block, pipe)) > 0;)
        text.append(block, got);
    const int status = pclose(pipe);
    CAPTURE(command);
    REQUIRE(readFile(side).value_or("?") == "");
    REQUIRE(status == 0);
    return text;
}

void needTools()
{
    for (const char* tool : {"mdb-tables", "mdb-schema", "mdb-export", "mdb-sql"})
        REQUIRE_MESSAGE(std::system((std::string("command -v ") + tool + " >/dev/null").c_str())
                            == 0,
                        tool << " is missing: run script/bootstrap");
}

std::vector<std::string> lines(const std::string& text)
{
    std::vector<std::string> all;
    std::size_t at = 0;
    for (std::size_t end; (end = text.find('\n', at)) != std::string::npos; at = end + 1)
        all.push_back(text.substr(at, end - at));
    return all;
}

std::string quoted(const std::wstring& text)
{
    std::string safe = "'";
    for (const char c : toUtf8(text))
        safe += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return safe + "'";
}

std::vector<std::string> exported(const std::map<std::string, StressRecord>& records)
{
    std::vector<std::string> rows;
    for (const auto& [key, record] : records) {
        const std::string title = toUtf8(record.title), comments = toUtf8(record.comments);
        rows.push_back(toUtf8(record.name) + "\t" + title + "\t" + title + "\t" + comments + "\t\t"
                       + comments + "\t\t");
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void checkWithTools(Stress& stress)
{
    const TempDir dir;
    const std::wstring path = dir.file(L"checked.mdb");
    replaceFile(path, *stress.files().files.at(kStressPath));
    const std::string file = quoted(path);

    std::vector<std::string> names;
    for (const auto& [name, records] : stress.model())
        names.push_back(toUtf8(name));
    std::vector<std::string> listed = lines(output(dir, "mdb-tables -1 " + file));
    std::sort(names.begin(), names.end());
    std::sort(listed.begin(), listed.end());
    CHECK(listed == names);

    const std::string schema =
        output(dir, "mdb-schema --indexes --not-empty --no-relations " + file + " postgres");
    const auto count = [&](const std::string& what) {
        std::size_t found = 0;
        for (std::size_t at = 0; (at = schema.find(what, at)) != std::string::npos; ++at)
            ++found;
        return found;
    };
    CHECK(count("CREATE TABLE IF") == names.size());
    CHECK(count("\"compression type\"\t") == names.size());
    CHECK(count("PRIMARY KEY (\"filename\")") == names.size());
    // Zero-length values are not allowed in any of the eight fields.
    CHECK(count("CHECK (") == 8 * names.size());

    for (const auto& [name, records] : stress.model()) {
        CAPTURE(toUtf8(name));
        auto rows = lines(
            output(dir, "mdb-export -H -Q -d \"$(printf '\\t')\" " + file + " " + quoted(name)));
        std::sort(rows.begin(), rows.end());
        CHECK(rows == exported(records));
        const auto counted =
            lines(output(dir, "echo " + quoted(L"select count(*) from [" + name + L"]")
                                  + " | mdb-sql -HFP " + file));
        REQUIRE_FALSE(counted.empty());
        CHECK(counted.back() == std::to_string(records.size()));
    }
}

} // namespace

TEST_CASE("mdbtools read a file after many random operations")
{
    needTools();
    for (const int operations : {1500, 10000}) {
        Stress stress(20, 24, 60);
        stress.run(operations);
        checkWithTools(stress);
    }
}

TEST_CASE("mdbtools read long names, many pages, and a compacted and a repaired file")
{
    needTools();
    Stress stress(7, 250, 255);
    stress.run(5000);
    checkWithTools(stress);
    clsJetDatabase::compactDatabase(kStressPath, L"small.mdb", stress.files());
    stress.files().files[kStressPath] = stress.files().files[L"small.mdb"];
    checkWithTools(stress);
    clsJetDatabase::repairDatabase(kStressPath, stress.files());
    checkWithTools(stress);
}
