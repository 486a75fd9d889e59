#pragma once
// The messages and questions of the program. Every message to the user goes through here.
//
// The text carries markup: "~B" bold, "~I" italic, "~U" underline (each toggles), "~N" new line,
// "~CR" red, "~CG" green, "~CB" blue, "~CY" dark yellow, "~CN" normal colour; lower case works too.
// What comes from elsewhere (names, paths) goes through literal(), which keeps it from being read
// as markup.
#include "core/modMarkup.h" // literal

#include <string>
#include <string_view>

namespace velora {

// The button sets.
inline constexpr int kMsgOK = 0;
inline constexpr int kMsgOKCancel = 1;
inline constexpr int kMsgAbortRetryIgnore = 2;
inline constexpr int kMsgYesNoCancel = 3;
inline constexpr int kMsgYesNo = 4;
inline constexpr int kMsgRetryCancel = 5;
inline constexpr int kMsgDeletePreviewCancel = 6; // deletion of a sound
// Added to the set.
inline constexpr int kMsgCritical = 16;
inline constexpr int kMsgQuestion = 32;
inline constexpr int kMsgExclamation = 48;
inline constexpr int kMsgInformation = 64;
inline constexpr int kMsgSecondDefault = 256;
inline constexpr int kMsgThirdDefault = 512;
inline constexpr int kMsgSystemModal = 4096; // stays above all windows

// The answers.
inline constexpr int kAnswerOK = 1;
inline constexpr int kAnswerCancel = 2;
inline constexpr int kAnswerAbort = 3;
inline constexpr int kAnswerRetry = 4;
inline constexpr int kAnswerIgnore = 5;
inline constexpr int kAnswerYes = 6;
inline constexpr int kAnswerNo = 7;
inline constexpr int kAnswerDelete = 8;
inline constexpr int kAnswerPreview = 9;

/// Shows the box and pumps messages until it is answered; answers the button. The caption is
/// "Velora - " + title ("Velora" without a title). Other forms of ours are disabled meanwhile, AOL
/// never.
/// - Esc and the close button answer Cancel where the box has it, or OK where that is all it has.
/// - With the option General/AutoCloseMsgBox the box answers its default button after AutoCloseTime
///   seconds.
/// - When the program unloads its forms, the answer is the harmless one: Cancel, OK, No or Abort.
/// - A message with OK alone that is on the screen already is not shown a second time.
int MsgBoxEx(std::wstring_view prompt, int style = 0, std::wstring_view title = {});

struct InputBoxOptions {
    bool masked = false; // a password; a check box shows it
    int maxLength = 0;   // characters; 0 = no limit
};

/// Asks for one line of text; empty when cancelled. `initial` is selected. Pumps messages. Never
/// closes by itself.
std::wstring InputBoxEx(std::wstring_view prompt, std::wstring_view title = {},
                        std::wstring_view initial = {}, const InputBoxOptions& options = {});

} // namespace velora
