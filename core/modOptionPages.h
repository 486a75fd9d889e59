#pragma once
// What the options window shows, as one table: its pages, their groups, and for each field the
// option, the words and the kind of control. Pure.
#include "core/modOptionFields.h"

#include <string>
#include <string_view>
#include <vector>

namespace velora {

struct OptionGroup {
    std::wstring caption;
    std::vector<OptionField> fields;
    int columns = 1;
};

struct OptionPage {
    std::wstring name;
    std::wstring about;
    std::vector<OptionGroup> groups;
};

/// The mnemonics that no caption of a page has: those of the window, and of the controls that know
/// their own.
inline constexpr std::wstring_view kWindowKeys = L"PRA";
inline constexpr std::wstring_view kWordsKeys = L"WDM";
inline constexpr std::wstring_view kFileKeys = L"SL";
/// Those of the controls that a field of this kind brings along.
std::wstring_view keysOf(FieldKind kind);

const std::vector<OptionPage>& optionPages();

} // namespace velora
