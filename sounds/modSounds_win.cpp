#include "base/clock.h"
#include "base/files.h"
#include "chat/ToolbarRoutes.h"
#include "core/modAOL.h"
#include "core/modMain.h"
#include "settings/Options.h"
#include "sounds/clsSoundLimit.h"
#include "sounds/frmWavCheck.h"
#include "sounds/frmWavs.h"
#include "sounds/modJukebox.h"
#include "sounds/modMediaPlayer.h"
#include "sounds/modPlayback.h"
#include "sounds/modSoundCommand.h"
#include "sounds/modSounds.h"
#include "sounds/modWavDetect.h"
#include "sounds/modWavLibrary.h"
#include "sounds/modWavLookup.h"

namespace velora {
namespace {

constexpr long kChecksPerMinute = 12;

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
        .playOther = playUnasked,
        .played = showPlayed,
    });
    return detect;
}

/// The wav check of what a member said. As many in a minute as sounds may play, and a sound that
/// comes again is not checked again.
void checkSound(const std::wstring& name)
{
    static clsSoundLimit limit;
    static std::wstring last;
    if (!isSafeSoundName(name) || name == last || limit.full(tickCount(), kChecksPerMinute))
        return;
    last = name;
    limit.note(tickCount());
    frmWavCheck::check(name, false);
}

} // namespace

std::wstring favWavsFile()
{
    return AppPath() + L"\\favwavs.dat";
}

std::wstring GetWavPath(const std::wstring& name)
{
    static clsListFiles lists;
    return GetWavPath(name, lookupOrder(librarySources()), lists, fileExists);
}

void routeSounds(ToolbarRoutes& routes)
{
    routes.detectWav = [](const std::wstring&, const std::wstring& message, bool own) {
        wavDetect().line(message, own, tickCount());
        if (!own && opt::WavScan::Active.get())
            checkSound(ParseWavName(message));
    };
    routes.openWavs = [] { frmWavs::openList(); };
    routes.stopSounds = [] { StopSound(); };
    routes.muteSounds = MuteSounds;
    routes.soundsMuted = soundsMuted;
    routes.openJukebox = [] { StartJukebox(); };
    lookForMediaPlayer();
}

} // namespace velora
