#include "sounds/modWavLookup.h"

#include "base/files.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>
#include <set>

using namespace velora;

namespace {

struct Library {
    TempDir dir;
    clsFavourites favourites{dir.file(L"favwavs.dat")};
    std::set<std::wstring> files;
    std::vector<std::wstring> asked;

    std::wstring path(std::wstring_view name)
    {
        return GetWavPath(name, favourites, {L"C:\\AOL\\sounds", L""},
                          [this](const std::wstring& file) {
                              asked.push_back(file);
                              return files.contains(file);
                          });
    }
};

} // namespace

TEST_CASE("a name is found in the favourites first, then in AOL's sounds")
{
    Library library;
    library.files = {L"C:\\AOL\\sounds\\hello.wav", L"C:\\AOL\\sounds\\tune.mid",
                     L"D:\\mine\\hello.mp3"};
    CHECK(library.path(L"hello") == L"C:\\AOL\\sounds\\hello.wav");
    CHECK(library.path(L"tune") == L"C:\\AOL\\sounds\\tune.mid");
    CHECK(library.path(L"none").empty());

    // The list is read anew once it has changed; a file that is gone is passed over.
    replaceFile(library.favourites.listFile(),
                "Hello\tD:\\gone.wav\r\nHELLO\tD:\\mine\\hello.mp3\r\nhello\tD:\\notes.txt\r\n");
    CHECK(library.path(L"hello") == L"D:\\mine\\hello.mp3");
    CHECK(library.path(L"HeLLo") == L"D:\\mine\\hello.mp3");
}

TEST_CASE("a hostile name asks for no file at all")
{
    Library library;
    replaceFile(library.favourites.listFile(), "..\\x\tC:\\x.wav\r\nCON\tC:\\x.wav\r\n");
    library.files = {L"C:\\x.wav"};
    for (const wchar_t* name : {L"..\\x", L"CON", L"C:\\x", L"a/b", L"\\\\host\\share\\x",
                                L"x.wav:stream", L"x ", L"", L"x\" alias y"}) {
        CAPTURE(name);
        CHECK(library.path(name).empty());
    }
    CHECK(library.path(std::wstring(10000, L'x')).empty());
    CHECK(library.asked.empty());
}

TEST_CASE("an entry that leads to another machine or to no drive is not followed")
{
    Library library;
    replaceFile(library.favourites.listFile(), "a\t\\\\host\\share\\a.wav\r\n"
                                               "a\t//host/share/a.wav\r\n"
                                               "a\t\\\\?\\C:\\a.wav\r\n"
                                               "a\t\\\\.\\pipe\\a.wav\r\n"
                                               "a\t..\\a.wav\r\n"
                                               "a\tC:a.wav\r\n");
    CHECK(library.path(L"a").empty());
    for (const std::wstring& asked : library.asked)
        CHECK(asked.starts_with(L"C:\\AOL\\sounds\\"));
    CHECK(isDrivePath(L"z:\\x.wav"));
    CHECK_FALSE(isDrivePath(L"1:\\x.wav"));
    CHECK_FALSE(isDrivePath(L""));
}
