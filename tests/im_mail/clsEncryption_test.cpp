#include "im_mail/clsEncryption.h"

#include "base/random.h"

#include <doctest/doctest.h>
#include <string>

using namespace velora;

namespace {

Bytes fromHex(const std::string& hex)
{
    Bytes bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(hex.substr(i, 2), nullptr, 16)));
    return bytes;
}

Bytes counting(std::size_t n)
{
    Bytes bytes(n);
    for (std::size_t i = 0; i < n; ++i)
        bytes[i] = static_cast<std::uint8_t>(i);
    return bytes;
}

Bytes word(std::uint32_t value)
{
    return {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
            static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 24)};
}

} // namespace

TEST_CASE("the published vectors of the 128-bit block")
{
    struct Row {
        int nk;
        const char* cipher;
    };
    for (const Row& row :
         {Row{4, "69c4e0d86a7b0430d8cdb78070b4c55a"}, Row{6, "dda97ca4864cdfe06eaf70a0ec0d7191"},
          Row{8, "8ea2b7ca516745bfeafc49904b496089"}}) {
        CAPTURE(row.nk);
        clsEncryption cipher;
        cipher.gentables();
        REQUIRE(cipher.gkey(4, row.nk, counting(static_cast<std::size_t>(4 * row.nk))));
        const Bytes plain = fromHex("00112233445566778899aabbccddeeff");
        Bytes block = plain;
        cipher.Encrypt(block);
        CHECK(block == fromHex(row.cipher));
        cipher.Decrypt(block);
        CHECK(block == plain);
    }
}

TEST_CASE("a known mail text")
{
    const Bytes password = {'p', 0, 'w', 0};
    const Bytes text = {'H', 0, 'e', 0, 'l', 0, 'l', 0, 'o', 0};
    clsEncryption cipher;
    CHECK(cipher.EncryptData(text, password)
          == fromHex("BDF418D6CC50929D483C3B5E65877582A65B40648F9EBD0B1E509524D2EE78FC"));
}

TEST_CASE("every length of message comes back, in whole blocks")
{
    SystemRandom random(5);
    const Bytes password = {1, 2, 3};
    for (std::size_t length = 1; length < 200; ++length) {
        Bytes message(length);
        for (auto& b : message)
            b = static_cast<std::uint8_t>(random.rnd() * 256);
        clsEncryption cipher;
        const Bytes data = cipher.EncryptData(message, password);
        CHECK(data.size() == (length + 4 + 31) / 32 * 32);
        CHECK(cipher.DecryptData(data, password) == message);
    }
}

TEST_CASE("only the password's first 32 bytes count")
{
    const Bytes message = {1, 2, 3, 4};
    Bytes a = counting(40), b = a;
    b[35] ^= 1;
    clsEncryption cipher;
    const Bytes data = cipher.EncryptData(message, a);
    CHECK(cipher.DecryptData(data, b) == message);
    b[31] ^= 1;
    CHECK(cipher.EncryptData(message, b) != data);
}

TEST_CASE("a length word that says too much gives nothing")
{
    const Bytes password = {7};
    Bytes key(32);
    key[0] = 7;
    struct Row {
        std::uint32_t length;
        std::size_t expected;
    };
    for (const Row& row : {Row{28, 28}, Row{29, 0}, Row{32, 0}, Row{0x80000000u, 0},
                           Row{0xFFFFFFFFu, 0}, Row{0, 0}}) {
        CAPTURE(row.length);
        clsEncryption cipher;
        cipher.gentables();
        cipher.gkey(8, 8, key);
        Bytes block = word(row.length);
        block.resize(32, 9);
        cipher.Encrypt(block);
        CHECK(cipher.DecryptData(block, password).size() == row.expected);
    }
}

TEST_CASE("empty arguments and odd lengths give nothing")
{
    clsEncryption cipher;
    const Bytes some = counting(31);
    CHECK(cipher.EncryptData({}, some).empty());
    CHECK(cipher.EncryptData(some, {}).empty());
    CHECK(cipher.DecryptData(some, some).empty());
    CHECK(cipher.DecryptData({}, some).empty());
    CHECK_FALSE(cipher.gkey(5, 4, counting(16)));
    CHECK_FALSE(cipher.gkey(4, 4, counting(15)));
}
