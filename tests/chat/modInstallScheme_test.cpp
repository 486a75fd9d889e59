#include "base/files.h"
#include "base/text.h"
#include "chat/modInstallScheme.h"
#include "chat/modSchemeFiles.h"
#include "settings/Options.h"
#include "support/memory_store.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {
struct Fixture : StoreScope {
    TempDir temp;
    const std::wstring program = temp.folder(L"program");

    bool install(const wchar_t* name, const std::string& content)
    {
        const std::wstring file = temp.file(name);
        replaceFile(file, content);
        return InstallScheme(file, program);
    }
};
const std::string kOlder = "FadeNumber=3\r\ncolor0=255\r\ncolor1=65280\r\nitalics=True\r\n";
} // namespace

TEST_CASE_FIXTURE(Fixture, "a scheme file goes into the settings and the scheme folder")
{
    CHECK(install(L"Sun set.FDE", kOlder));
    const auto& section = store->data[L"Fader\\Schemes\\Sun set"];
    CHECK(section.size() == 15);
    CHECK(section.at(L"FadeNumber") == RegValue(std::int32_t{3}));
    CHECK(section.at(L"One") == RegValue(std::int32_t{255}));
    CHECK(section.at(L"Two") == RegValue(std::int32_t{65280}));
    CHECK(section.at(L"Ten") == RegValue(std::int32_t{0}));
    CHECK(section.at(L"Italic") == RegValue(true));
    CHECK(section.at(L"Bold") == RegValue(false));
    CHECK(clsSchemes(program).load(L"Sun set").value_or(FadeScheme()).fade.FadeNumber == 3);
}

TEST_CASE_FIXTURE(Fixture, "what is no scheme is refused and nothing is written")
{
    CHECK_FALSE(InstallScheme(temp.file(L"missing.fde"), program));
    CHECK_FALSE(InstallScheme(L"-silent", program));
    CHECK_FALSE(InstallScheme(L"", program));
    CHECK_FALSE(install(L"empty.fde", ""));
    CHECK_FALSE(install(L"junk.fde", std::string("\0\xFF=\r\nfadenumber=x\r\n", 19)));
    CHECK_FALSE(install(L"big.fde", kOlder + std::string(2u << 20, ' ')));
    CHECK(store->data.empty());
    CHECK(listFolder(program).empty());
}

TEST_CASE_FIXTURE(Fixture, "a scheme folder that cannot be made does not fail the installation")
{
    replaceFile(temp.file(L"a.fde"), kOlder);
    replaceFile(temp.file(L"file"), "");
    CHECK(InstallScheme(temp.file(L"a.fde"), temp.file(L"file")));
    CHECK(store->data.size() == 1);
}

TEST_CASE_FIXTURE(Fixture, "settings that cannot be written fail it")
{
    store->denied = true;
    CHECK_FALSE(install(L"a.fde", kOlder));
}
