#include "sounds/modSoundLine.h"

#include "sounds/modListText.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

struct Fixed final : RandomSource {
    explicit Fixed(double number) : value(number) {}
    double rnd() override { return value; }
    double value;
};

WavDescription bell()
{
    WavDescription description;
    description.title = L"Bell";
    description.artist = L"Ann & <Joe>";
    description.year = L"1999";
    description.comments = L"  a big\r\nbell ";
    return description;
}

} // namespace

TEST_CASE("a random style is one of the list, the first and the last included")
{
    const std::vector<std::wstring> styles = {L"a{%}", L"b{%}", L"c{%}"};
    for (const auto& [number, style] :
         {std::pair{0.0, L"a{%}"}, {0.34, L"b{%}"}, {0.999999, L"c{%}"}}) {
        Fixed random(number);
        CHECK(randomGlintune(styles, random) == style);
    }
    Fixed random(0.5);
    CHECK(randomGlintune({}, random).empty());
}

TEST_CASE("what is sent and shown of a description")
{
    CHECK(descriptionText(bell(), L"Comments", L"") == L"a big  bell");
    CHECK(descriptionText(bell(), L"title", L"Comments") == L"Bell - a big  bell");
    CHECK(descriptionText(bell(), L"Album", L"Year") == L"1999");
    CHECK(descriptionText(bell(), L"Nonsense", L"").empty());
    CHECK(descriptionLine(L"a bell", false) == L"Descrip: a bell");
    CHECK(descriptionLine(L"a bell", true) == L"a bell");
    CHECK(descriptionLine(L"   ", false).empty());
    CHECK(descriptionTip(bell(), {L"Title", L"Album", L"Year"}) == L"Title: Bell\r\nYear: 1999");
    CHECK(descriptionMarkup(bell(), {L"Title", L"Year"})
          == L"~B~CBTitle:~B~CN Bell~N~B~CBYear:~B~CN 1999");
}

TEST_CASE("the windows that take a sound instead of the room")
{
    for (const wchar_t* caption :
         {L"Send Instant Message", L"My Telegramm schicken", L"Envoyer un Message Eclair",
          L">Instant Message From: Joe", L"Instant Message To: Joe", L"IM From: Joe", L">IM To: x",
          L" im from: x", L"Re: Hello", L"Fwd: Hello"}) {
        CAPTURE(caption);
        CHECK(takesSounds(caption));
    }
    for (const wchar_t* caption :
         {L"", L"Town Square", L"IM To: Joe", L"Write Mail", L"Welcome, Joe!", L"About Re: Hello",
          L"x\r\nIM From: Joe", L"Instant Message"}) {
        CAPTURE(caption);
        CHECK_FALSE(takesSounds(caption));
    }
}

TEST_CASE("a list in a mail and in a text file")
{
    const std::vector<ListedSound> sounds = {{L"bell <b>", L"1.5 KB", bell()},
                                             {L"plain", L"", std::nullopt}};
    const PrintedList mail = listMail(L"My & List", sounds);
    CHECK(mail.entries == 2);
    CHECK(mail.html.starts_with(L"<HTML></P><P ALIGN=CENTER><FONT  SIZE=2 PTSIZE=8><B>Velora - "
                                L"</FONT><FONT  COLOR=#0000ff SIZE=2 PTSIZE=8>My &amp; List</FONT>"
                                L"<FONT  COLOR=#000000 SIZE=2 PTSIZE=8>:</B>  <I>Print Wav List"
                                L"</FONT><FONT SIZE=3 PTSIZE=10></I>"));
    CHECK(mail.html.ends_with(L"</PRE></HTML>"));
    CHECK(mail.html.find(L"bell &lt;b&gt;") != std::wstring::npos);
    CHECK(mail.html.find(L"<I>Artist: </I>Ann &amp; &lt;Joe&gt;") != std::wstring::npos);
    CHECK(mail.html.find(L"Album") == std::wstring::npos);
    const PrintedList cut = listMail(L"x", sounds, mail.html.size() - 20);
    CHECK(cut.entries == 1);
    CHECK(cut.html.ends_with(L"</PRE></HTML>"));

    CHECK(listText(L"My List", sounds)
          == L"Velora - My List\r\n\r\nbell <b>  (1.5 KB)\r\nTitle: Bell\r\nArtist: Ann & <Joe>\r\n"
             L"Album: \r\nComments: a big  bell\r\nGenre: \r\n\r\nplain\r\nTitle: \r\nArtist: \r\n"
             L"Album: \r\nComments: \r\nGenre: \r\n");
}
