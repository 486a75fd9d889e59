#pragma once
// Long values (memo and object fields): twelve bytes in the row, and mostly pages of their own.
#include "jet/TableDef.h"
#include "jet/UsageMap.h"

namespace velora::jet {

/// The value behind the twelve (or more) bytes of a row; 3049 when its pages do not hold together.
std::string readLongValue(Pager& pager, Bytes raw);
/// Stores a value of up to one page and answers the twelve bytes for the row; 3163 when longer.
std::string writeLongValue(Pager& pager, const LongValueMaps& maps, std::string_view value);
/// Gives a value's rows back.
void releaseLongValue(Pager& pager, const LongValueMaps& maps, Bytes raw);

} // namespace velora::jet
