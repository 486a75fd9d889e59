#include "jet/DataPage.h"

namespace velora::jet {
namespace {

constexpr unsigned kHidden = 0x8000;
constexpr unsigned kPointer = 0x4000;
constexpr unsigned kOffset = 0x1FFF;

std::size_t slotAt(std::size_t row)
{
    return kDataHead + 2 * row;
}

/// Where the lowest row begins.
std::size_t lowest(const Page& page)
{
    const std::size_t rows = rowsOf(page);
    return rows ? slotOf(page, rows - 1).at : kPageSize;
}

void setFree(Page& page)
{
    page.put16(2, static_cast<unsigned>(freeBytes(page)));
}

/// Moves everything below the row `row` by `shift` bytes (up when positive), and with it the starts
/// of that row and the ones after it.
void moveBelow(Page& page, std::size_t row, long shift)
{
    const std::size_t from = lowest(page);
    const Slot slot = slotOf(page, row);
    const std::size_t rows = rowsOf(page);
    for (std::size_t i = row; i < rows; ++i)
        slotOf(page, i); // all of them are sound before anything moves
    page.put(from + shift, page.view().part(from, slot.at - from));
    for (std::size_t i = row; i < rows; ++i)
        page.put16(slotAt(i), static_cast<unsigned>(page.u16(slotAt(i)) + shift));
}

} // namespace

void makeDataPage(Page& page, PageNo owner)
{
    page = {};
    page.put8(0, kDataPage);
    page.put8(1, 1);
    page.put32(4, owner);
    page.put16(2, kPageSize - kDataHead);
}

bool isDataPage(const Page& page)
{
    return page.u8(0) == kDataPage && page.u8(1) == 1;
}

PageNo ownerOf(const Page& page)
{
    return page.u32(4);
}

std::size_t rowsOf(const Page& page)
{
    require(isDataPage(page), "no data page");
    const std::size_t rows = page.u16(12);
    require(slotAt(rows) <= kPageSize, "a data page has more rows than it can");
    return rows;
}

Slot slotOf(const Page& page, std::size_t row)
{
    const std::size_t rows = rowsOf(page);
    require(row < rows, "a row that is not there");
    const unsigned word = page.u16(slotAt(row));
    const std::size_t at = word & kOffset;
    const std::size_t end = row ? page.u16(slotAt(row - 1)) & kOffset : kPageSize;
    require(at >= slotAt(rows) && at <= end && end <= kPageSize, "a row lies outside its page");
    return {at, end - at, (word & kHidden) != 0, (word & kPointer) != 0};
}

Bytes rowBytes(const Page& page, std::size_t row)
{
    const Slot slot = slotOf(page, row);
    return page.view().part(slot.at, slot.size);
}

std::size_t freeBytes(const Page& page)
{
    return lowest(page) - slotAt(rowsOf(page));
}

bool hasRoomFor(const Page& page, std::size_t size)
{
    return rowsOf(page) < kMaxRows && size <= kMaxRow && freeBytes(page) >= size + 2;
}

Byte addRow(Page& page, Bytes row, bool hidden)
{
    require(hasRoomFor(page, row.size()), "a data page is full");
    const std::size_t rows = rowsOf(page);
    const std::size_t at = lowest(page) - row.size();
    page.put16(12, static_cast<unsigned>(rows + 1));
    page.put16(slotAt(rows), static_cast<unsigned>(at) | (hidden ? kHidden : 0));
    page.put(at, row);
    setFree(page);
    return static_cast<Byte>(rows);
}

bool canReplace(const Page& page, std::size_t row, std::size_t size)
{
    return size <= kMaxRow && size <= slotOf(page, row).size + freeBytes(page);
}

void replaceRow(Page& page, std::size_t row, Bytes with)
{
    require(canReplace(page, row, with.size()), "a data page is full");
    const Slot slot = slotOf(page, row);
    const long shift = static_cast<long>(slot.size) - static_cast<long>(with.size());
    if (shift)
        moveBelow(page, row, shift);
    page.put(slot.at + shift, with);
    setFree(page);
}

void removeRow(Page& page, std::size_t row)
{
    const Slot slot = slotOf(page, row);
    if (slot.size)
        moveBelow(page, row, static_cast<long>(slot.size));
    page.put16(slotAt(row), static_cast<unsigned>(slot.at + slot.size) | kHidden | kPointer);
    setFree(page);
}

bool isEmpty(const Page& page)
{
    const std::size_t rows = rowsOf(page);
    for (std::size_t row = 0; row < rows; ++row)
        if (slotOf(page, row).size)
            return false;
    return true;
}

} // namespace velora::jet
