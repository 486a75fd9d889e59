// All nine combinations of block and key length against an independent implementation.
#include "base/random.h"
#include "im_mail/clsEncryption.h"

#include <doctest/doctest.h>
#include <mcrypt.h>
#include <string>

using namespace velora;

TEST_CASE("all block and key lengths agree with another implementation")
{
    SystemRandom random(42);
    const auto randomBytes = [&](std::size_t n) {
        Bytes bytes(n);
        for (auto& b : bytes)
            b = static_cast<std::uint8_t>(random.rnd() * 256);
        return bytes;
    };
    int differences = 0, pairs = 0;
    for (const int nb : {4, 6, 8}) {
        std::string name = "rijndael-" + std::to_string(32 * nb), mode = "ecb";
        for (int round = 0; round < 1200; ++round)
            for (const int nk : {4, 6, 8}) {
                MCRYPT other = mcrypt_module_open(name.data(), nullptr, mode.data(), nullptr);
                REQUIRE(other != MCRYPT_FAILED);
                Bytes key = randomBytes(static_cast<std::size_t>(4 * nk));
                const Bytes plain = randomBytes(static_cast<std::size_t>(4 * nb));
                REQUIRE(
                    mcrypt_generic_init(other, key.data(), static_cast<int>(key.size()), nullptr)
                    >= 0);
                Bytes theirs = plain, ours = plain;
                mcrypt_generic(other, theirs.data(), static_cast<int>(theirs.size()));
                mcrypt_generic_end(other);

                clsEncryption cipher;
                cipher.gentables();
                REQUIRE(cipher.gkey(nb, nk, key));
                cipher.Encrypt(ours);
                differences += ours != theirs;
                cipher.Decrypt(ours);
                differences += ours != plain;
                ++pairs;
            }
    }
    CHECK(pairs >= 10000);
    CHECK(differences == 0);
}
