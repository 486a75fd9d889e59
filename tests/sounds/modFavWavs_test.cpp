#include "sounds/modFavWavs.h"

#include "base/files.h"
#include "base/text.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("a list file's lines")
{
    const auto entries = parseListFile(L"Hello\tC:\\s\\Hello.WAV\r\n"
                                       L"no tab here\r\n"
                                       L"\r\n"
                                       L"Tune\tC:\\my.wav files\\tune.mid\n"
                                       L"two\tC:\\x.mp3\tmore\r\n"
                                       L"odd\tC:\\x.txt\r\n"
                                       L"\tC:\\nameless.wav",
                                       false);
    REQUIRE(entries.size() == 5);
    CHECK(entries[0].name == L"hello");
    CHECK(entries[0].path == L"C:\\s\\Hello.WAV");
    CHECK(entries[0].kind == SoundKind::wav);
    // The path is asked for ".wav" first, wherever it stands.
    CHECK(entries[1].kind == SoundKind::wav);
    CHECK(entries[2].path == L"C:\\x.mp3\tmore");
    CHECK(entries[2].kind == SoundKind::mp3);
    CHECK_FALSE(entries[3].kind);
    CHECK(entries[4].name == L"");
    CHECK(parseListFile(L"Hello\tC:\\Hello.wav", true)[0].name == L"Hello");
}

TEST_CASE("edits leave the other lines as they stand")
{
    const std::wstring text = L"Keep ME\tC:\\Keep.wav\n; a note of the user\r\nx\tC:\\x.wav";
    const auto added = addListEntry(text, L"new", L"C:\\new.mid");
    REQUIRE(added);
    CHECK(*added == text + L"\r\nnew\tC:\\new.mid\r\n");
    CHECK(removeListEntry(*added, L"c:\\NEW.MID") == text + L"\r\n");
    CHECK(removeListEntry(text, L"C:\\x.wav")
          == L"Keep ME\tC:\\Keep.wav\n; a note of the user\r\n");
    CHECK(removeListEntry(text, L"C:\\none.wav") == text);
    CHECK(removeListEntry(L"a\tp\rb\tp\r\nc\tp\n\nd", L"p") == L"\nd");

    for (const wchar_t* bad : {L"a\tb", L"a\r\nb", L"", L"a\x01"}) {
        CHECK_FALSE(addListEntry(text, bad, L"C:\\new.mid"));
        CHECK_FALSE(addListEntry(text, L"new", bad));
    }
}

TEST_CASE("the favourites file on the disk")
{
    const TempDir dir;
    const std::wstring list = dir.file(L"favwavs.dat");
    CHECK(readListFile(list, false).empty());
    CHECK(AddFavWav(list, L"Caf\u00e9", L"C:\\Caf\u00e9.wav"));
    CHECK(readFile(list) == "Caf\xe9\tC:\\Caf\xe9.wav\r\n");
    CHECK_FALSE(AddFavWav(list, L"again", L"c:\\caf\u00c9.WAV"));
    // What Windows-1252 lacks is kept all the same.
    CHECK(AddFavWav(list, L"\u0416", L"C:\\\u0416.wav"));
    const auto entries = readListFile(list, true);
    REQUIRE(entries.size() == 2);
    CHECK(entries[1].path == L"C:\\\u0416.wav");
    CHECK(fileExists(list + L".1"));

    CHECK(DelFavWav(list, L"C:\\\u0416.wav"));
    CHECK_FALSE(DelFavWav(list, L"C:\\\u0416.wav"));
    CHECK(readFile(list) == "Caf\xe9\tC:\\Caf\xe9.wav\r\n");
}

TEST_CASE("a list that cannot be read is never written over")
{
    const TempDir dir;
    const std::wstring list = dir.file(L"favwavs.dat");
    const std::string large((16u << 20) + 1, 'x');
    replaceFile(list, large);
    CHECK(readListFile(list, false).empty());
    CHECK_FALSE(AddFavWav(list, L"a", L"C:\\a.wav"));
    CHECK(readFile(list)->size() == large.size());
}
