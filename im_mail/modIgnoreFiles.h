#pragma once
// The two ignore lists on the disk: "ignore.dat" (for good) and "ignoretemp.dat" (until a day) in
// the program's data folder. Days are date serials (base/clock.h).
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// Longest name and most days that are taken.
inline constexpr std::size_t kMostIgnoredName = 64;
inline constexpr long kMostIgnoredDays = 36500;

struct IgnoredName {
    std::wstring name;
    long daysLeft = 0; ///< 0: for good
    bool operator==(const IgnoredName&) const = default;
};
/// Both lists, those for good first; what has expired is left out.
std::vector<IgnoredName> ignoredNames(const std::wstring& dataFolder, long today);

enum class IgnoreResult { added, exists, noName };
/// Shuts a name out for good (`days` 0 or less) or for some days, today included. A name that is
/// shut out already is refused. Expired lines of the list that is written go. Throws Error when
/// the list cannot be written; it is as before then.
IgnoreResult addIgnored(const std::wstring& dataFolder, std::wstring_view screenName, long days,
                        long today);
/// Takes a name off both lists. Throws Error.
void removeIgnored(const std::wstring& dataFolder, std::wstring_view screenName);

/// The days that a user typed: nothing, 0 or less is for good; absent (-1) when it is no number.
long ignoreDaysOf(std::wstring_view typed);

} // namespace velora
