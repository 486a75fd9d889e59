#pragma once
// Hearing sounds on this machine. One sound at a time: a preview ends the one that plays.
#include <functional>
#include <string>

namespace velora {

/// Plays a file that the user wants to hear: wav and mid through MCI, mp3 through Media Player.
/// When that is missing the user is asked whether to fetch it (pumps messages then). True when the
/// sound plays.
bool PlaySoundEx(const std::wstring& path);

/// Plays a wav or mid that nobody here asked for (a sound said in the room); false for other files
/// and while sounds are muted. Without any question.
bool playThroughMci(const std::wstring& path);

/// Plays a file of any kind that nobody here asked for, unless sounds are muted. It pumps nothing:
/// an mp3 begins when the present handler has returned. The question about Media Player comes once
/// in a run of the program: whoever says such sounds must not be able to fill the screen with it.
void playUnasked(const std::wstring& path);

/// While sounds are muted, only what the user plays himself is heard. Muting ends the sound that
/// plays.
void MuteSounds(bool mute);
bool soundsMuted();

/// The sound that an instant message names, looked up in the library; at most as many a minute as
/// sounds of the room (WavScan/MaxPerMinute), and none while one plays. It pumps nothing. True when
/// there is such a sound and it is its turn.
bool PlayIMWav(const std::wstring& name);

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

} // namespace velora
