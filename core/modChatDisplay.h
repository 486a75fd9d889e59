#pragma once
#include "base/win.h"
#include "core/clsChat.h"

namespace velora {

/// The display of a chat room, read through the code inside AOL, or by bounded messages from
/// outside while that isn't there. The display is looked up anew when its window is gone.
std::unique_ptr<ChatDisplay> chatDisplayReader(HWND room);

} // namespace velora
