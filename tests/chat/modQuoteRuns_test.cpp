#include "chat/modQuoteRuns.h"

#include "chat/modQuote.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

/// The runs written down: style letters, colour when it is not black, text.
std::wstring shape(std::wstring_view html)
{
    std::wstring out;
    for (const FadeRun& run : quoteRuns(html)) {
        out += L"[";
        out += run.bold ? L"b" : L"";
        out += run.italic ? L"i" : L"";
        out += run.underline ? L"u" : L"";
        out += (run.colour ? std::to_wstring(run.colour) : L"") + L"]" + run.text;
    }
    return out;
}

} // namespace

TEST_CASE("a reply's markup is shown as a reader shows it")
{
    const wchar_t* const cases[][2] = {
        {L"a<BR>b", L"[]a\nb"},
        {L"<HTML><B>a</B> <i><u>b</u></i>c</HTML>", L"[b]a[] [iu]b[]c"},
        {L"<FONT COLOR=\"#0000ff\">a</FONT>b", L"[16711680]a[]b"},
        {L"<font size=3 color=#ff0000>a", L"[255]a"},
        {L"<font color=red>a<font face=x>b", L"[]a[]b"},
        {L"a<BLOCKQUOTE>b</BLOCKQUOTE>c", L"[]a\n    b\nc"},
        {L"1 < 2 &lt; 3 &amp;&copy; <", L"[]1 < 2 < 3 &&copy; <"},
        {L"a\r\nb<!-- x -->c<nothing>", L"[]abc"},
        {L"<>", L"[]<>"},
        {L"", L""},
    };
    for (const auto& c : cases) {
        CAPTURE(c[0]);
        CHECK(shape(c[0]) == c[1]);
    }
}
