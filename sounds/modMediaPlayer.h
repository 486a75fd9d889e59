#pragma once
// Whether the system has the Media Player control that plays mp3 files.
#include <cstdint>
#include <optional>
#include <string>

namespace velora {

/// A file version's two halves as a number in decimal: the four parts one after another, a part of
/// more than one digit at the front as "9", so that 6.4 gives "64..." and 12.0 is above it.
std::wstring versionNumber(std::uint32_t mostSignificant, std::uint32_t leastSignificant);

/// True when the first two digits of the number are 64 or more; a text that gives no digits is
/// absent.
bool isMediaPlayerVersion(const std::wstring& number);

/// Looks for the control, as is done at start-up: its file is msdxm.ocx in the system folder. The
/// answer is kept.
void lookForMediaPlayer(const std::string& controlFile = {});
bool mediaPlayerUsable();

enum class MediaPlayerUse { preview, jukebox };
/// Tells the user that Media Player is missing; opens its page in the browser on Yes. Pumps
/// messages.
void offerMediaPlayer(MediaPlayerUse use);

} // namespace velora
