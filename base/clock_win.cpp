#include "base/clock.h"

#include "base/win.h"

namespace velora {
namespace {

SYSTEMTIME systemTime(const DateTime& when)
{
    SYSTEMTIME st{};
    st.wYear = static_cast<WORD>(when.year);
    st.wMonth = static_cast<WORD>(when.month);
    st.wDay = static_cast<WORD>(when.day);
    st.wHour = static_cast<WORD>(when.hour);
    st.wMinute = static_cast<WORD>(when.minute);
    st.wSecond = static_cast<WORD>(when.second);
    return st;
}

std::wstring date(const DateTime& when, DWORD format)
{
    const SYSTEMTIME st = systemTime(when);
    wchar_t text[128];
    const int length = GetDateFormatW(LOCALE_USER_DEFAULT, format, &st, nullptr, text, 128);
    return length > 0 ? std::wstring(text, length - 1) : fileDate(when);
}

} // namespace

DateTime now()
{
    SYSTEMTIME st;
    GetLocalTime(&st);
    return {st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond};
}

std::wstring shortDate(const DateTime& when)
{
    return date(when, DATE_SHORTDATE);
}
std::wstring longDate(const DateTime& when)
{
    return date(when, DATE_LONGDATE);
}

std::wstring mediumTime(const DateTime& when)
{
    const SYSTEMTIME st = systemTime(when);
    wchar_t text[64];
    const int length = GetTimeFormatW(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &st, nullptr, text, 64);
    return length > 0 ? std::wstring(text, length - 1) : std::wstring();
}

std::uint32_t tickCount()
{
    return GetTickCount();
}

} // namespace velora
