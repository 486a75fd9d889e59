#pragma once
// What an IM window is and says: captions, senders, icons, notes. Pure; edition and version are
// AOL's.
#include <optional>
#include <string>
#include <string_view>

namespace velora {

/// True when a caption is that of an IM window: received, sent or from the internet.
bool isImCaption(std::wstring_view caption, int edition, int version);

/// True when AOL marked the caption as holding an unread message, in the form that the auto-answer
/// looks for (German and French are spelled unlike the window captions there).
bool isUnreadImCaption(std::wstring_view caption, int edition, int version);

/// The screen name behind the caption's first ":", trimmed, every "." removed; empty without a ":".
std::wstring senderFromCaption(std::wstring_view caption);

/// True when the text over an IM says that its sender writes from the internet.
bool isInternetSenderText(std::wstring_view text);

/// True for the caption of the button that opens the reply box of a received IM.
bool isReplyCaption(std::wstring_view caption);

/// Which "_AOL_Icon" child of an IM window is Send, counted from 0.
int sendIconIndex(int edition, int version);

/// The note that a reply text asks to be logged: the whole text less its first five characters,
/// when it holds "/log:" anywhere; absent otherwise.
std::optional<std::wstring> logNoteOf(std::wstring_view reply);
/// What is added to the conversation for a note.
std::wstring logNoteText(std::wstring_view note);

/// True for the text by which AOL's answer to "$im_off" and "$im_on" is known.
bool isImSwitchAnswer(std::wstring_view text);

/// Black or white, whichever reads better on a background (Windows' colour order).
int ContrastingColor(int background);

/// Whether a new message raises the alert.
struct AlertSituation {
    bool displayAlert = true;     ///< option DisplayAlert
    bool alertIfMinimised = true; ///< option AlertIfMin
    bool aolInFront = false;
    bool aolMinimised = false;
    bool lookingAtThisIm = false; ///< its tab is current and our window is in front
    bool quiet = false; ///< another program has the whole screen, and the user wants quiet
};
bool raisesAlert(const AlertSituation& now);

} // namespace velora
