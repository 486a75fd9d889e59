#pragma once
// The captions by which AOL's windows and controls are known. They differ by edition, some also by
// version: one lookup for each.
#include <string>

namespace velora {

enum AOLEdition { kUnitedStates, kUnitedKingdom, kCanada, kAustralia, kGermany, kFrance };
inline constexpr int kEditions = 6;

/// The look-ups take the edition's number (one that is none counts as the United States) and, where
/// it matters, AOL's major version.
std::wstring aboutMenuCaption(int edition, int version);
std::wstring writeMailCaption(int edition);
std::wstring frameCaption(int edition);
std::wstring aolName(int edition);
std::wstring signOnCaption(int edition);
std::wstring signOffCaption(int edition, int version);
std::wstring welcomePrefix(int edition);
std::wstring attachCaption(int edition);
std::wstring attachmentsCaption(int edition);
std::wstring profileCaption(int edition);
/// AOL's menu item that begins an instant message.
std::wstring sendImMenuCaption(int edition);
/// The buttons of a window in which a mail or a board's message is read.
std::wstring replyCaption(int edition);
std::wstring replyAllCaption(int edition);
std::wstring forwardCaption(int edition);

/// Wildcard patterns for the captions of Instant Message windows.
std::wstring imReceivedPattern(int edition, int version);
std::wstring imSentPattern(int edition, int version);
/// Before version 6 there are no such messages: the pattern of those received is given.
std::wstring internetImPattern(int edition, int version);

/// The letter that opens AOL's find window when the toolbar's first icon gets it.
wchar_t findWindowLetter(int edition);

} // namespace velora
