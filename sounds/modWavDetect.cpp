#include "sounds/modWavDetect.h"

#include "base/trap.h"
#include "sounds/modMci.h"
#include "sounds/modSoundCommand.h"

namespace velora {
namespace {

constexpr char kModule[] = "modWavDetect";

} // namespace

void clsWavDetect::line(std::wstring_view message, bool own, std::uint32_t now)
{
    trap(kModule, [&] {
        const std::wstring name = ParseWavName(message);
        if (!isSafeSoundName(name) || (!own && limit_.full(now, doors_.perMinute()))
            || doors_.busy())
            return;
        const std::wstring path = doors_.getWavPath(name);
        if (path.empty())
            return;
        if (!mciDevice(path))
            doors_.playOther(path);
        else if (!doors_.play(path))
            return;
        if (!own)
            limit_.note(now);
        doors_.played(name);
    });
}

} // namespace velora
