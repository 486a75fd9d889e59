#include "sounds/clsSoundPlayer.h"

#include "sounds/modWavList.h"

#include <algorithm>
#include <utility>

namespace velora {

bool clsSoundPlayer::play(const std::wstring& path)
{
    stop();
    if (kindOfFile(path) == SoundKind::mp3) {
        if (control_.play(path))
            controlPath_ = path;
        return byControl();
    }
    device_.mmOpen(path);
    device_.mmPlay();
    return !device_.FileName().empty();
}

bool clsSoundPlayer::busy()
{
    if (byControl())
        return control_.busy();
    const std::wstring mode = device_.Status();
    return mode == L"playing" || mode == L"paused";
}

void clsSoundPlayer::pause()
{
    if (byControl())
        control_.pause();
    else if (device_.Status() == L"paused")
        device_.mmPlay();
    else
        device_.mmPause();
}

void clsSoundPlayer::stop()
{
    if (!std::exchange(controlPath_, {}).empty())
        control_.stop();
    device_.mmStop();
    device_.mmClose();
}

bool clsSoundPlayer::closeFinished()
{
    if (path().empty() || busy())
        return false;
    stop();
    return true;
}

const std::wstring& clsSoundPlayer::path() const
{
    return byControl() ? controlPath_ : device_.FileName();
}

double clsSoundPlayer::progress()
{
    const double length = byControl() ? control_.length() : static_cast<double>(device_.Length());
    const double position =
        byControl() ? control_.position() : static_cast<double>(device_.Position());
    return length > 0 ? std::clamp(position / length, 0.0, 1.0) : 0;
}

} // namespace velora
