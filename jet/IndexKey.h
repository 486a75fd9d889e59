#pragma once
// Keys of index entries: bytes whose plain order is the order of the values.
#include "jet/Page.h"

#include <optional>

namespace velora::jet {

/// Null sorts before every value (after, when descending).
void addNullKey(std::string& key, bool ascending = true);
void addLongKey(std::string& key, std::int32_t value, bool ascending = true);

/// Text by the General sort order: its first 255 UTF-16 units without trailing blanks. Equal bytes
/// are what seek "=" calls equal: case does not count, accents do, "'" and "-" count last.
/// A character outside Windows-1252 sorts behind all others by its number: the order of the real
/// engine for those is not known, so an index that holds one is right for this engine only.
void addTextKey(std::string& key, std::wstring_view text, bool ascending = true);

/// Bytes that a key of one text column may take at most.
inline constexpr std::size_t kMaxTextKey = 1 + 255 * 4 + 6;

/// What ends an entry: the row, page first, big-endian.
void addRowId(std::string& entry, RowId row);
RowId rowIdAt(Bytes entry, std::size_t at);

} // namespace velora::jet
