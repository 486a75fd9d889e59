#pragma once
// The style number of a message box, taken apart, and what its buttons answer.
#include "core/MsgBoxEx.h"

#include <string>
#include <vector>

namespace velora {

enum class MsgIcon { none, critical, question, exclamation, information };

struct MsgButton {
    const wchar_t* text; // with its mnemonic
    int answer;
};

struct MsgStyle {
    std::vector<MsgButton> buttons;
    int defaultButton = 0; // index
    MsgIcon icon = MsgIcon::none;
    bool systemModal = false;

    int defaultAnswer() const;
    /// What Esc and the close button answer; 0 = they do nothing.
    int escapeAnswer() const;
    /// What the box answers when the program ends under it.
    int harmlessAnswer() const;
};

/// Takes the number apart from the top. A set that does not exist is that of "OK"; a default that
/// the set does not have is the first button.
MsgStyle parseMsgStyle(int style);

/// The caption of a box: the product's name, " - " and the title.
std::wstring captionOf(std::wstring_view title);

/// The box as text, in the form in which the system's message box is copied with Ctrl+C.
std::wstring msgBoxAsText(std::wstring_view caption, std::wstring_view text,
                          const std::vector<MsgButton>& buttons);

} // namespace velora
