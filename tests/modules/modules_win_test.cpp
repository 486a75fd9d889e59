// The modules beside the program, loaded as an installation has them.
#include "base/handles.h"
#include "base/text.h"
#include "support/aolhost_win.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cstring>

using namespace velora;
using velora::test::AolHost;

namespace {

std::wstring besideTest(const wchar_t* file)
{
    return test::buildFolder() + L"\\" + file;
}

template <class Function>
Function function(const Library& library, const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library.get(), name)));
}

struct Launch32 {
    Library library{LoadLibraryW(besideTest(L"launch32.dll").c_str())};
    int(__stdcall* AOLGetVersion)(const char*, char*) =
        function<int(__stdcall*)(const char*, char*)>(library, "AOLGetVersion");
    int(__stdcall* AOLGetScreenName)(char*, int) =
        function<int(__stdcall*)(char*, int)>(library, "AOLGetScreenName");
};

/// The answer, asked for with a guarded buffer: what stands behind the three characters.
std::string version(const Launch32& launch32, const std::string& folder)
{
    char buffer[8];
    std::memset(buffer, '#', sizeof buffer);
    const int length = launch32.AOLGetVersion(folder.c_str(), buffer);
    CHECK(std::string(buffer + 3, 5) == "#####");
    CHECK(length == static_cast<int>(to1252(trim(from1252(std::string(buffer, 3)))).size()));
    return std::string(buffer, 3);
}

} // namespace

TEST_CASE("launch32 reads AOL's version into three characters")
{
    const Launch32 launch32;
    REQUIRE(bool(launch32.AOLGetVersion));
    for (int number = 3; number <= 7; ++number) {
        AolHost host({.version = number, .run = false});
        const std::string folder = to1252(host.folder());
        CHECK(version(launch32, folder) == std::to_string(number) + ".0");
        CHECK(version(launch32, folder + "\\") == std::to_string(number) + ".0");
        // Without waol.exe the answer is that of aol.exe; without both there is none.
        REQUIRE(DeleteFileW((host.folder() + L"\\waol.exe").c_str()));
        CHECK(version(launch32, folder) != "   ");
        REQUIRE(DeleteFileW((host.folder() + L"\\aol.exe").c_str()));
        CHECK(version(launch32, folder) == "   ");
    }
}

TEST_CASE("launch32 has no answer for what is no AOL folder")
{
    const Launch32 launch32;
    REQUIRE(bool(launch32.AOLGetVersion));
    for (const std::string& folder : {std::string(), std::string("C:\\no such folder"),
                                      std::string(5000, 'a'), std::string("\\\\?\\")})
        CHECK(version(launch32, folder) == "   ");
    char buffer[3] = {};
    CHECK(launch32.AOLGetVersion(nullptr, buffer) == 0);
    CHECK(launch32.AOLGetVersion("C:\\", nullptr) == 0);
}

TEST_CASE("launch32 names who is signed on, in a buffer of any size")
{
    const Launch32 launch32;
    REQUIRE(bool(launch32.AOLGetScreenName));
    char buffer[64];
    CHECK(launch32.AOLGetScreenName(buffer, sizeof buffer) == 0);
    for (const int edition : {0, 4, 5}) {
        AolHost host({.edition = edition});
        const std::string name = "Orv Tester";
        CHECK(launch32.AOLGetScreenName(buffer, sizeof buffer) == 10);
        CHECK(std::string(buffer) == name);
        for (int size = 0; size <= 12; ++size) {
            std::memset(buffer, '#', sizeof buffer);
            const int length = launch32.AOLGetScreenName(buffer, size);
            CHECK(length == std::max(0, std::min(size - 1, 10)));
            if (size > 0)
                CHECK(std::string(buffer) == name.substr(0, static_cast<std::size_t>(length)));
            CHECK(buffer[size] == '#');
        }
        host.command(L"signoff");
        CHECK(launch32.AOLGetScreenName(buffer, sizeof buffer) == 0);
    }
    CHECK(launch32.AOLGetScreenName(nullptr, 5) == 0);
}

TEST_CASE("every companion file loads, tells its purpose and can be registered")
{
    for (const wchar_t* file :
         {L"dworvspy.dll", L"dwspy5.dll", L"orvproxy.dll", L"orverr.dll", L"orvbtnx2.ocx",
          L"orvbarx2.ocx", L"dwsbc36.ocx", L"mscomctl.ocx"}) {
        CAPTURE(to1252(file));
        const Library library(LoadLibraryW(besideTest(file).c_str()));
        REQUIRE(library);
        const auto purpose = function<const wchar_t*(__stdcall*)()>(library, "CompanionPurpose");
        REQUIRE(bool(purpose));
        CHECK(std::wcslen(purpose()) > 10);
        for (const char* name : {"DllRegisterServer", "DllUnregisterServer"}) {
            const auto act = function<HRESULT(__stdcall*)()>(library, name);
            REQUIRE(bool(act));
            CHECK(act() == S_OK);
        }
        CHECK(FindResourceW(library.get(), MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(16)));
    }
}
