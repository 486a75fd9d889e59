#pragma once
// The keyword processor: does what the user's chat keywords ask for.
#include <functional>
#include <string>
#include <string_view>

namespace velora {

/// Does what a keyword text asks for; `text` is what follows the "/". False when what it asks for
/// could not be opened, which the user has been told. Pumps messages.
bool ActivateCommand(const std::wstring& text);

/// Runs the user's command, web address or keyword of AOL.
bool runUserCommand(const std::wstring& word);

/// One friendly line about the program to the room, at most once a minute.
bool advertise();

/// Takes the next hug style, and says which.
void changeHug();

/// Ends the sound that plays and hears no further ones; the second time hears them again.
void hushkit();

/// Calls a route, or tells the user that `name` is not there. False then.
bool openRoute(const std::function<void()>& route, std::wstring_view name);

/// Puts a new mail to somebody before the user.
bool mailTo(const std::wstring& address);
/// Opens AOL's own window for an instant message to a member.
bool imTo(const std::wstring& screenName);
/// Opens a member's profile; the user is told when it does not come.
bool showProfile(const std::wstring& screenName);

} // namespace velora
