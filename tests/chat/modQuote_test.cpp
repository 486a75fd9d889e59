#include "chat/modQuote.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("variables are filled once and cannot bring markup")
{
    CHECK(FillVariables(builtInTemplates()[1].CharHtml, {L"Joe", L"1/2/03", L"4:05 PM"})
          == L"<HTML><FONT COLOR=\"#ff0000\">On 1/2/03 at 4:05 PM Joe wrote:</FONT></HTML>");
    CHECK(FillVariables(L"{SN}{sn}{D}", {L"{SN}{T}", L"{SN}", L"x"}) == L"{SN}{T}{SN}{T}{SN}");
    CHECK(FillVariables(L"<{SN}>", {L"</HTML><FONT SIZE=9999>&", L"", L""})
          == L"<&lt;/HTML&gt;&lt;FONT SIZE=9999&gt;&amp;>");
    CHECK(FillVariables(L"{S{SN", {L"x", L"", L""}) == L"{S{SN");
}

TEST_CASE("a quote closes open styles and loses the signs around AOL addresses")
{
    CHECK(FormatQuote(L"SEP", L"<HTML>hi</HTML>", {.quoteStyle = false})
          == L"SEP<br>hi<br></b></i></u><br><br>");
    CHECK(FormatQuote(L"", L"From <joe@mx.aol.com> <b>x</b>", {.quoteStyle = false})
              .find(L"From joe@mx.aol.com <b>x</b>")
          != std::wstring::npos);
    CHECK(FormatQuote(L"", L"<a@b.aol.com><c@d.AOL.com>", {.quoteStyle = false})
              .find(L"a@b.aol.comc@d.AOL.com")
          != std::wstring::npos);
    // What is no address keeps its signs.
    for (const wchar_t* text : {L"<a b.aol.com>", L"x.aol.com>", L"<joe@x.com>"}) {
        CAPTURE(text);
        CHECK(FormatQuote(L"", text, {.quoteStyle = false}).find(text) != std::wstring::npos);
    }
    CHECK(FormatQuote(L"s", L"a", {})
          == L"s<br><BLOCKQUOTE>a</BLOCKQUOTE><br></b></i></u><br><br>");
}

TEST_CASE("line ends by option and AOL version")
{
    CHECK(FormatQuote(L"", L"a\r\nb", {.quoteStyle = false, .aolVersion = 7}).find(L"a\nb")
          != std::wstring::npos);
    CHECK(FormatQuote(L"", L"a\r\nb", {.quoteStyle = false, .aolVersion = 6}).find(L"a\r\nb")
          != std::wstring::npos);
    CHECK(StripReturns(L"a\r\n\r\nb\rc \nd") == L"a b c d");
}

TEST_CASE("excess tags go, others and lone signs stay")
{
    CHECK(RemoveExcessHTML(L"<HTML><BODY BGCOLOR=\"#fff\"><!-- x --><B>a</B></BODY></html>")
          == L"<B>a</B>");
    CHECK(RemoveExcessHTML(L"1 < 2 > <HTMLX> <header> <html") == L"1 < 2 > <HTMLX> <header> <html");
}

TEST_CASE("reply and signature are told apart")
{
    auto got = GetReplyAndSig(L"Hi<BLOCKQUOTE>a</BLOCKQUOTE>mid<blockquote>b</blockquote>sig");
    CHECK(got.reply == L"Hi<BLOCKQUOTE>a</BLOCKQUOTE>mid<blockquote>b</blockquote>");
    CHECK(got.signature == L"sig");
    got = GetReplyAndSig(L"Hi<br>sig<BR>more");
    CHECK(got.reply == L"Hi");
    CHECK(got.signature == L"sig<BR>more");
    CHECK(GetReplyAndSig(L"only").reply == L"only");
}

TEST_CASE("subjects, senders and dates")
{
    for (const wchar_t* reply : {L"Re: x", L" FWD:x", L"Wtr: x"})
        CHECK(isReplySubject(reply));
    CHECK_FALSE(isReplySubject(L"Reply: x"));
    const wchar_t* mail =
        L"Subj:\tHello\r\nDate:\t1/2/2003 4:05 PM\r\nFrom:\tJoe Smith (x@y.z)\r\n\r\nFrom: not";
    CHECK(senderFromMailText(mail) == L"Joe Smith");
    CHECK(dateFromMailText(mail) == L"1/2/2003 4:05 PM");
    CHECK(senderFromMailText(L"Thema: x\r\nVon: Hans\r\n") == L"Hans");
    CHECK(senderFromMailText(L"nothing here").empty());
}
