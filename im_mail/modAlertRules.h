#pragma once
// What the alert shows, where, and how it moves. Pure.
#include "ui/Geometry.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace velora {

inline constexpr int kFlashes = 4;
inline constexpr std::size_t kMostAlertText = 240;

/// The corner that option "Alert Pos" names: 0 bottom right, 1 bottom left, 2 top right, 3 top
/// left; any other value is 0. `area` is the screen without its task bar.
Rect alertPlace(long position, const Rect& area, Size size);

/// Whether the alert has its flash colour at a tick (from 0): four times, then it stays as it is.
bool flashesAt(int tick);

/// How much of the height is open at a step of the slide, `steps` being all of it.
int slideHeight(int step, int steps, int height);

/// A message as the alert shows it: one run of words, cut at kMostAlertText.
std::wstring alertText(std::wstring_view message);

/// True when the text holds the alert text of the user's, whatever its case; never for an empty
/// one.
bool holdsAlertText(std::wstring_view text, std::wstring_view wanted);

/// The line under the name: what has come since the alert opened.
std::wstring alertCount(std::size_t messages, std::size_t senders);

} // namespace velora
