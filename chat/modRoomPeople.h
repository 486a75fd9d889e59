#pragma once
#include "base/win.h"

#include <string>
#include <vector>

namespace velora {

/// The members that AOL lists in a room, in its order, at most 200; empty while AOL does not
/// answer, and where its list keeps no texts.
std::vector<std::wstring> peopleInRoom(HWND room);

} // namespace velora
