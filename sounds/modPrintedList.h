#pragma once
// A list as the text of a mail: a head and a row for each entry.
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace velora {

/// What AOL takes in one mail.
inline constexpr std::size_t kLongestMail = 29000;

struct PrintedList {
    std::wstring html;
    std::size_t entries; ///< of the list, how many found room in it
};

/// `heading` is the markup behind the list's name; row(i) that of entry i of `count`. What would
/// make the mail longer than `limit` is left out, whole rows at a time.
PrintedList printedList(std::wstring_view listName, std::wstring_view heading, std::size_t count,
                        const std::function<std::wstring(std::size_t)>& row,
                        std::size_t limit = kLongestMail);

/// What a name or tag holds is text, whatever it looks like; it stays on one line.
std::wstring printedText(std::wstring_view text);

} // namespace velora
