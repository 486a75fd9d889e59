#pragma once
// Saying something in the chat room for the user.
#include "base/win.h"

#include <string>

namespace velora {

/// The room to act in; 0 when the user is in none, and told so (pumps then).
HWND requireRoom();
/// The text as the user's lines leave now: faded while the fader is on and not for sounds alone.
std::wstring asTheyLeave(std::wstring text);
/// Sends one line to the room and gives the input box back what was begun in it. False when AOL
/// does not take it.
bool sayInRoom(const std::wstring& line);
/// Puts a text into the room's input box, the caret behind it, as if it were typed there.
bool typeInRoom(const std::wstring& text);

} // namespace velora
