#include "jet/UsageMap.h"

#include "jet/DataPage.h"

#include <algorithm>

namespace velora::jet {
namespace {

constexpr std::size_t kInlineHead = 5;
constexpr std::size_t kBitmapHead = 4;
constexpr PageNo kPagesPerBitmap = static_cast<PageNo>(kPageSize - kBitmapHead) * 8;
constexpr Byte kInline = 0;
constexpr Byte kReference = 1;

constexpr RowId kGlobalMap{1, 0};
/// The global map grows by this many bytes at a time; page 1 bounds it.
constexpr std::size_t kGrowth = 4;

} // namespace

Bytes UsageMap::row() const
{
    const Page& page = pager_->read(row_.page);
    const Bytes bytes = rowBytes(page, row_.row);
    require(bytes.u8(0) <= kReference, "a usage map of an unknown kind");
    return bytes;
}

/// The index-th page of bits of a wide map; 0 = none.
PageNo UsageMap::bitmap(std::size_t index) const
{
    const Bytes map = row();
    if (1 + 4 * (index + 1) > map.size())
        return 0;
    const PageNo page = map.u32(1 + 4 * index);
    if (page)
        require(pager_->read(page).u8(0) == kBitmapPage, "a usage map refers to another page");
    return page;
}

UsageMap::Bit UsageMap::find(PageNo page) const
{
    const Bytes map = row();
    const auto mask = static_cast<Byte>(1u << (page & 7));
    if (map.u8(0) == kReference) {
        const PageNo bits = bitmap(page / kPagesPerBitmap);
        return {bits, kBitmapHead + page % kPagesPerBitmap / 8, mask};
    }
    const PageNo first = map.u32(1);
    require(first % 8 == 0, "a usage map begins between bytes");
    const std::size_t index = (page - first) / 8;
    if (page < first || index >= map.size() - kInlineHead)
        return {0};
    const std::size_t rowStart = slotOf(pager_->read(row_.page), row_.row).at;
    return {row_.page, rowStart + kInlineHead + index, mask};
}

bool UsageMap::contains(PageNo page) const
{
    const Bit bit = find(page);
    return bit.page && pager_->read(bit.page).u8(bit.at) & bit.mask;
}

PageNo UsageMap::next(PageNo from) const
{
    const PageNo end = pager_->pageCount();
    while (from < end) {
        const Bit bit = find(from);
        if (bit.page) {
            const Byte byte = pager_->read(bit.page).u8(bit.at);
            if (byte & bit.mask)
                return from;
            from = byte >= bit.mask && byte ? from + 1 : (from | 7) + 1;
            continue;
        }
        const Bytes map = row();
        if (map.u8(0) == kReference)
            from = (from / kPagesPerBitmap + 1) * kPagesPerBitmap;
        else if (from < map.u32(1))
            from = map.u32(1);
        else
            return 0;
    }
    return 0;
}

void UsageMap::set(const Bit& bit, bool on)
{
    Page& page = pager_->write(bit.page);
    const Byte byte = page.u8(bit.at);
    page.put8(bit.at, on ? byte | bit.mask : byte & ~bit.mask);
}

void UsageMap::add(PageNo page, Space& space)
{
    Bit bit = find(page);
    if (!bit.page && row().u8(0) == kInline && !shiftWindow(page))
        makeWide(space);
    bit = find(page);
    if (!bit.page) {
        const std::size_t index = page / kPagesPerBitmap;
        if (1 + 4 * (index + 1) > row().size())
            throw JetError(jeterr::kTooLarge, "the database has reached its largest size");
        const PageNo bits = space.allocate();
        Page& fresh = pager_->write(bits);
        fresh.put8(0, kBitmapPage);
        fresh.put8(1, 1);
        Page& mapPage = pager_->write(row_.page);
        mapPage.put32(slotOf(mapPage, row_.row).at + 1 + 4 * index, bits);
        bit = find(page);
    }
    set(bit, true);
}

void UsageMap::remove(PageNo page)
{
    const Bit bit = find(page);
    if (bit.page)
        set(bit, false);
}

/// Moves an inline map's window so that it holds its members and `page`; false when they lie too
/// far apart.
bool UsageMap::shiftWindow(PageNo page)
{
    PageNo low = page, high = page;
    for (PageNo member = next(1); member; member = next(member + 1)) {
        low = std::min(low, member);
        high = std::max(high, member);
    }
    const PageNo first = low & ~7u;
    const PageNo reach = static_cast<PageNo>(row().size() - kInlineHead) * 8;
    if (high - first >= reach)
        return false;
    std::string fresh(row().size(), '\0');
    const Bytes old = row();
    for (PageNo member = next(1); member; member = next(member + 1)) {
        char& byte = fresh[kInlineHead + (member - first) / 8];
        byte = static_cast<char>(byte | 1 << (member & 7));
    }
    fresh.replace(0, kInlineHead, old.part(0, kInlineHead).text());
    for (int i = 0; i < 4; ++i)
        fresh[1 + i] = static_cast<char>(first >> 8 * i);
    replaceRow(pager_->write(row_.page), row_.row, Bytes(fresh));
    return true;
}

void UsageMap::makeWide(Space& space)
{
    std::vector<PageNo> members;
    for (PageNo member = next(1); member; member = next(member + 1))
        members.push_back(member);
    std::string fresh(row().size(), '\0');
    fresh[0] = kReference;
    replaceRow(pager_->write(row_.page), row_.row, Bytes(fresh));
    for (const PageNo member : members)
        add(member, space);
}

std::vector<PageNo> UsageMap::bitmapPages() const
{
    std::vector<PageNo> pages;
    const Bytes map = row();
    if (map.u8(0) == kReference)
        for (std::size_t i = 0; 1 + 4 * (i + 1) <= map.size(); ++i)
            if (const PageNo page = bitmap(i))
                pages.push_back(page);
    return pages;
}

/// Clears the bit of a page that is being taken; the map grows to hold it.
void Space::take(PageNo page)
{
    UsageMap map(pager_, kGlobalMap);
    const Bytes row = map.row();
    if (row.u8(0) == kInline && row.u32(1) == 0) {
        const std::size_t needed = kInlineHead + page / 8 + 1;
        if (needed > row.size()) {
            // What lies past the end of the file is free.
            std::string grown(row.text());
            while (grown.size() < needed)
                grown.append(kGrowth, '\xFF');
            if (!canReplace(pager_.read(kGlobalMap.page), kGlobalMap.row, grown.size()))
                throw JetError(jeterr::kTooLarge, "the database has reached its largest size");
            replaceRow(pager_.write(kGlobalMap.page), kGlobalMap.row, Bytes(grown));
        }
    }
    map.remove(page);
}

PageNo Space::allocate()
{
    const PageNo found = UsageMap(pager_, kGlobalMap).next(1);
    PageNo page = found;
    if (found) {
        // The catalogue and the map itself are never free.
        require(found > 5, "the map of free pages is wrong");
        pager_.write(found) = {};
    } else {
        pager_.append(page);
    }
    take(page);
    return page;
}

void Space::release(PageNo page)
{
    require(page > 5 && page < pager_.pageCount(), "a page that cannot be free");
    UsageMap map(pager_, kGlobalMap);
    pager_.write(page) = {};
    const UsageMap::Bit bit = map.find(page);
    if (bit.page)
        map.set(bit, true);
}

} // namespace velora::jet
