#include "im_mail/clsEncryption.h"

#include "base/secret.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace velora {
namespace {

constexpr std::size_t kBlockBytes = 32;

/// Doubling in GF(2^8) with the polynomial 0x11B.
constexpr std::uint8_t doubled(std::uint8_t a)
{
    return static_cast<std::uint8_t>(a << 1 ^ (a & 0x80 ? 0x1B : 0));
}

constexpr std::uint32_t packed(unsigned b0, unsigned b1, unsigned b2, unsigned b3)
{
    return b0 | b1 << 8 | b2 << 16 | b3 << 24;
}

std::uint32_t loadWord(const std::uint8_t* p)
{
    return packed(p[0], p[1], p[2], p[3]);
}

void storeWord(std::uint8_t* p, std::uint32_t word)
{
    for (int k = 0; k < 4; ++k)
        p[k] = static_cast<std::uint8_t>(word >> (8 * k));
}

constexpr std::size_t byteAt(std::uint32_t word, int k)
{
    return word >> (8 * k) & 255;
}

/// How far each row of the state is shifted.
template <int Nb>
constexpr std::array<int, 4> kRowShift =
    Nb == 8 ? std::array<int, 4>{0, 1, 3, 4} : std::array<int, 4>{0, 1, 2, 3};

/// The byte of a row that the row shift brings into column J.
template <int Nb, int Direction, int J, int Row>
std::size_t shifted(const std::uint32_t* x)
{
    return byteAt(x[(J + Direction * kRowShift<Nb>[Row] + Nb) % Nb], Row);
}

/// One column of the next state, from the four columns that the row shift brings together.
template <int Nb, int Direction, int J>
std::uint32_t mixed(const std::uint32_t* table, const std::uint32_t* x)
{
    return table[shifted<Nb, Direction, J, 0>(x)]
           ^ std::rotl(table[shifted<Nb, Direction, J, 1>(x)], 8)
           ^ std::rotl(table[shifted<Nb, Direction, J, 2>(x)], 16)
           ^ std::rotl(table[shifted<Nb, Direction, J, 3>(x)], 24);
}

/// The last round has no mixing of columns.
template <int Nb, int Direction, int J>
std::uint32_t boxed(const std::uint8_t* box, const std::uint32_t* x)
{
    return packed(box[shifted<Nb, Direction, J, 0>(x)], box[shifted<Nb, Direction, J, 1>(x)],
                  box[shifted<Nb, Direction, J, 2>(x)], box[shifted<Nb, Direction, J, 3>(x)]);
}

/// All rounds over one block; `Direction` is that of the row shift. The columns are written out at
/// compile time: which word a byte comes from must not be worked out anew for each block.
template <int Nb, int Direction, int... J>
void transform(std::uint8_t* block, const std::uint32_t* key, int rounds,
               const std::uint32_t* table, const std::uint8_t* box,
               std::integer_sequence<int, J...>)
{
    std::uint32_t x[Nb], y[Nb];
    ((x[J] = loadWord(block + 4 * J) ^ key[J]), ...);
    // Every number of rounds is even: two at a time, from x to y and back.
    for (int round = 2; round < rounds; round += 2) {
        ((y[J] = mixed<Nb, Direction, J>(table, x) ^ key[Nb + J]), ...);
        key += 2 * Nb;
        ((x[J] = mixed<Nb, Direction, J>(table, y) ^ key[J]), ...);
    }
    ((y[J] = mixed<Nb, Direction, J>(table, x) ^ key[Nb + J]), ...);
    key += 2 * Nb;
    (storeWord(block + 4 * J, boxed<Nb, Direction, J>(box, y) ^ key[J]), ...);
}

} // namespace

clsEncryption::~clsEncryption()
{
    wipe(encryptKey_.data(), sizeof encryptKey_);
    wipe(decryptKey_.data(), sizeof decryptKey_);
}

std::uint8_t clsEncryption::product(std::uint8_t a, std::uint8_t b) const
{
    return a && b ? antilog_[(log_[a] + log_[b]) % 255] : 0;
}

void clsEncryption::gentables()
{
    // 3 generates the field's 255 non-zero elements.
    std::uint8_t power = 1;
    for (int i = 0; i < 256; ++i) {
        antilog_[i] = power;
        if (i < 255)
            log_[power] = static_cast<std::uint8_t>(i);
        power = static_cast<std::uint8_t>(power ^ doubled(power));
    }
    for (int i = 0; i < 256; ++i) {
        const std::uint8_t v = i ? antilog_[255 - log_[i]] : 0;
        const auto s = static_cast<std::uint8_t>(v ^ std::rotl(v, 1) ^ std::rotl(v, 2)
                                                 ^ std::rotl(v, 3) ^ std::rotl(v, 4) ^ 0x63);
        box_[i] = s;
        inverseBox_[s] = static_cast<std::uint8_t>(i);
    }
    std::uint8_t constant = 1;
    for (std::uint32_t& word : roundConstant_) {
        word = constant;
        constant = doubled(constant);
    }
    for (int i = 0; i < 256; ++i) {
        const std::uint8_t s = box_[i], r = inverseBox_[i];
        forward_[i] = packed(doubled(s), s, s, doubled(s) ^ s);
        inverse_[i] =
            packed(product(0x0E, r), product(0x09, r), product(0x0D, r), product(0x0B, r));
    }
}

