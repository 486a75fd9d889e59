#include "base/files.h"
#include "core/modCrash.h"
#include "support/install_win.h"

#include <doctest/doctest.h>

#include <cstdlib>
#include <stdexcept>

using namespace velora;
using namespace velora::test;

namespace {

std::wstring g_folder;

void giveBack() noexcept
{
    const HANDLE file = CreateFileW((g_folder + L"\\given back").c_str(), GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, 0, nullptr);
    CloseHandle(file);
}

/// What the child cases below run in.
void prepareChild()
{
    wchar_t folder[MAX_PATH];
    g_folder.assign(folder, GetEnvironmentVariableW(L"VELORA_TEST_FOLDER", folder, MAX_PATH));
    REQUIRE_FALSE(g_folder.empty());
    installCrashHandler(g_folder, giveBack);
}

DWORD runChild(const std::wstring& name, const std::wstring& folder)
{
    SetEnvironmentVariableW(L"VELORA_TEST_FOLDER", folder.c_str());
    const Process child(buildFolder() + L"\\velora_tests.exe",
                        L"--no-skip --test-case=\"" + name + L"\"");
    REQUIRE(child.ended());
    return child.exitCode();
}

[[gnu::noinline]] void writeNowhere()
{
    // Volatile, so that the compiler does not see where it goes.
    int* volatile nowhere = reinterpret_cast<int*>(0x10);
    *nowhere = 1;
}

[[gnu::noinline]] void fail()
{
    throw std::runtime_error("leaves a noexcept");
}
void throwOut() noexcept
{
    fail();
}

} // namespace

TEST_CASE("child: writes nowhere" * doctest::skip())
{
    prepareChild();
    writeNowhere();
}

TEST_CASE("child: throws out of a noexcept" * doctest::skip())
{
    prepareChild();
    throwOut();
}

TEST_CASE("a crash leaves a report, gives AOL's windows back and ends the process")
{
    const TempDir temp;
    CHECK(runChild(L"child: writes nowhere", temp.path()) == EXCEPTION_ACCESS_VIOLATION);
    const std::string report = readFile(temp.file(L"velora-crash.txt")).value_or("");
    CHECK(report.find("exception 0xC0000005 at\r\n  velora_tests.exe+0x") != std::string::npos);
    CHECK(report.find("writing 0x00000010") != std::string::npos);
    const auto stack = report.find("stack:\r\n");
    REQUIRE(stack != std::string::npos);
    CHECK(report.find("  velora_tests.exe+0x", stack) < report.find("modules:", stack));
    CHECK(fileExists(temp.file(L"given back")));

    CHECK(runChild(L"child: throws out of a noexcept", temp.path()) == 0xE0000001);
    CHECK(readFile(temp.file(L"velora-crash.txt")).value_or("").find("exception 0xE0000001")
          != std::string::npos);
    CHECK(readFile(temp.file(L"velora-crash.txt.1")) == report);
}
