#pragma once
#include <string_view>

namespace velora {

/// Case-sensitive match of the whole text against a pattern in which "*" stands for any run of
/// characters, the empty one included; every other character stands for itself.
bool wildcardMatch(std::wstring_view pattern, std::wstring_view text);

} // namespace velora
