#pragma once
// Page 0 of the file.
#include "jet/Pager.h"

namespace velora::jet {

/// The two bytes that hide the security ids of the catalogue. How a file's follow from its creation
/// date is not known, so a new file carries a date whose bytes are.
inline constexpr Byte kNewFileSidMask[2] = {0xA5, 0x32};

Page newHeader();
/// 3049 when the page begins no Jet 4 database in the General sort order, or when the engine that
/// wrote it last was interrupted.
void checkHeader(const Page& header);

} // namespace velora::jet
