// Finding, stripping and decrypting an envelope; and what is encrypted comes back.
#include "base/text.h"
#include "fuzz/fuzz.h"
#include "im_mail/modMail.h"

#include <cstdlib>

using namespace velora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = from1252(fuzz::bytesOf(data, size));
    if (const auto envelope = FindEnvelope(text))
        DecryptMailText(*envelope, L"pw");
    DecryptMailText(text, L"pw");
    if (text.empty() || size > 2000)
        return 0;
    const std::wstring password = text.substr(0, 20);
    const std::wstring mail = L"before " + envelopeForMail(EncryptMailText(text, password));
    const auto found = FindEnvelope(mail);
    if (!found || DecryptMailText(*found, password) != replaceAll(text, L"&nbsp;", L" "))
        std::abort();
    return 0;
}
