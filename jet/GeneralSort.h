#pragma once
// The weights of the General sort order of Jet 4, as far as they are known: Windows-1252.
#include <cstdint>

namespace velora::jet {

/// inlineCount 1 or 2: that many bytes (first, second) stand for the character, and `extra` (0 =
/// none) tells its accent. inlineCount 0: the character weighs only at the last level, by `first`;
/// with first = 0 not at all.
struct SortWeight {
    std::uint8_t inlineCount, first, second, extra;
};

/// Null for a character whose weight is not known.
const SortWeight* sortWeight(char16_t unit);

} // namespace velora::jet
