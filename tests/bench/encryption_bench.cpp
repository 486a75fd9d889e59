// What encrypting costs: a megabyte, and a whole mail with its tables; natively beside another
// implementation from the same compiler.
#include "bench/bench.h"
#include "im_mail/clsEncryption.h"
#include "im_mail/modMail.h"

#ifdef VELORA_HAS_MCRYPT
#include <mcrypt.h>
#endif

#include <stdexcept>
#include <string>

using namespace velora;
using namespace velora::bench;

namespace {

constexpr std::size_t kMegabyte = 1 << 20;
/// About the longest text whose envelope a mail holds.
constexpr std::size_t kMailCharacters = 7000;
constexpr double kMailAimMs = 1;

const Bytes kPassword = {'p', 0, 'w', 0};

#ifdef VELORA_HAS_MCRYPT
struct Times {
    double encrypt, decrypt;
};

Times otherImplementation()
{
    std::string name = "rijndael-256", mode = "ecb";
    MCRYPT other = mcrypt_module_open(name.data(), nullptr, mode.data(), nullptr);
    if (other == MCRYPT_FAILED)
        throw std::runtime_error("libmcrypt has no rijndael-256");
    Bytes key(32), data(kMegabyte);
    key[0] = 'p';
    key[2] = 'w';
    mcrypt_generic_init(other, key.data(), static_cast<int>(key.size()), nullptr);
    const int size = static_cast<int>(data.size());
    const Times times{medianMs(9, [&] { mcrypt_generic(other, data.data(), size); }),
                      medianMs(9, [&] { mdecrypt_generic(other, data.data(), size); })};
    mcrypt_generic_end(other);
    return times;
}
#endif

} // namespace

BENCH("mail: encrypting and decrypting")
{
    const Bytes message(kMegabyte - 4, 7);
    const Bytes cipher = clsEncryption().EncryptData(message, kPassword);
    const double encrypt = medianMs(9, [&] { clsEncryption().EncryptData(message, kPassword); });
    const double decrypt = medianMs(9, [&] { clsEncryption().DecryptData(cipher, kPassword); });
#ifdef VELORA_HAS_MCRYPT
    const Times other = otherImplementation();
    report.row("libmcrypt, encrypting 1 MB", other.encrypt);
    report.row("clsEncryption, encrypting 1 MB", encrypt, other.encrypt);
    report.row("libmcrypt, decrypting 1 MB", other.decrypt);
    report.row("clsEncryption, decrypting 1 MB", decrypt, other.decrypt);
#else
    report.row("clsEncryption, encrypting 1 MB", encrypt);
    report.row("clsEncryption, decrypting 1 MB", decrypt);
#endif
    const std::wstring text(kMailCharacters, L'x');
    const std::wstring envelope = EncryptMailText(text, L"pw");
    report.rowWithAim("a whole mail, tables and envelope included",
                      medianMs(50, [&] { EncryptMailText(text, L"pw"); }), kMailAimMs);
    report.rowWithAim("the same, decrypted",
                      medianMs(50, [&] { DecryptMailText(envelope, L"pw"); }), kMailAimMs);
    report.row("the tables alone", medianMs(50, [] { clsEncryption().gentables(); }));
}
