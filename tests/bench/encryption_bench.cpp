// What encrypting costs: a megabyte, and a whole mail with its tables; natively beside another
// implementation from the same compiler.
#include "bench/bench.h"
#include "im_mail/clsEncryption.h"
#include "im_mail/modMail.h"

#ifdef VELORA_HAS_MCRYPT
#include <mcrypt.h>
#endif

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

using namespace velora;
using namespace velora::bench;

namespace {

constexpr std::size_t kMegabyte = 1 << 20;
/// About the longest text whose envelope a mail holds.
constexpr std::size_t kMailCharacters = 7000;
constexpr double kMailAimMs = 1;

const Bytes kPassword = {'p', 0, 'w', 0};

constexpr int kRounds = 15;

double msOf(const std::function<void()>& body)
{
    const double start = clockMs();
    body();
    return clockMs() - start;
}

#ifdef VELORA_HAS_MCRYPT
class OtherImplementation {
public:
    OtherImplementation()
    {
        std::string name = "rijndael-256", mode = "ecb";
        other_ = mcrypt_module_open(name.data(), nullptr, mode.data(), nullptr);
        if (other_ == MCRYPT_FAILED)
            throw std::runtime_error("libmcrypt has no rijndael-256");
        Bytes key(32);
        key[0] = 'p';
        key[2] = 'w';
        mcrypt_generic_init(other_, key.data(), static_cast<int>(key.size()), nullptr);
    }
    ~OtherImplementation() { mcrypt_generic_end(other_); }
    double encrypt()
    {
        return msOf([&] { mcrypt_generic(other_, data_.data(), kMegabyte); });
    }
    double decrypt()
    {
        return msOf([&] { mdecrypt_generic(other_, data_.data(), kMegabyte); });
    }

private:
    MCRYPT other_;
    Bytes data_ = Bytes(kMegabyte);
};
#endif

} // namespace

BENCH("mail: encrypting and decrypting")
{
    const Bytes message(kMegabyte - 4, 7);
    const Bytes cipher = clsEncryption().EncryptData(message, kPassword);
    // In turns: what else the machine does weighs on all of them.
    std::vector<double> encrypt, decrypt;
#ifdef VELORA_HAS_MCRYPT
    OtherImplementation other;
    std::vector<double> otherEncrypt, otherDecrypt;
#endif
    for (int round = 0; round < kRounds; ++round) {
#ifdef VELORA_HAS_MCRYPT
        otherEncrypt.push_back(other.encrypt());
#endif
        encrypt.push_back(msOf([&] { clsEncryption().EncryptData(message, kPassword); }));
#ifdef VELORA_HAS_MCRYPT
        otherDecrypt.push_back(other.decrypt());
#endif
        decrypt.push_back(msOf([&] { clsEncryption().DecryptData(cipher, kPassword); }));
    }
#ifdef VELORA_HAS_MCRYPT
    report.row("libmcrypt, encrypting 1 MB", median(otherEncrypt));
    report.row("clsEncryption, encrypting 1 MB", median(encrypt), median(otherEncrypt));
    report.row("libmcrypt, decrypting 1 MB", median(otherDecrypt));
    report.row("clsEncryption, decrypting 1 MB", median(decrypt), median(otherDecrypt));
#else
    report.row("clsEncryption, encrypting 1 MB", median(encrypt));
    report.row("clsEncryption, decrypting 1 MB", median(decrypt));
#endif
    const std::wstring text(kMailCharacters, L'x');
    const std::wstring envelope = EncryptMailText(text, L"pw");
    report.rowWithAim("a whole mail, tables and envelope included",
                      medianMs(50, [&] { EncryptMailText(text, L"pw"); }), kMailAimMs);
    report.rowWithAim("the same, decrypted",
                      medianMs(50, [&] { DecryptMailText(envelope, L"pw"); }), kMailAimMs);
    report.row("the tables alone", medianMs(50, [] { clsEncryption().gentables(); }));
}
