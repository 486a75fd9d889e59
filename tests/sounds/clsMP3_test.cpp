#include "sounds/clsMP3.h"

#include "base/files.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

std::string noise(std::size_t n)
{
    std::string bytes(n, '\0');
    for (std::size_t i = 0; i < n; ++i)
        bytes[i] = static_cast<char>(i * 37 + i / 251);
    return bytes;
}

std::string content(const std::wstring& path)
{
    return readFile(path).value_or("(missing)");
}

clsMP3 filled()
{
    clsMP3 tag;
    tag.SetTitle(L"Caf\u00E9");
    tag.SetArtist(std::wstring(40, L'a'));
    tag.SetYear(L"19");
    tag.SetGenre(24);
    return tag;
}

} // namespace

TEST_CASE("genres: names, numbers and the table's own spellings")
{
    CHECK(clsMP3::GetGenreByte(L"") == 12);
    CHECK(clsMP3::GetGenreByte(L"  ") == 12);
    CHECK(clsMP3::GetGenreByte(L"Psychedelic") == 0);
    CHECK(clsMP3::GetGenreByte(L"rock") == 0);
    struct Row {
        int number;
        const wchar_t* name;
    };
    for (const Row& row :
         {Row{0, L"Blues"}, Row{40, L"Alt. Rock"}, Row{62, L"Pop/Punk"}, Row{67, L"Phychedelic"},
          Row{79, L"Hard Rock"}, Row{81, L"Folk/Rock"}, Row{85, L"Bebob"}, Row{89, L"Blue Grass"},
          Row{90, L"Avantegarde"}, Row{144, L"Trash Metal"}, Row{147, L"Synth Pop"}}) {
        const auto number = static_cast<std::uint8_t>(row.number);
        CHECK(clsMP3::GetGenreString(number) == row.name);
        CHECK(clsMP3::GetGenreByte(row.name) == number);
    }
    CHECK(clsMP3::GetGenreString(148).empty());
    CHECK(clsMP3::GetGenreString(255).empty());
}

TEST_CASE("fields keep their width")
{
    const clsMP3 tag = filled();
    CHECK(tag.Title() == L"Caf\u00E9" + std::wstring(26, L' '));
    CHECK(tag.Artist() == std::wstring(30, L'a'));
    CHECK(tag.Year() == L"19  ");
    CHECK(tag.Lyrics().size() == 4953);
}

TEST_CASE("saving: who grows, who is overwritten, who is left alone")
{
    TempDir dir;
    struct Row {
        const wchar_t* name;
        std::size_t size;
        std::size_t grown;
        bool tagged;
    };
    for (const Row& row : {Row{L"a.mp3", 1000, 0, true}, Row{L"a.wav", 1000, 128, true},
                           Row{L"a.mid", 1000, 128, true}, Row{L"b.WAV", 1000, 0, true},
                           Row{L"c.mp3", 127, 0, false}, Row{L"c.wav", 127, 0, false},
                           Row{L"d.mp3", 128, 0, true}, Row{L"e.mp3", 0, 0, false}}) {
        CAPTURE(row.name);
        const std::wstring path = dir.file(row.name);
        const std::string before = noise(row.size);
        replaceFile(path, before);
        clsMP3 tag = filled();
        tag.SaveTag(path);
        const std::string after = content(path);
        CHECK(after.size() == row.size + row.grown);
        if (!row.tagged) {
            CHECK(after == before);
            continue;
        }
        CHECK(after.substr(0, after.size() - 128) == before.substr(0, after.size() - 128));
        CHECK(after.substr(after.size() - 128, 7) == "TAGCaf\xE9");
        clsMP3 read;
        read.GetTag(path);
        CHECK(read.Title() == tag.Title());
        CHECK(read.Genre() == 24);
        // A second save finds the tag.
        read.SaveTag(path);
        CHECK(content(path) == after);
    }
}