std::uint32_t clsEncryption::substitute(std::uint32_t word) const
{
    return packed(box_[byteAt(word, 0)], box_[byteAt(word, 1)], box_[byteAt(word, 2)],
                  box_[byteAt(word, 3)]);
}

std::uint32_t clsEncryption::inverseMixColumn(std::uint32_t word) const
{
    // The inverse table holds the coefficients times the inverse box; the box undoes the latter.
    std::uint32_t mixedWord = 0;
    for (int row = 0; row < 4; ++row)
        mixedWord ^= std::rotl(inverse_[box_[byteAt(word, row)]], 8 * row);
    return mixedWord;
}

bool clsEncryption::gkey(int nb, int nk, std::span<const std::uint8_t> key)
{
    const auto valid = [](int n) { return n == 4 || n == 6 || n == 8; };
    if (!valid(nb) || !valid(nk) || key.size() != static_cast<std::size_t>(4 * nk))
        return false;
    nb_ = nb;
    rounds_ = 6 + std::max(nb, nk);
    const int words = nb * (rounds_ + 1);
    auto& k = encryptKey_;
    for (int i = 0; i < nk; ++i)
        k[i] = loadWord(key.data() + 4 * i);
    for (int i = nk; i < words; ++i) {
        std::uint32_t word = k[i - 1];
        if (i % nk == 0)
            word = substitute(std::rotr(word, 8)) ^ roundConstant_[i / nk - 1];
        else if (nk > 6 && i % nk == 4)
            word = substitute(word);
        k[i] = k[i - nk] ^ word;
    }
    // Decryption takes the rounds from the last, all but the outer two with their columns unmixed.
    for (int round = 0; round <= rounds_; ++round)
        for (int j = 0; j < nb; ++j) {
            const std::uint32_t word = k[(rounds_ - round) * nb + j];
            decryptKey_[round * nb + j] =
                round == 0 || round == rounds_ ? word : inverseMixColumn(word);
        }
    return true;
}

template <int Nb>
void clsEncryption::encryptBlock(std::uint8_t* block) const
{
    transform<Nb, 1>(block, encryptKey_.data(), rounds_, forward_.data(), box_.data(),
                     std::make_integer_sequence<int, Nb>());
}

template <int Nb>
void clsEncryption::decryptBlock(std::uint8_t* block) const
{
    transform<Nb, -1>(block, decryptKey_.data(), rounds_, inverse_.data(), inverseBox_.data(),
                      std::make_integer_sequence<int, Nb>());
}

void clsEncryption::Encrypt(std::span<std::uint8_t> block) const
{
    if (nb_ == 0 || block.size() != static_cast<std::size_t>(4 * nb_))
        return;
    if (nb_ == 8)
        encryptBlock<8>(block.data());
    else if (nb_ == 6)
        encryptBlock<6>(block.data());
    else
        encryptBlock<4>(block.data());
}

void clsEncryption::Decrypt(std::span<std::uint8_t> block) const
{
    if (nb_ == 0 || block.size() != static_cast<std::size_t>(4 * nb_))
        return;
    if (nb_ == 8)
        decryptBlock<8>(block.data());
    else if (nb_ == 6)
        decryptBlock<6>(block.data());
    else
        decryptBlock<4>(block.data());
}

void clsEncryption::passwordKey(std::span<const std::uint8_t> password)
{
    std::array<std::uint8_t, kBlockBytes> key{};
    std::copy_n(password.begin(), std::min(password.size(), key.size()), key.begin());
    gentables();
    gkey(8, 8, key);
    wipe(key.data(), key.size());
}

Bytes clsEncryption::EncryptData(std::span<const std::uint8_t> message,
                                 std::span<const std::uint8_t> password)
{
    if (message.empty() || password.empty() || message.size() > 0xFFFFFFFFu - 4 - kBlockBytes)
        return {};
    passwordKey(password);
    const std::size_t total = (message.size() + 4 + kBlockBytes - 1) / kBlockBytes * kBlockBytes;
    Bytes data(total);
    storeWord(data.data(), static_cast<std::uint32_t>(message.size()));
    std::copy(message.begin(), message.end(), data.begin() + 4);
    for (std::size_t at = 0; at < total; at += kBlockBytes)
        encryptBlock<8>(data.data() + at);
    return data;
}

Bytes clsEncryption::DecryptData(std::span<const std::uint8_t> ciphertext,
                                 std::span<const std::uint8_t> password)
{
    if (ciphertext.empty() || password.empty() || ciphertext.size() % kBlockBytes != 0)
        return {};
    passwordKey(password);
    Bytes data(ciphertext.begin(), ciphertext.end());
    const WipeOnExit wipePlain(data);
    for (std::size_t at = 0; at < data.size(); at += kBlockBytes)
        decryptBlock<8>(data.data() + at);
    const std::uint32_t length = loadWord(data.data());
    if (length > data.size() - 4)
        return {};
    return Bytes(data.begin() + 4, data.begin() + 4 + static_cast<std::ptrdiff_t>(length));
}

} // namespace velora
