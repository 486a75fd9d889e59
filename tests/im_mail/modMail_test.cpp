#include "im_mail/modMail.h"

#include "base/text.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("an envelope has its markers, digits in one run and comes back")
{
    const std::wstring envelope = EncryptMailText(L"x", L"pw");
    CHECK(envelope.substr(0, 15) == L"<-- begin -->\r\n");
    CHECK(envelope.substr(envelope.size() - 13) == L"\r\n<-- end -->");
    CHECK(envelope.size() == 15 + 64 + 13);
    CHECK(DecryptMailText(envelope, L"pw") == L"x");
    CHECK(EncryptMailText(std::wstring(14, L'a'), L"p").size() == envelope.size());
    CHECK(EncryptMailText(std::wstring(15, L'a'), L"p").size() == envelope.size() + 64);
    CHECK(EncryptMailText(L"", L"pw").empty());
    CHECK(EncryptMailText(L"x", L"").empty());
}

TEST_CASE("umlauts and characters beyond the first plane survive")
{
    const std::wstring text = fromUtf8("Gr\xC3\xBC\xC3\x9F"
                                       "e \xF0\x9F\x98\x80 &nbsp;!");
    CHECK(DecryptMailText(EncryptMailText(text, L"\u00E4\u00F6"), L"\u00E4\u00F6")
          == replaceAll(text, L"&nbsp;", L" "));
}

TEST_CASE("a run broken by the mail view is read all the same")
{
    std::wstring envelope = EncryptMailText(L"broken into lines", L"pw");
    for (const wchar_t* breaker :
         {L"\r\n", L"\n", L"\r", L"<BR>", L"<br>\r\n", L" ", L"\t", L"\u00A0"}) {
        std::wstring broken = envelope;
        for (std::size_t at : {70u, 41u, 16u})
            broken.insert(at, breaker);
        CHECK(DecryptMailText(broken, L"pw") == L"broken into lines");
    }
    // Line ends of AOL 7, and digits in lower case.
    CHECK(DecryptMailText(replaceAll(envelope, L"\r\n", L"\n"), L"pw") == L"broken into lines");
    CHECK(DecryptMailText(lower(envelope), L"pw") == L"broken into lines");
}

TEST_CASE("damaged envelopes and wrong passwords give nothing")
{
    const std::wstring envelope = EncryptMailText(L"secret", L"pw");
    CHECK(DecryptMailText(envelope, L"PW") != L"secret");
    CHECK(DecryptMailText(envelope, L"").empty());
    for (const wchar_t* bad :
         {L"", L"<-- begin -->\r\nA\r\n<-- end -->", L"<-- begin --><-- end -->",
          L"<-- begin -->\r\nZZ\r\n<-- end -->", L"<-- begin -->"}) {
        CAPTURE(bad);
        CHECK(DecryptMailText(bad, L"pw").empty());
    }
    const std::wstring nested = L"<-- begin -->\r\n" + envelope;
    CHECK(DecryptMailText(*FindEnvelope(nested), L"pw").empty());
}

TEST_CASE("the envelope is found between other text")
{
    const std::wstring envelope = EncryptMailText(L"secret", L"pw");
    CHECK(*FindEnvelope(L"<-- end --> hello " + envelopeForMail(envelope) + L" bye <-- end -->")
          == envelope);
    CHECK_FALSE(FindEnvelope(L"<-- begin --> only").has_value());
    CHECK_FALSE(FindEnvelope(L"<-- end --><-- begin -->").has_value());
    CHECK(holdsNotice(L"x" + decryptNotice()));
    CHECK_FALSE(holdsNotice(envelope));
    CHECK(decryptNotice().find(L"<FONT  SIZE=1 PTSIZE=8>") != std::wstring::npos);
}
