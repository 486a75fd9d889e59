#include "base/clock.h"
#include "base/trap.h"
#include "base/win.h"
#include "settings/Options.h"
#include "sounds/clsSoundLimit.h"
#include "sounds/clsSoundPlayer.h"
#include "sounds/frmMPlayer.h"
#include "sounds/modMediaPlayer.h"
#include "sounds/modPlayback.h"
#include "sounds/modSounds.h"
#include "sounds/modWavList.h"
#include "ui/MessageLoop.h"
#include "ui/Timer.h"

#include <utility>

namespace velora {
namespace {

constexpr char kModule[] = "modPlayback";
constexpr UINT kProgressMs = 200;

/// The control on frmMPlayer. A call that it refuses is logged and answers the neutral value; the
/// sound counts as ended then.
class HostedControl final : public MediaControl {
public:
    bool play(const std::wstring& path) override
    {
        return trap(
            kModule,
            [&] {
                frmMPlayer* const form = frmMPlayer::player();
                if (form)
                    form->play(path);
                return form != nullptr;
            },
            false);
    }
    void pause() override
    {
        ask([](frmMPlayer& form) { return form.pause(), true; }, false, "pause");
    }
    void stop() override
    {
        ask([](frmMPlayer& form) { return form.stop(), true; }, false, "stop");
    }
    bool busy() override
    {
        return ask([](frmMPlayer& form) { return form.busy(); }, false, "busy");
    }
    double length() override
    {
        return ask([](frmMPlayer& form) { return form.length(); }, 0.0, "length");
    }
    double position() override
    {
        return ask([](frmMPlayer& form) { return form.position(); }, 0.0, "position");
    }

private:
    template <class Question, class Value>
    Value ask(const Question& question, Value neutral, const char* what)
    {
        return trap(
            kModule,
            [&] {
                frmMPlayer* const form = frmMPlayer::instance();
                return form ? question(*form) : neutral;
            },
            neutral, what);
    }
};

/// The player and its watch. Made at the first sound.
struct Playback {
    SystemRandom random;
    HostedControl control;
    clsSoundPlayer player{systemMci(), random, control};
    Timer tmrProgress;
    std::function<void(const SoundProgress&)> listener;
    clsSoundLimit imLimit;
    bool muted = false;

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

bool isMp3(const std::wstring& path)
{
    return kindOfFile(path) == SoundKind::mp3;
}

} // namespace

bool playThroughMci(const std::wstring& path)
{
    return trap(
        kModule, [&] { return !playback().muted && !isMp3(path) && playback().play(path); }, false);
}

bool PlaySoundEx(const std::wstring& path)
{
    return trap(
        kModule,
        [&] {
            if ((!isMp3(path) || mediaPlayerUsable()) && playback().play(path))
                return true;
            // Its file may be there and the control yet not work.
            if (isMp3(path) && !frmMPlayer::instance())
                offerMediaPlayer(MediaPlayerUse::preview);
            return false;
        },
        false);
}

void playUnasked(const std::wstring& path)
{
    trap(kModule, [&] {
        static bool asked = false;
        if (playback().muted || (!mediaPlayerUsable() && isMp3(path) && std::exchange(asked, true)))
            return;
        if (isMp3(path))
            postCall([path] { PlaySoundEx(path); });
        else
            playback().play(path);
    });
}

void MuteSounds(bool mute)
{
    trap(kModule, [&] {
        playback().muted = mute;
        if (mute)
            playback().stop();
    });
}

bool soundsMuted()
{
    return playback().muted;
}

bool PlayIMWav(const std::wstring& name)
{
    return trap(
        kModule,
        [&] {
            Playback& present = playback();
            const std::uint32_t time = tickCount();
            if (present.muted || soundBusy()
                || present.imLimit.full(time, opt::WavScan::MaxPerMinute.get()))
                return false;
            const std::wstring path = GetWavPath(name);
            if (path.empty())
                return false;
            present.imLimit.note(time);
            playUnasked(path);
            return true;
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

} // namespace velora
