#pragma once
// The rows of one data page: a table's records, usage maps, long values.
#include "jet/Page.h"

namespace velora::jet {

inline constexpr std::size_t kDataHead = 14;
inline constexpr std::size_t kMaxRow = 4060;
inline constexpr std::size_t kMaxRows = 255;
/// Owner of the pages that hold long values: the letters "LVAL".
inline constexpr PageNo kLongValueOwner = 0x4C41564C;

struct Slot {
    std::size_t at = 0;
    std::size_t size = 0;
    bool hidden = false;  ///< deleted, or the target of an overflow pointer
    bool pointer = false; ///< holds only the place of the row
};

void makeDataPage(Page& page, PageNo owner);
bool isDataPage(const Page& page);
PageNo ownerOf(const Page& page);
std::size_t rowsOf(const Page& page);
/// The slot `row` and its bytes; 3049 when they do not lie in the page.
Slot slotOf(const Page& page, std::size_t row);
Bytes rowBytes(const Page& page, std::size_t row);

std::size_t freeBytes(const Page& page);
bool hasRoomFor(const Page& page, std::size_t size);
/// The new row's number. The caller has asked hasRoomFor.
Byte addRow(Page& page, Bytes row, bool hidden = false);
/// True when the row could be made that long.
bool canReplace(const Page& page, std::size_t row, std::size_t size);
void replaceRow(Page& page, std::size_t row, Bytes with);
/// Gives the row's bytes back; its slot stays, so that no other row changes its number.
void removeRow(Page& page, std::size_t row);
/// True when no slot holds anything any more.
bool isEmpty(const Page& page);

} // namespace velora::jet
