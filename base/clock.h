#pragma once
// Dates and times. The pure rules take a DateTime; the shell reads the clock and the user's locale.
#include <compare>
#include <cstdint>
#include <string>

namespace velora {

/// A local date and time.
struct DateTime {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    auto operator<=>(const DateTime&) const = default;
};

/// "mm-dd-yy", as file and folder names carry dates.
std::wstring fileDate(const DateTime& when);

/// Days since 30 December 1899 (the Windows date serial; a whole number: the day alone).
long dateSerial(const DateTime& when);

/// The present local time.
DateTime now();

/// The user's short date, and the time in the medium form: hours and minutes with AM/PM where the
/// user's format has them ("03:05 PM"), without seconds.
std::wstring shortDate(const DateTime& when);
std::wstring mediumTime(const DateTime& when);
/// The date in the user's long format.
std::wstring longDate(const DateTime& when);

/// Milliseconds since some start, for intervals; wraps after 49 days like the system's own counter.
std::uint32_t tickCount();

} // namespace velora
