#pragma once
// Hearing sounds on this machine. One sound at a time: a preview ends the one that plays.
#include <functional>
#include <string>

namespace velora {

/// Plays a file: wav and mid through MCI, mp3 through Media Player. When that is missing the user
/// is asked whether to fetch it (pumps messages then). True when the sound plays.
bool PlaySoundEx(const std::wstring& path);

/// The same for wav and mid, without any question; false for other files.
bool playThroughMci(const std::wstring& path);

void StopSound();
void PauseSound();
/// True while a sound plays or is paused.
bool soundBusy();
/// The file that plays; empty when none does.
std::wstring playingSound();

struct SoundProgress {
    std::wstring path; ///< empty: nothing plays any more
    double played = 0; ///< 0 to 1
};
/// Called a few times a second while a sound plays, and once when it has ended. One listener.
void onSoundProgress(std::function<void(const SoundProgress&)> listener);

/// For mp3 files. Asks the user to fetch Media Player; opens the browser on Yes. Pumps messages.
void offerMediaPlayer();

} // namespace velora
