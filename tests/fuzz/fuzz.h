#pragma once
// What the fuzz targets share.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace velora::fuzz {

/// Stops the target, which keeps the input, when something does not hold.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

inline std::string_view bytesOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace velora::fuzz
