#include "im_mail/modMail.h"

#include "base/secret.h"
#include "base/text.h"
#include "base/trap.h"
#include "im_mail/clsEncryption.h"

namespace velora {
namespace {

constexpr char kModule[] = "modMail";
constexpr std::wstring_view kBegin = L"<-- begin -->";
constexpr std::wstring_view kEnd = L"<-- end -->";
constexpr std::wstring_view kNoticeStart = L"This eMail has been encrypted using Velora 10.x";

std::span<const std::uint8_t> bytesOf(const std::string& s)
{
    return {reinterpret_cast<const std::uint8_t*>(s.data()), s.size()};
}

int digitOf(wchar_t c)
{
    if (c >= L'0' && c <= L'9')
        return c - L'0';
    const wchar_t low = lowerChar(c);
    return low >= L'a' && low <= L'f' ? low - L'a' + 10 : -1;
}

/// The bytes that the digits stand for; absent when anything else is among them or one is left
/// over.
std::optional<Bytes> readDigits(std::wstring_view text)
{
    Bytes bytes;
    int high = -1;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (c == L'\r' || c == L'\n' || c == L' ' || c == L'\t' || c == L'\u00A0')
            continue;
        if (c == L'<' && startsWithNoCase(text.substr(i), L"<br>")) {
            i += 3;
            continue;
        }
        const int digit = digitOf(c);
        if (digit < 0)
            return std::nullopt;
        if (high < 0) {
            high = digit;
        } else {
            bytes.push_back(static_cast<std::uint8_t>(high << 4 | digit));
            high = -1;
        }
    }
    if (high >= 0)
        return std::nullopt;
    return bytes;
}

} // namespace

std::wstring EncryptMailText(std::wstring_view text, std::wstring_view password)
{
    return trap(
        kModule,
        [&] {
            if (text.empty() || password.empty())
                return std::wstring();
            std::string plain = toUtf16le(text), key = toUtf16le(password);
            const WipeOnExit wipePlain(plain), wipeKey(key);
            const Bytes cipher = clsEncryption().EncryptData(bytesOf(plain), bytesOf(key));
            std::wstring envelope(kBegin);
            envelope.reserve(cipher.size() * 2 + kBegin.size() + kEnd.size() + 4);
            envelope += L"\r\n";
            for (const std::uint8_t b : cipher) {
                envelope += L"0123456789ABCDEF"[b >> 4];
                envelope += L"0123456789ABCDEF"[b & 15];
            }
            envelope += L"\r\n";
            return envelope += kEnd;
        },
        std::wstring());
}

std::wstring DecryptMailText(std::wstring_view envelope, std::wstring_view password)
{
    return trap(
        kModule,
        [&] {
            if (envelope.starts_with(kBegin))
                envelope.remove_prefix(kBegin.size());
            if (envelope.ends_with(kEnd))
                envelope.remove_suffix(kEnd.size());
            const auto cipher = readDigits(envelope);
            if (!cipher || password.empty())
                return std::wstring();
            std::string key = toUtf16le(password);
            const WipeOnExit wipeKey(key);
            Bytes plain = clsEncryption().DecryptData(*cipher, bytesOf(key));
            const WipeOnExit wipePlain(plain);
            std::wstring text =
                fromUtf16le({reinterpret_cast<const char*>(plain.data()), plain.size()});
            const WipeOnExit wipeText(text);
            return replaceAll(text, L"&nbsp;", L" ");
        },
        std::wstring());
}

std::optional<std::wstring_view> FindEnvelope(std::wstring_view mailText)
{
    const std::size_t from = mailText.find(kBegin);
    if (from == mailText.npos)
        return std::nullopt;
    const std::size_t to = mailText.find(kEnd, from + kBegin.size());
    if (to == mailText.npos)
        return std::nullopt;
    return mailText.substr(from, to + kEnd.size() - from);
}

std::wstring envelopeForMail(std::wstring_view envelope)
{
    return L"</b></i></u>" + std::wstring(envelope);
}

std::wstring decryptNotice()
{
    return L"<HTML><P ALIGN=CENTER><FONT  SIZE=1 PTSIZE=8>" + std::wstring(kNoticeStart)
           + L".<BR>To decrypt this eMail, you will need to download and install <A HREF=\""
           + kDownloadPage + L"\">Velora 10.x</A>.</FONT><BR>";
}

bool holdsNotice(std::wstring_view mailText)
{
    return mailText.find(kNoticeStart) != mailText.npos;
}

} // namespace velora
