#pragma once
#include "base/win.h"
#include "core/clsChat.h"

namespace velora {

/// Reads a chat room's display through the code inside AOL, or by a bounded message from outside
/// while that isn't there. Its room is the display's parent: when the display is gone but the room
/// isn't, the room's present display is read.
std::unique_ptr<ChatDisplay> chatDisplayReader(HWND display);

} // namespace velora
