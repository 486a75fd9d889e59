#pragma once
// A field of the options window: the option behind it, and what may be typed into it. Pure.
//
// Whatever a field holds is a text, as the settings would keep it: "True", "60", "Preview".
#include "settings/Options.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

enum class FieldKind {
    check,
    number,
    seconds, // with "." or ","; kept as a text
    text,
    choice,
    colour,
    sound, // the path of a file, or a sound's name
    words, // the hot words, one a line; no option
    file,  // two buttons that keep all settings in a file and take them from it; no option
};

struct FieldChoice {
    std::wstring caption, value;
};

struct OptionField {
    FieldKind kind = FieldKind::check;
    std::wstring caption; ///< with its mnemonic
    std::wstring tip;
    std::optional<OptionId> option;
    std::optional<OptionId> needs; ///< can be changed only while this one is on
    long least = 0, most = 0;      ///< of numbers; of seconds in thousandths; of a text its length
    std::wstring unit;             ///< stands behind the number
    std::vector<FieldChoice> choices;

    OptionField needing(const Option<bool>& other) &&
    {
        needs = other.id();
        return std::move(*this);
    }
};

/// The option's value now, in its own type.
RegValue presentValue(OptionId option);

/// The value that a text stands for; absent when it may not stand there.
std::optional<RegValue> fieldValue(const OptionField& field, std::wstring_view text);
/// What is wrong with a text that fieldValue refuses, marked up for a message.
std::wstring fieldRefusal(const OptionField& field);
/// The choice that a text names, whatever its case.
std::optional<std::size_t> choiceOf(const OptionField& field, std::wstring_view text);

/// The letter behind the "&", in upper case; 0 without one.
wchar_t mnemonicOf(std::wstring_view caption);
std::wstring withoutMnemonic(std::wstring_view caption);

} // namespace velora
