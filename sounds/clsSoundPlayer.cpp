#include "sounds/clsSoundPlayer.h"

#include <algorithm>

namespace velora {

bool clsSoundPlayer::play(const std::wstring& path)
{
    device_.mmOpen(path);
    device_.mmPlay();
    return !device_.FileName().empty();
}

bool clsSoundPlayer::busy()
{
    const std::wstring mode = device_.Status();
    return mode == L"playing" || mode == L"paused";
}

void clsSoundPlayer::pause()
{
    if (device_.Status() == L"paused")
        device_.mmPlay();
    else
        device_.mmPause();
}

void clsSoundPlayer::stop()
{
    device_.mmStop();
    device_.mmClose();
}

bool clsSoundPlayer::closeFinished()
{
    if (path().empty() || busy())
        return false;
    device_.mmClose();
    return true;
}

double clsSoundPlayer::progress()
{
    const long length = device_.Length();
    return length > 0 ? std::clamp(static_cast<double>(device_.Position()) / length, 0.0, 1.0) : 0;
}

} // namespace velora
