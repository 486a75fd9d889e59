#pragma once
#include "base/win.h"
#include "chat/modFadeRuns.h"
#include "ui/Geometry.h"

namespace velora {

/// Draws faded text into a rectangle as AOL's reader would show it, wrapped at its right edge.
void drawFaded(HDC dc, const Rect& where, const std::vector<FadeRun>& runs, COLORREF background);

} // namespace velora
