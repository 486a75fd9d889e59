#pragma once
// Screen names: their form, AOL's index file that lists those of an installation, and the welcome
// window's caption that names the one signed on.
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// True when the text has the form of a screen name: 3 to 16 letters, digits and blanks, a letter
/// first.
bool IsScreenName(std::wstring_view text);

/// The names in AOL's "idb\main.idx": runs with the form of a screen name that stand between NUL
/// bytes, in the file's order, each once (by its key), without the blanks at the end and without
/// the edition's guest entry. Garbled content gives what can be read; at most kMostScreenNames come
/// back.
std::vector<std::wstring> screenNamesInIndex(std::string_view bytes, int edition);
inline constexpr std::size_t kMostScreenNames = 100;

/// True for an installation without an account: its only entry is "New User".
bool onlyNewUser(const std::vector<std::wstring>& names);

/// The name in the welcome window's caption: what follows the first ",", up to the first "!",
/// trimmed. Empty when there is no ",".
std::wstring welcomedName(std::wstring_view caption);

} // namespace velora
