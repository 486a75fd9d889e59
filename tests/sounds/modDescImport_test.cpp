#include "base/files.h"
#include "sounds/clsDescriptionsModel.h"
#include "sounds/modDescImport.h"
#include "sounds/modDescMail.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("a description file of an older version, line by line")
{
    const struct {
        const wchar_t* text;
        const wchar_t* name; // of the first record; null: none
        const wchar_t* comments;
        std::size_t skipped;
    } cases[] = {
        {L"hello.wav\tSays hello", L"hello.wav", L"Says hello", 0},
        {L"\r\nhello.wav\t Says\thello \r\n\r\n", L"hello.wav", L"Says hello", 0},
        {L"C:\\sounds\\hello.wav\tSays hello", L"hello.wav", L"Says hello", 0},
        {L"..\\..\\x/hello.wav\tx", L"hello.wav", L"x", 0},
        {L"hello.wav", nullptr, nullptr, 1},
        {L"hello.wav\t  ", nullptr, nullptr, 1},
        {L"\tSays hello", nullptr, nullptr, 1},
        {L"C:\\sounds\\\tSays hello", nullptr, nullptr, 1},
        {L"a.wav\tfirst\nA.WAV\tsecond", L"a.wav", L"first", 1},
        {L"", nullptr, nullptr, 0},
    };
    for (const auto& c : cases) {
        CAPTURE(c.text);
        const OldDescriptions old = parseOldDescriptions(c.text);
        CHECK(old.skipped == c.skipped);
        REQUIRE(old.records.size() == (c.name ? 1 : 0));
        if (c.name)
            CHECK(old.records[0] == Description{.fileName = c.name, .comments = c.comments});
    }
    const OldDescriptions wide =
        parseOldDescriptions(std::wstring(300, L'n') + L"\t" + std::wstring(1000, L'd'));
    REQUIRE(wide.records.size() == 1);
    CHECK(wide.records[0].fileName.size() == 255);
    CHECK(wide.records[0].comments.size() == 255);
}

TEST_CASE("the files to import, and not those that have been")
{
    const TempDir dir;
    for (const wchar_t* name :
         {L"desc2.dat", L"DESC1.DAT", L"description.dat", L"desc1.dat.imported", L"my desc.dat"})
        replaceFile(dir.file(name), "x\ty");
    CHECK(oldDescriptionFiles(dir.path())
          == std::vector<std::wstring>{dir.file(L"DESC1.DAT"), dir.file(L"desc2.dat"),
                                       dir.file(L"description.dat")});
    moveFile(dir.file(L"desc2.dat"), importedName(dir.file(L"desc2.dat")));
    CHECK(oldDescriptionFiles(dir.path()).size() == 2);
}

TEST_CASE("a category as a mail: escaped, and whole records up to the limit")
{
    const std::vector<Description> records = {
        {.fileName = L"a.wav", .title = L"A <b> & c", .comments = L"note"}, {.fileName = L"b.wav"}};
    const PrintedList mail = descriptionMail(L"My <list>", records);
    CHECK(mail.entries == 2);
    CHECK(mail.html
          == L"<HTML></P><P ALIGN=CENTER><FONT  SIZE=2 PTSIZE=8><B>Velora - </FONT><FONT  "
             L"COLOR=#0000ff SIZE=2 PTSIZE=8>My &lt;list&gt;</FONT><FONT  COLOR=#000000 SIZE=2 "
             L"PTSIZE=8>:</B>  <I>Print Wav Descriptions</FONT><FONT SIZE=3 PTSIZE=10></I><br>"
             L"<HR></P><P ALIGN=LEFT><PRE>"
             L"<B>a.wav</B><br>Title: A &lt;b&gt; &amp; c<br>Artist: <br>Album: <br>Comments: "
             L"note<br>Genre: <br><br>"
             L"<B>b.wav</B><br>Title: <br>Artist: <br>Album: <br>Comments: <br>Genre: <br><br>"
             L"</PRE></HTML>");
    CHECK(descriptionMail(L"My <list>", records, mail.html.size()).entries == 2);
    const PrintedList cut = descriptionMail(L"My <list>", records, mail.html.size() - 1);
    CHECK(cut.entries == 1);
    CHECK(cut.html.ends_with(L"Genre: <br><br></PRE></HTML>"));
}

TEST_CASE("the list: found, sorted, selected again")
{
    clsDescriptionsModel model;
    model.setRows({{L"B", {.fileName = L"b.wav", .title = L"Bell"}},
                   {L"A", {.fileName = L"C.wav", .title = L"cow"}},
                   {L"A", {.fileName = L"a.wav", .comments = L"a COWBELL"}}});
    const auto names = [&] {
        std::wstring all;
        for (int i = 0; i < model.count(); ++i)
            all += model.cell(i, 0).substr(0, 1);
        return all;
    };
    CHECK(names() == L"abC");
    model.sortBy(0);
    CHECK(names() == L"Cba");
    model.sortBy(1);
    CHECK(names() == L"abC"); // no title, Bell, cow
    model.sortBy(8);
    CHECK(names() == L"aCb"); // categories A, A, B; within one by name
    model.find(L"cow");
    CHECK(names() == L"aC");
    CHECK(model.cell(1, 8) == L"A");
    CHECK(model.cell(2, 0) == L"");
    CHECK(model.indexOf(L"a", L"c.WAV") == 1);
    CHECK(model.indexOf(L"B", L"b.wav") == -1);
    model.find(L"");
    CHECK(model.beginningWith(L"B", 0) == 2);
    CHECK(model.beginningWith(L"a", 1) == 0);
    CHECK(model.beginningWith(L"x", 0) == -1);
    CHECK(clsDescriptionsModel::title(7) == L"Compression Type");
    CHECK(clsDescriptionsModel::title(8) == L"Category");
}
