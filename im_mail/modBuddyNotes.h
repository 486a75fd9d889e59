#pragma once
// Buddy notes: what the user has written down about a member, in the current user's registry.
#include <string>
#include <string_view>

namespace velora {

/// Characters; what is longer is cut on reading and writing.
inline constexpr std::size_t kMostNote = 2000;
inline constexpr std::size_t kMostNoteName = 64;

/// The note about a member, line ends as CR LF, ready for a tip; empty when there is none. The name
/// is compared as screen names are.
std::wstring GetBuddyNotes(std::wstring_view screenName);
inline bool hasBuddyNote(std::wstring_view screenName)
{
    return !GetBuddyNotes(screenName).empty();
}
/// Keeps a note; an empty one is deleted. False when the name is none, or the registry refuses.
bool saveBuddyNote(std::wstring_view screenName, std::wstring_view note);

} // namespace velora
