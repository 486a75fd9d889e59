// What we write another tag library reads, and the other way round.
#include "base/files.h"
#include "base/text.h"
#include "sounds/clsMP3.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>
#include <taglib/id3v1tag.h>
#include <taglib/mpegfile.h>

using namespace velora;

TEST_CASE("tags agree with another library, both ways")
{
    TempDir dir;
    const std::wstring path = dir.file(L"x.mp3");
    const std::string name = toUtf8(path);
    replaceFile(path, std::string(4000, '\xFF'));

    clsMP3 ours;
    ours.SetTitle(L"A title of ours");
    ours.SetArtist(L"J\u00F6rg");
    ours.SetAlbum(L"Album");
    ours.SetYear(L"1999");
    ours.SetComments(L"Fine");
    ours.SetGenre(clsMP3::GetGenreByte(L"Techno"));
    ours.SaveTag(path);
    {
        TagLib::MPEG::File theirs(name.c_str(), false);
        REQUIRE(theirs.hasID3v1Tag());
        const TagLib::ID3v1::Tag* tag = theirs.ID3v1Tag();
        CHECK(tag->title().stripWhiteSpace() == TagLib::String("A title of ours"));
        CHECK(tag->artist().stripWhiteSpace() == TagLib::String("J\xF6rg", TagLib::String::Latin1));
        CHECK(tag->album().stripWhiteSpace() == TagLib::String("Album"));
        CHECK(tag->year() == 1999);
        CHECK(tag->comment().stripWhiteSpace() == TagLib::String("Fine"));
        CHECK(tag->genre() == TagLib::String("Techno"));
    }
    {
        TagLib::MPEG::File theirs(name.c_str(), false);
        TagLib::ID3v1::Tag* tag = theirs.ID3v1Tag(true);
        tag->setTitle("Theirs");
        tag->setYear(2001);
        tag->setGenre("Rock");
        theirs.save(TagLib::MPEG::File::ID3v1, TagLib::File::StripNone);
    }
    clsMP3 read;
    read.GetTag(path);
    const std::wstring title = read.Title();
    CHECK(title.substr(0, title.find(L'\0')) == L"Theirs");
    CHECK(read.Year() == L"2001");
    CHECK(clsMP3::GetGenreString(read.Genre()) == L"Rock");
    CHECK(readFile(path)->size() == 4000);
}
