#include "sounds/modWavLookup.h"

#include "base/files.h"
#include "base/text.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>
#include <set>

using namespace velora;

namespace {

#ifdef _WIN32
constexpr wchar_t kDrive[] = L"C:\\";
#else
constexpr wchar_t kDrive[] = L"/";
#endif

std::wstring onDrive(std::wstring_view folder, std::wstring_view file = {})
{
    const std::wstring path = kDrive + std::wstring(folder);
    return file.empty() ? path : joinPath(path, file);
}

/// AOL's sounds, favourites, a category that is a folder and one that is a group.
struct Library {
    TempDir dir;
    std::wstring favourites = dir.file(L"favwavs.dat"), group = dir.file(L"group.dat");
    std::vector<WavSource> sources = {{L"FavWavs", favourites, true},
                                      {L"AOL Sounds", onDrive(L"sounds")},
                                      {L"no folder", L""},
                                      {L"other machine", L"\\\\host\\share"},
                                      {L"mine", onDrive(L"mine")},
                                      {L"group", group, true}};
    clsListFiles lists;
    std::set<std::wstring> files;
    std::vector<std::wstring> asked;

    std::wstring path(std::wstring_view name)
    {
        return GetWavPath(name, sources, lists, [this](const std::wstring& file) {
            asked.push_back(file);
            return files.contains(file);
        });
    }
};

} // namespace

TEST_CASE("a name is found in the favourites first, then in AOL's sounds, then in the categories")
{
    Library library;
    const std::wstring own = onDrive(L"own", L"hello.mp3");
    library.files = {onDrive(L"sounds", L"hello.wav"), onDrive(L"sounds", L"tune.mid"),
                     onDrive(L"mine", L"tune.wav"), onDrive(L"mine", L"third.mp3"), own};
    CHECK(library.path(L"hello") == onDrive(L"sounds", L"hello.wav"));
    CHECK(library.path(L"tune") == onDrive(L"sounds", L"tune.mid"));
    CHECK(library.path(L"third") == onDrive(L"mine", L"third.mp3"));
    CHECK(library.path(L"grouped").empty());
    replaceFile(library.group, toUtf8(L"Grouped\t" + own));
    CHECK(library.path(L"grouped") == own);

    // The list is read anew once it has changed; a file that is gone is passed over.
    replaceFile(library.favourites, toUtf8(L"Hello\t" + onDrive(L"gone.wav") + L"\r\nHELLO\t" + own
                                           + L"\r\nhello\t" + onDrive(L"notes.txt") + L"\r\n"));
    CHECK(library.path(L"HeLLo") == own);
    for (const std::wstring& asked : library.asked)
        CHECK(asked.find(L"host") == std::wstring::npos);
}

TEST_CASE("a hostile name asks for no file at all")
{
    Library library;
    replaceFile(library.favourites, "..\\x\tC:\\x.wav\r\nCON\tC:\\x.wav\r\n");
    library.files = {L"C:\\x.wav"};
    for (const wchar_t* name : {L"..\\x", L"CON", L"C:\\x", L"a/b", L"\\\\host\\share\\x",
                                L"x.wav:stream", L"x ", L"", L"x\" alias y"}) {
        CAPTURE(name);
        CHECK(library.path(name).empty());
    }
    CHECK(library.path(std::wstring(10000, L'x')).empty());
    CHECK(library.asked.empty());
}

TEST_CASE("a list entry that is no plain sound on a drive is not followed")
{
    Library library;
    std::wstring list;
    for (const wchar_t* path :
         {L"\\\\host\\share\\a.wav", L"//host/share/a.wav", L"\\\\?\\C:\\a.wav",
          L"\\\\.\\pipe\\a.wav", L"..\\a.wav", L"C:a.wav", L"C:\\x\\..\\a.wav", L"/x/../a.wav",
          L"C:\\CON.wav", L"/CON.wav", L"C:\\a.wav:s.wav", L"C:\\a.wav.exe", L"C:\\a\"b.wav",
          L"1:\\a.wav", L""}) {
        CHECK_FALSE(isLibraryPath(path));
        list.append(L"a\t").append(path).append(L"\r\n");
    }
    replaceFile(library.favourites, toUtf8(list));
    CHECK(library.path(L"a").empty());
    for (const std::wstring& asked : library.asked)
        CHECK((asked.starts_with(onDrive(L"sounds")) || asked.starts_with(onDrive(L"mine"))));
    for (const wchar_t* file : {L"a.wav.exe", L"wav", L"a.wav ", L"CON.wav"})
        CHECK_FALSE(isLibraryPath(onDrive(L"mine", file)));
    CHECK(isLibraryPath(onDrive(L"my sounds", L"x.Wav")));
    CHECK(isDriveFolder(kDrive + std::wstring(L"x")));
    CHECK_FALSE(isDriveFolder(L"\\\\host\\share"));
}
