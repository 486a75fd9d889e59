#include "base/clock.h"

namespace velora {

std::wstring fileDate(const DateTime& when)
{
    const auto two = [](int n) {
        return std::wstring{static_cast<wchar_t>(L'0' + n / 10 % 10),
                            static_cast<wchar_t>(L'0' + n % 10)};
    };
    return two(when.month) + L"-" + two(when.day) + L"-" + two(when.year);
}

long dateSerial(const DateTime& when)
{
    // Days from a proleptic Gregorian date, counted from 1 March so that leap days fall at a year's
    // end.
    const long y = when.year - (when.month <= 2 ? 1 : 0);
    const long m = (when.month + 9) % 12;
    const long days = 365 * y + y / 4 - y / 100 + y / 400 + (m * 306 + 5) / 10 + when.day - 1;
    constexpr long kEpoch = 693899; // 30 December 1899
    return days - kEpoch;
}

} // namespace velora
