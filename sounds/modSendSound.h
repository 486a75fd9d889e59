#pragma once
// Sending a sound: to the instant message or mail in front of AOL, else to the room.
#include "base/win.h"

#include <string>

namespace velora {

/// The edit that takes sounds instead of the room: that of an instant message or a mail reply in
/// front of AOL, or of the IM in the program's own IM window when that lies before AOL. Null: the
/// room does.
HWND soundEditInFront();

struct SoundToSend {
    std::wstring line;
    std::wstring description; ///< the line that follows in the room 1.5 s later; empty: none
    bool plain = false;       ///< as it is, whatever the fader says
};
/// Types it into the edit in front, or says it in the room, where what the user has begun to type
/// there comes back. False when it did not go (without a room the user has been told; pumps).
bool sendSound(const SoundToSend& sound);

/// True while a description line waits for its moment.
bool descriptionWaits();

} // namespace velora
