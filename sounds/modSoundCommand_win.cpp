#include "base/win.h"
#include "sounds/modSoundCommand.h"

namespace velora {
namespace {

std::wstring localeText(LCTYPE what, const wchar_t* fallback)
{
    wchar_t text[16];
    const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, what, text, 16);
    return length > 0 ? std::wstring(text, length - 1) : std::wstring(fallback);
}

} // namespace

NumberStyle regionalNumberStyle()
{
    NumberStyle style;
    style.decimal = localeText(LOCALE_SDECIMAL, L".");
    // A grouping of "0" means that digits are not grouped at all.
    style.thousands = localeText(LOCALE_SGROUPING, L"3") == L"0"
                          ? std::wstring()
                          : localeText(LOCALE_STHOUSAND, L",");
    style.leadingZero = localeText(LOCALE_ILZERO, L"1") != L"0";
    return style;
}

} // namespace velora
