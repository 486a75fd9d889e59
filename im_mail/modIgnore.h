#pragma once
// The ignore lists: text files of one screen name a line, optionally a TAB and the day (date
// serial) on which the ignoring ends. Pure over the file's text.
#include <string>
#include <string_view>

namespace velora {

/// True when a line of the list names the sender and has not expired: its day is greater than
/// `today`, or it has none. A line whose day is no number counts for good, so that a slip of the
/// hand in the file lets nobody through.
bool isIgnored(std::wstring_view list, std::wstring_view screenName, long today);

/// True when the name stands in the list, expired or not.
bool isListed(std::wstring_view list, std::wstring_view screenName);

/// The list with the name added (for good, or until the day `until`), without the lines that have
/// expired and without an earlier line of the name.
std::wstring withIgnored(std::wstring_view list, std::wstring_view screenName, long today,
                         long until = 0);

/// The list without the name.
std::wstring withoutIgnored(std::wstring_view list, std::wstring_view screenName);

} // namespace velora
