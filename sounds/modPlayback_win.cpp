#include "base/trap.h"
#include "base/win.h"
#include "core/MsgBoxEx.h"
#include "sounds/clsSoundPlayer.h"
#include "sounds/modMediaPlayer.h"
#include "sounds/modPlayback.h"
#include "sounds/modWavList.h"
#include "ui/Timer.h"

#include <shellapi.h>

namespace velora {
namespace {

constexpr char kModule[] = "modPlayback";
constexpr UINT kProgressMs = 200;
constexpr wchar_t kDownloadPage[] = L"https://support.microsoft.com/windows/windows-media-player";

/// The player and its watch. Made at the first sound.
struct Playback {
    SystemRandom random;
    clsSoundPlayer player{systemMci(), random};
    Timer tmrProgress;
    std::function<void(const SoundProgress&)> listener;

    void tell()
    {
        if (listener)
            listener({player.path(), player.path().empty() ? 0 : player.progress()});
    }
    void tick()
    {
        // A finished sound is closed, so that its file may be moved or deleted again.
        player.closeFinished();
        if (player.path().empty())
            tmrProgress.stop();
        tell();
    }
    bool play(const std::wstring& path)
    {
        const bool opened = player.play(path);
        if (opened)
            tmrProgress.start(kProgressMs, [this] { tick(); });
        tell();
        return opened;
    }
    void stop()
    {
        player.stop();
        tmrProgress.stop();
        tell();
    }
};

Playback& playback()
{
    // Never destroyed: at the program's end MCI has closed its devices already.
    static Playback& instance = *new Playback;
    return instance;
}

} // namespace

bool playThroughMci(const std::wstring& path)
{
    return trap(
        kModule, [&] { return playback().play(path); }, false);
}

bool PlaySoundEx(const std::wstring& path)
{
    return trap(
        kModule,
        [&] {
            if (kindOfFile(path) != SoundKind::mp3)
                return playback().play(path);
            if (!mediaPlayerUsable())
                offerMediaPlayer();
            return false;
        },
        false);
}

void StopSound()
{
    trap(kModule, [] { playback().stop(); });
}

void PauseSound()
{
    trap(kModule, [] { playback().player.pause(); });
}

bool soundBusy()
{
    return trap(
        kModule, [] { return playback().player.busy(); }, false);
}

std::wstring playingSound()
{
    return playback().player.path();
}

void onSoundProgress(std::function<void(const SoundProgress&)> listener)
{
    playback().listener = std::move(listener);
}

void offerMediaPlayer()
{
    trap(kModule, [] {
        const int answer = MsgBoxEx(
            L"~B~CRMedia Player 6.4 or higher not installed!~B~CN~N ~NTo preview MP3 files "
            L"through Velora requires Microsoft Media Player version 6.4 or higher.~N "
            L"~NWould you like to download the free installer?",
            kMsgYesNo | kMsgExclamation | kMsgSecondDefault);
        if (answer == kAnswerYes)
            ShellExecuteW(nullptr, L"open", kDownloadPage, nullptr, nullptr, SW_SHOWNORMAL);
    });
}

} // namespace velora
