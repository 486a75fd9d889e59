#include "jet/LongValue.h"

#include "jet/DataPage.h"

namespace velora::jet {
namespace {

constexpr std::uint32_t kInlineFlag = 0x80000000;
constexpr std::uint32_t kOneRowFlag = 0x40000000;
constexpr std::size_t kRawHead = 12;

Bytes longRow(Pager& pager, RowId id)
{
    const Page& page = pager.read(id.page);
    require(isDataPage(page) && ownerOf(page) == kLongValueOwner, "a long value is lost");
    return rowBytes(page, id.row);
}

void releaseRow(Pager& pager, const LongValueMaps& maps, RowId id)
{
    longRow(pager, id);
    Page& page = pager.write(id.page);
    removeRow(page, id.row);
    Space space(pager);
    UsageMap owned(pager, rowAt(maps.owned)), free(pager, rowAt(maps.free));
    if (!isEmpty(page)) {
        if (owned.contains(id.page))
            free.add(id.page, space);
        return;
    }
    owned.remove(id.page);
    free.remove(id.page);
    space.release(id.page);
}

} // namespace

std::string readLongValue(Pager& pager, Bytes raw)
{
    const std::uint32_t word = raw.u32(0);
    const std::size_t length = word & 0x3FFFFFFF;
    if (word & kInlineFlag)
        return std::string(raw.from(kRawHead).text().substr(0, length));
    if (word & kOneRowFlag)
        return std::string(longRow(pager, rowAt(raw.u32(4))).text().substr(0, length));
    std::string value;
    RowId id = rowAt(raw.u32(4));
    while (id.page && value.size() < length) {
        const Bytes row = longRow(pager, id);
        require(row.size() > 4, "a long value leads in a circle");
        value += row.from(4).text();
        id = rowAt(row.u32(0));
        pager.trim();
    }
    value.resize(std::min(value.size(), length));
    return value;
}

std::string writeLongValue(Pager& pager, const LongValueMaps& maps, std::string_view value)
{
    if (value.size() > kMaxRow)
        throw JetError(jeterr::kTooLong, "the value is too long");
    Space space(pager);
    UsageMap owned(pager, rowAt(maps.owned)), free(pager, rowAt(maps.free));
    PageNo no = free.next(1);
    while (no && !hasRoomFor(pager.read(no), value.size()))
        no = free.next(no + 1);
    if (!no) {
        no = space.allocate();
        makeDataPage(pager.write(no), kLongValueOwner);
        owned.add(no, space);
        free.add(no, space);
    }
    require(ownerOf(pager.read(no)) == kLongValueOwner, "a map lists another page");
    const Byte row = addRow(pager.write(no), Bytes(value));
    std::string raw;
    add32(raw, static_cast<std::uint32_t>(value.size()) | kOneRowFlag);
    add32(raw, pointerTo({no, row}));
    add32(raw, 0);
    return raw;
}

void releaseLongValue(Pager& pager, const LongValueMaps& maps, Bytes raw)
{
    const std::uint32_t word = raw.u32(0);
    if (word & kInlineFlag)
        return;
    RowId id = rowAt(raw.u32(4));
    if (word & kOneRowFlag) {
        releaseRow(pager, maps, id);
        return;
    }
    while (id.page) {
        const Bytes row = longRow(pager, id);
        const RowId next = row.size() >= 4 ? rowAt(row.u32(0)) : RowId{};
        releaseRow(pager, maps, id);
        id = next;
    }
}

} // namespace velora::jet
