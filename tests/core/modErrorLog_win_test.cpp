#include "base/files.h"
#include "base/text.h"
#include "core/modErrorLog.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

#include <algorithm>

using namespace velora;

namespace {

struct Log {
    TempDir temp;
    ~Log() { closeErrorLog(); }
    std::string text(const wchar_t* name = L"velora.log") const
    {
        return readFile(errorLogFolder() + L"\\" + name).value_or("");
    }
};

auto linesIn(const std::string& text)
{
    return std::count(text.begin(), text.end(), '\n');
}

} // namespace

TEST_CASE_FIXTURE(Log, "five failures are five lines with module and procedure")
{
    openErrorLog(temp.path());
    CHECK(errorLogFolder() == temp.path());
    for (int i = 0; i < 5; ++i)
        trap(
            "modTest", [] { throw Error("it broke", 5); }, "Break");
    CHECK(linesIn(text()) == 5);
    CHECK(text().find("\tmodTest\tBreak\t5\tit broke\r\n") != std::string::npos);
}

TEST_CASE_FIXTURE(Log, "the log is put aside when it is full, and three files are kept")
{
    openErrorLog(temp.path());
    const std::string filler(kErrorLogSize - 10, 'x');
    for (const char* reason : {"first", "second", "third", "fourth"}) {
        replaceFile(temp.file(L"velora.log"), filler + reason);
        reportError("m", "p", reason);
    }
    CHECK(linesIn(text()) == 1);
    CHECK(text().find("\tfourth\r\n") != std::string::npos);
    CHECK(text(L"velora.log.1").ends_with("fourth"));
    CHECK(text(L"velora.log.2").ends_with("third"));
    CHECK(listFolder(temp.path()).size() == 3);
}

TEST_CASE_FIXTURE(Log, "a program folder that cannot be written is made up for by the user's own")
{
    const std::wstring missing = temp.path() + L"\\not there";
    openErrorLog(missing);
    REQUIRE(errorLogFolder() != missing);
    CHECK(errorLogFolder().ends_with(L"\\Velora"));
    const auto before = linesIn(text());
    reportError("m", "p", "elsewhere");
    CHECK(linesIn(text()) == before + 1);
}
