#include "sounds/modMediaPlayer.h"

#include "base/text.h"

#include <algorithm>

namespace velora {

std::wstring versionNumber(std::uint32_t mostSignificant, std::uint32_t leastSignificant)
{
    const auto digit = [](std::uint32_t part) {
        return std::to_wstring(std::min<std::uint32_t>(part, 9));
    };
    return digit(mostSignificant >> 16) + digit(mostSignificant & 0xFFFF)
           + std::to_wstring(leastSignificant >> 16) + std::to_wstring(leastSignificant & 0xFFFF);
}

bool isMediaPlayerVersion(const std::wstring& number)
{
    return parseLong(number.substr(0, 2)).value_or(0) >= 64;
}

} // namespace velora
