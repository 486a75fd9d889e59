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
    CHECK(GetScreenNameFromMail(mail) == L"Joe Smith");
    CHECK(GetDateFromMail(mail) == L"1/2/2003 4:05 PM");
    CHECK(GetScreenNameFromMail(L"Thema: x\r\nVon: Hans\r\n") == L"Hans");
    CHECK(GetScreenNameFromMail(L"nothing here").empty());
}

TEST_CASE("a reply is matched to its message by the subject")
{
    struct Case {
        const wchar_t *reply, *original;
        bool answers;
    };
    for (const Case& c :
         std::initializer_list<Case>{{L"Re: Lunch", L"Lunch", true},
                                     {L"Wtr: Lunch", L"RE: lunch", true},
                                     {L"Fwd: Re: a long subj", L"A long subject", true},
                                     {L"Re: Lunch", L"", true},
                                     {L"Re: ", L"", true},
                                     {L"Re: Dinner", L"Lunch", false},
                                     {L"Re: ", L"Lunch", false}}) {
        CAPTURE(c.reply);
        CHECK(answersSubject(c.reply, c.original) == c.answers);
    }
    CHECK(bareSubject(L" re: FWD:Wtr: x ") == L"x");
}

TEST_CASE("head and body of a read message, in three languages")
{
    for (const wchar_t* head : {L"Subj:\tHi\r\nDate:\t1.2.03\r\nFrom:\tJoe\r\nTo:\tMe\r\n\r\n",
                                L"Betreff:\tHi\r\nDatum:\t1.2.03\r\nVon:\tJoe\r\n\r\n",
                                L"Objet :\tHi\nDate :\t1.2.03\nDe :\tJoe\nA :\tMe\n\n"}) {
        CAPTURE(head);
        const std::wstring text = head + std::wstring(L"First\r\n\r\nFrom: nobody");
        CHECK(subjectFromMailText(text) == L"Hi");
        CHECK(GetScreenNameFromMail(text) == L"Joe");
        CHECK(GetDateFromMail(text) == L"1.2.03");
        CHECK(bodyFromMailText(text) == L"First\r\n\r\nFrom: nobody");
    }
    for (const wchar_t* none :
         {L"", L"just text", L"Hello:\r\n\r\nno sender", L"Subj: x\r\nFrom: y"})
        CHECK(bodyFromMailText(none) == none);
}

TEST_CASE("dates are told from times of day")
{
    const wchar_t* const cases[][3] = {
        {L"1/2/2003 4:05:06 PM Eastern Standard Time", L"1/2/2003",
         L"4:05:06 PM Eastern Standard Time"},
        {L"Thursday, January 2, 2003, 14:05", L"Thursday, January 2, 2003", L"14:05"},
        {L"02.01.03 16:05", L"02.01.03", L"16:05"},
        {L"02/01/03 16h05", L"02/01/03", L"16h05"},
        {L"yesterday", L"yesterday", L""},
        {L"4:05", L"", L"4:05"},
        {L"", L"", L""},
        {L"a:b 1:2", L"a:b 1:2", L""},
    };
    for (const auto& c : cases) {
        CAPTURE(c[0]);
        const DateAndTime when = splitMailDate(c[0]);
        CHECK(when.date == c[1]);
        CHECK(when.time == c[2]);
    }
}

TEST_CASE("what is quoted of a message")
{
    const std::wstring head = L"Subj:\tx\r\nFrom:\tJoe\r\n\r\n";
    CHECK(GetQuoteText({head + L"a < b\r\n \r\n", L""}) == L"a &lt; b");
    CHECK(GetQuoteText({head + L"a", L"only <this>"}) == L"only &lt;this&gt;");
    CHECK(GetQuoteText({head + L"a", L""}, true).starts_with(L"Subj:\tx"));
    CHECK(GetQuoteText({head + L"<joe@mx.aol.com> <x@y.com>", L""})
          == L"joe@mx.aol.com &lt;x@y.com&gt;");
    CHECK(GetQuoteText({L"<HTML><B>x</B></HTML>", L""}) == L"<HTML><B>x</B></HTML>");
    const std::wstring cut = GetQuoteText({head + std::wstring(kMostQuoted + 1, L'x'), L""});
    CHECK(cut == std::wstring(kMostQuoted, L'x') + L"\r\n[...]");
    CHECK(plainFromHtml(L"<HTML>a<BR>b &lt;c&gt; <FONT SIZE=2>d</FONT>&amp;</HTML>")
          == L"a\r\nb <c> d&");
}

TEST_CASE("the reply keeps what is the user's, and not AOL's own copy")
{
    const OriginalMessage all{L"Subj:\tx\r\nFrom:\tJoe\r\n\r\none\r\ntwo three", L""};
    OriginalMessage part = all;
    part.selection = L"two\rthree";
    struct Case {
        const wchar_t* existing;
        const OriginalMessage& original;
        const wchar_t* reply;
    };
    for (const Case& c : std::initializer_list<Case>{
             {L"", all, L"Q"},
             {L"my signature", all, L"my signature<br>Q"},
             {L"mine<br>sig", all, L"mine<br>sig<br>Q"},
             {L"<BLOCKQUOTE>old</BLOCKQUOTE>sig", all, L"<BLOCKQUOTE>old</BLOCKQUOTE><br>sig<br>Q"},
             // A forward begins with the whole text.
             {L"one\ntwo  three", all, L"Q"},
             {L"one\r\ntwo three\r\nmy signature", all, L"\r\nmy signature<br>Q"},
             // A reply to a selection has it as a quotation with an introduction.
             {L"Hi!\r\nIn a message dated 1/2/03, Joe writes:\r\n\r\n<< two three >>\r\nsig", part,
              L"Hi!\r\n\r\nsig<br>Q"},
             {L"<<  two three", part, L"Q"},
             // Words of the user's that only look like it stay.
             {L"I say: two three", part, L"I say: two three<br>Q"},
             {L"<< two four >>", part, L"<< two four >><br>Q"}}) {
        CAPTURE(c.existing);
        CHECK(composeReply(c.existing, c.original, L"Q") == c.reply);
    }
}

TEST_CASE("a separator calls the sender by the alias")
{
    const OriginalMessage mail{L"Subj:\tx\r\nDate:\t1/2/03 4:05 PM\r\nFrom:\tJoe\r\n\r\nhi", L""};
    const auto shout = [](const std::wstring& name) { return L"<" + name + L">"; };
    CHECK(GetSeperatorText(L"{SN}|{D}|{T}", mail, shout) == L"&lt;Joe&gt;|1/2/03|4:05 PM");
}
