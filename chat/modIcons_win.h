#pragma once
// The pictures of modIcons as handles of the system.
#include "base/handles.h"
#include "chat/modIcons.h"

namespace velora {

/// An icon of that many pixels; none when the system refuses.
Icon makeIcon(IconId id, int size);
/// The icon shared by all who ask, of the size; valid for the life of the program.
HICON sharedIcon(IconId id, int size);

} // namespace velora
