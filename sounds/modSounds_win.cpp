#include "base/clock.h"
#include "base/files.h"
#include "chat/ToolbarRoutes.h"
#include "core/modAOL.h"
#include "core/modMain.h"
#include "settings/Options.h"
#include "sounds/frmWavs.h"
#include "sounds/modMediaPlayer.h"
#include "sounds/modPlayback.h"
#include "sounds/modSounds.h"
#include "sounds/modWavDetect.h"
#include "sounds/modWavLookup.h"
#include "ui/MessageLoop.h"

namespace velora {
namespace {

/// A file that MCI does not play, said in the room. The question about Media Player comes once:
/// whoever says such sounds must not be able to fill the screen with it.
void playOther(const std::wstring& path)
{
    static bool asked = false;
    if (!mediaPlayerUsable() && std::exchange(asked, true))
        return;
    postCall([path] { PlaySoundEx(path); });
}

void showPlayed(const std::wstring& name)
{
    if (frmWavs* const list = frmWavs::instance(); list && opt::WavList::ShowProgress.get())
        list->showPlayed(name);
}

clsWavDetect& wavDetect()
{
    static clsWavDetect detect({
        .perMinute = [] { return opt::WavScan::MaxPerMinute.get(); },
        .getWavPath = [](const std::wstring& name) { return GetWavPath(name); },
        .busy = soundBusy,
        .play = playThroughMci,
        .playOther = playOther,
        .played = showPlayed,
    });
    return detect;
}

} // namespace

std::wstring favWavsFile()
{
    return AppPath() + L"\\favwavs.dat";
}

std::wstring GetWavPath(const std::wstring& name)
{
    static clsFavourites favourites(favWavsFile());
    const std::wstring& aolFolder = aol().folder;
    return GetWavPath(name, favourites,
                      {aolFolder.empty() ? std::wstring() : aolFolder + L"\\sounds"}, fileExists);
}

void routeSounds(ToolbarRoutes& routes)
{
    routes.detectWav = [](const std::wstring&, const std::wstring& message, bool own) {
        wavDetect().line(message, own, tickCount());
    };
    routes.openWavs = [] { frmWavs::openList(); };
    routes.stopSounds = [] { StopSound(); };
}

} // namespace velora
