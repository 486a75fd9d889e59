#pragma once
// Choosing colours: a button that shows one, and the system's colour picker.
#include "base/win.h"
#include "ui/Geometry.h"

#include <optional>

namespace velora {

/// A colour of the settings: numbers with the highest bit stand for the system's colours.
COLORREF systemColour(long value);

/// The system's colour picker; absent when cancelled. Pumps messages. The user's own colours in it
/// are kept while the program runs.
std::optional<COLORREF> pickColour(HWND owner, COLORREF present);

/// What such a button shows; absent: no colour.
void drawColourWell(HDC dc, const Rect& where, std::optional<COLORREF> colour);

} // namespace velora
