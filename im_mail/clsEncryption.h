#pragma once
// Rijndael in its general form: blocks of 4, 6 or 8 words under keys of 4, 6 or 8 words, as its
// authors proposed it before the standard fixed the block at 4. Mails use 8 and 8, each block by
// itself.
//
// What that protects and what not: the text cannot be read without the password, but equal blocks
// give equal ciphertext, nothing notices a changed block, and the key is the password's first 16
// characters.
#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace velora {

using Bytes = std::vector<std::uint8_t>;

class clsEncryption {
public:
    clsEncryption() = default;
    ~clsEncryption();
    clsEncryption(const clsEncryption&) = delete;
    clsEncryption& operator=(const clsEncryption&) = delete;

    /// Builds all tables. Comes before gkey.
    void gentables();

    /// Sets block and key length, in words of 32 bits (each 4, 6 or 8), and expands the key of 4 *
    /// nk bytes. False, and nothing changed, when a length is none of these or the key has another
    /// size.
    bool gkey(int nb, int nk, std::span<const std::uint8_t> key);

    /// One block of 4 * nb bytes, in place; does nothing to a block of another size.
    void Encrypt(std::span<std::uint8_t> block) const;
    void Decrypt(std::span<std::uint8_t> block) const;

    /// Length word, message and zeros up to whole blocks of 32 bytes, encrypted block by block
    /// under the password's first 32 bytes. Empty when either argument is.
    Bytes EncryptData(std::span<const std::uint8_t> message,
                      std::span<const std::uint8_t> password);

    /// The message again; empty when an argument is, when the length is no multiple of 32, and when
    /// the length word says more than there is (a wrong password, mostly).
    Bytes DecryptData(std::span<const std::uint8_t> ciphertext,
                      std::span<const std::uint8_t> password);

private:
    static constexpr int kMostRoundWords = 8 * (14 + 1);

    template <int Nb>
    void encryptBlock(std::uint8_t* block) const;
    template <int Nb>
    void decryptBlock(std::uint8_t* block) const;
    std::uint8_t product(std::uint8_t a, std::uint8_t b) const;
    std::uint32_t substitute(std::uint32_t word) const;
    std::uint32_t inverseMixColumn(std::uint32_t word) const;
    void passwordKey(std::span<const std::uint8_t> password);

    std::array<std::uint8_t, 256> antilog_{}, log_{}, box_{}, inverseBox_{};
    std::array<std::uint32_t, 30> roundConstant_{};
    std::array<std::uint32_t, 256> forward_{}, inverse_{};
    int nb_ = 0, rounds_ = 0;
    std::array<std::uint32_t, kMostRoundWords> encryptKey_{}, decryptKey_{};
};

} // namespace velora
