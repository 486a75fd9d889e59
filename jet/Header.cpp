#include "jet/Header.h"

#include <numeric>

namespace velora::jet {
namespace {

constexpr std::string_view kSignature("\0\1\0\0Standard Jet DB\0", 20);
constexpr std::size_t kVersion = 0x14;
constexpr std::size_t kMasked = 0x18;
constexpr std::size_t kMaskSize = 128;
constexpr Byte kMaskKey[4] = {0xC7, 0xDA, 0x39, 0x6B};
constexpr std::size_t kCommitWords = 0xE00;
constexpr Byte kCreationDate[8] = {0xBC, 0x72, 0x1F, 0x7D, 0xF1, 0x9F, 0xE2, 0x40};
constexpr std::uint32_t kCreationDay = 38143; // the whole days of that date
constexpr std::uint32_t kEngineBuild = 9756;
constexpr std::uint32_t kGeneralSort = 0x0409;

/// The constant stream of bytes (RC4) over a part of the header.
void mask(Page& page)
{
    std::array<Byte, 256> state;
    std::iota(state.begin(), state.end(), Byte{0});
    for (unsigned i = 0, j = 0; i < 256; ++i) {
        j = (j + state[i] + kMaskKey[i % 4]) & 255;
        std::swap(state[i], state[j]);
    }
    for (unsigned n = 0, i = 0, j = 0; n < kMaskSize; ++n) {
        i = (i + 1) & 255;
        j = (j + state[i]) & 255;
        std::swap(state[i], state[j]);
        page.bytes[kMasked + n] ^= state[(state[i] + state[j]) & 255];
    }
}

} // namespace

Page newHeader()
{
    Page page;
    page.put(0, Bytes(kSignature));
    page.put32(kVersion, 1);
    page.put32(0x18, 0x100); // the maps of free pages: rows 0 and 1 of page 1
    page.put32(0x1C, 0x101);
    for (unsigned table = 0; table < 4; ++table)
        page.put32(0x20 + 4 * table, 2 + table);
    page.put16(0x3C, 1252);
    for (unsigned i = 0; i < 10; ++i)
        page.put32(0x42 + 4 * i, kCreationDay); // no password
    page.put32(0x6A, kEngineBuild);
    page.put32(0x6E, kGeneralSort);
    page.put(0x72, Bytes(kCreationDate, sizeof kCreationDate));
    mask(page);
    page.put32(0x98, 0x654);
    page.put(0x9C, Bytes(std::string_view("4.0")));
    for (std::size_t at = kCommitWords; at < kPageSize; at += 2)
        page.put16(at, at == kCommitWords ? 0x0101 : 0x0100);
    return page;
}

void checkHeader(const Page& header)
{
    require(header.view().part(0, kSignature.size()).text() == kSignature
                && header.u32(kVersion) == 1,
            "not a Jet 4 database");
    Page clear = header;
    mask(clear);
    require(clear.u32(0x18) == 0x100 && clear.u32(0x20) == 2 && clear.u32(0x24) == 3,
            "the header is damaged");
    require(clear.u32(0x3E) == 0, "the database is encrypted");
    require(clear.u32(0x6E) == kGeneralSort, "the database has another sort order");
    for (std::size_t at = kCommitWords; at < kPageSize; at += 2)
        require(header.u16(at) != 0, "the last writer was interrupted");
}

} // namespace velora::jet
