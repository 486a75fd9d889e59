#include "jet/IndexKey.h"

#include "base/text.h"
#include "jet/GeneralSort.h"

namespace velora::jet {
namespace {

constexpr std::size_t kMaxUnits = 255;
constexpr char kNull = 0x00;
constexpr char kValue = 0x7F;
constexpr char kNoExtra = 0x02;
/// Leads the four bytes of a character without a known weight; above every known lead byte.
constexpr char kUnknownLead = '\x7E';

void complement(std::string& key, std::size_t from)
{
    for (std::size_t i = from; i < key.size(); ++i)
        key[i] = static_cast<char>(~key[i]);
}

/// The UTF-16 units that count, as bytes.
std::string units(std::wstring_view text)
{
    std::string bytes = toUtf16le(text.substr(0, kMaxUnits));
    if (bytes.size() > 2 * kMaxUnits)
        bytes.resize(2 * kMaxUnits);
    while (bytes.size() >= 2 && bytes.compare(bytes.size() - 2, 2, std::string_view(" \0", 2)) == 0)
        bytes.resize(bytes.size() - 2);
    return bytes;
}

void addUnknown(std::string& key, char16_t unit)
{
    key += kUnknownLead;
    add8(key, 0x10u + (unit >> 12));
    add8(key, 0x10u + (unit >> 6 & 63));
    add8(key, 0x10u + (unit & 63));
}

} // namespace

void addNullKey(std::string& key, bool ascending)
{
    key += ascending ? kNull : static_cast<char>(~kNull);
}

void addLongKey(std::string& key, std::int32_t value, bool ascending)
{
    const std::size_t from = key.size();
    const std::uint32_t flipped = static_cast<std::uint32_t>(value) ^ 0x80000000u;
    key += kValue;
    for (int shift = 24; shift >= 0; shift -= 8)
        add8(key, flipped >> shift);
    if (!ascending)
        complement(key, from);
}

void addTextKey(std::string& key, std::wstring_view text, bool ascending)
{
    const std::size_t from = key.size();
    const std::string bytes = units(text);
    std::string extra, last;
    unsigned position = 0; // characters with inline bytes so far
    key += kValue;
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        const auto unit = static_cast<char16_t>(Bytes(bytes).u16(i));
        const SortWeight* weight = sortWeight(unit);
        if (!weight) {
            addUnknown(key, unit);
            ++position;
        } else if (weight->inlineCount) {
            add8(key, weight->first);
            if (weight->inlineCount == 2)
                add8(key, weight->second);
            if (weight->extra) {
                extra.resize(position, kNoExtra);
                add8(extra, weight->extra);
            }
            ++position;
        } else if (weight->first) {
            const unsigned place = (7 + 4 * position) | 0x8000;
            add8(last, place >> 8);
            add8(last, place);
            add8(last, 6);
            add8(last, weight->first);
        }
    }
    key += '\x01';
    key += extra;
    if (!last.empty())
        key.append("\x01\x01\x01").append(last);
    key += '\0';
    if (!ascending) {
        complement(key, from);
        key += '\0';
    }
}

void addRowId(std::string& entry, RowId row)
{
    add8(entry, row.page >> 16);
    add8(entry, row.page >> 8);
    add8(entry, row.page);
    add8(entry, row.row);
}

RowId rowIdAt(Bytes entry, std::size_t at)
{
    return {static_cast<PageNo>(entry.u8(at) << 16 | entry.u8(at + 1) << 8 | entry.u8(at + 2)),
            entry.u8(at + 3)};
}

} // namespace velora::jet