TEST_CASE("reading: no tag, short file, no file; unchanged bytes survive")
{
    TempDir dir;
    const std::wstring path = dir.file(L"x.mp3");
    clsMP3 tag = filled();
    replaceFile(path, noise(500));
    tag.GetTag(path);
    CHECK(tag.Genre() == 255);
    CHECK(tag.Title() == std::wstring(30, L' '));
    replaceFile(path, noise(100));
    tag.GetTag(path);
    CHECK(tag.Genre() == 0);
    tag.SetGenre(9);
    tag.GetTag(dir.file(L"missing.mp3"));
    CHECK(tag.Genre() == 0);

    std::string odd = noise(300) + "TAG";
    for (int i = 0; i < 125; ++i)
        odd += static_cast<char>(i * 2 + 3);
    replaceFile(path, odd);
    tag.GetTag(path);
    tag.SaveTag(path);
    CHECK(content(path) == odd);
}

TEST_CASE("the lyrics block is written where the second look finds it")
{
    TempDir dir;
    for (const wchar_t* name : {L"a.wav", L"a.mid", L"a.mp3"})
        for (const bool tagged : {false, true}) {
            CAPTURE(name);
            CAPTURE(tagged);
            const std::wstring path = dir.file(name);
            replaceFile(path, noise(9000));
            clsMP3 tag = filled();
            if (tagged)
                tag.SaveTag(path);
            const std::size_t before = content(path).size();
            clsMP3 lyrics;
            lyrics.SetLyrics(L"la la la");
            lyrics.SaveLyrics(path);
            const std::string bytes = content(path);
            const bool grows = name[2] != L'm' || name[4] != L'3';
            CHECK(bytes.size() == before + (grows ? 5101 : 0));
            CHECK(bytes.compare(bytes.size() - 5101, 11, "LYRICSBEGIN") == 0);
            CHECK(bytes.compare(bytes.size() - 137, 12, "LYRICSENDTAG") == 0);
            clsMP3 read;
            read.GetLyrics(path);
            CHECK(read.Lyrics().starts_with(L"la la la  "));
            read.GetTag(path);
            if (tagged)
                CHECK(read.Title() == tag.Title());
            // Again, and nothing grows.
            lyrics.SetLyrics(L"oh");
            lyrics.SaveLyrics(path);
            CHECK(content(path).size() == bytes.size());
            read.GetLyrics(path);
            CHECK(read.Lyrics().starts_with(L"oh  "));
        }
    for (const wchar_t* name : {L"s.mp3", L"s.wav"}) {
        const std::wstring tooShort = dir.file(name);
        replaceFile(tooShort, noise(5100));
        clsMP3 lyrics;
        lyrics.setUndoFile(dir.file(L"undo"));
        lyrics.SaveLyrics(tooShort);
        CHECK(content(tooShort) == noise(5100));
        replaceFile(tooShort, noise(127));
        lyrics.SaveTag(tooShort);
        CHECK(content(tooShort) == noise(127));
        CHECK_FALSE(lyrics.undoTarget().has_value());
    }
}

TEST_CASE("a save can be undone while the file is as the save left it")
{
    TempDir dir;
    for (const wchar_t* name : {L"a.mp3", L"a.wav"}) {
        const std::wstring path = dir.file(name);
        replaceFile(path, noise(700));
        clsMP3 tag = filled();
        tag.setUndoFile(dir.file(L"tag undo.dat"));
        CHECK_FALSE(tag.undoTarget().has_value());
        tag.SaveTag(path);
        CHECK(content(path) != noise(700));
        CHECK(tag.undoTarget() == path);
        CHECK(tag.undo());
        CHECK(content(path) == noise(700));
        CHECK_FALSE(tag.undo());
    }
    const std::wstring path = dir.file(L"b.mp3");
    replaceFile(path, noise(700));
    clsMP3 tag = filled();
    tag.setUndoFile(dir.file(L"undo"));
    tag.SaveTag(path);
    replaceFile(path, noise(300)); // somebody else wrote the file meanwhile
    CHECK_FALSE(tag.undo());
    CHECK(content(path) == noise(300));
    replaceFile(dir.file(L"undo"), "garbage\n1\nZZ\n");
    CHECK_FALSE(tag.undo());
}
