#pragma once
// The user's hot words as the settings keep them: the values of the section "Chat HotWords". Pure.
#include <string>
#include <vector>

namespace velora {

inline constexpr std::size_t kMostHotWords = 500;
inline constexpr int kLongestHotWord = 100;

/// Each value's text, or its name where the text is blank.
std::vector<std::wstring> hotWords();
/// Makes these the hot words; the values of those that stay are left as they are. Throws Error
/// when the settings refuse.
void setHotWords(const std::vector<std::wstring>& words);

} // namespace velora
