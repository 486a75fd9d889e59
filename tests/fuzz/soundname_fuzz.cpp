// Lines of a chat room: whatever they hold, the name that is looked up stays inside the library and
// the command that opens its file stays one command.
#include "base/text.h"
#include "fuzz/fuzz.h"
#include "sounds/modMci.h"
#include "sounds/modSoundCommand.h"
#include "sounds/modWavDetect.h"

using namespace velora;
using fuzz::require;

namespace {

void checkPath(const std::wstring& name)
{
    require(!name.empty() && name.size() <= 200);
    require(name.find_first_of(L"\\/:*?\"<>|") == std::wstring::npos);
    require(name != L"." && name != L"..");
    const auto command = mciOpen(L"C:\\AOL\\sounds\\" + name + L".wav", L"alias");
    require(command.has_value());
    // The only quotes are the two around the path.
    require(without(*command, L'"').size() + 2 >= command->size());
    require(command->ends_with(L" ALIAS alias TYPE Waveaudio wait"));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring line = from1252(fuzz::bytesOf(data, size));
    const std::wstring name = ParseWavName(line);
    require(name.find(L'}') == std::wstring::npos);
    if (isSafeSoundName(name))
        require(ParseWavName(soundCommand(name, size % 2 == 0)) == name);

    int played = 0;
    clsWavDetect detect({
        .perMinute = [] { return 12L; },
        .getWavPath =
            [](const std::wstring& asked) {
                checkPath(asked);
                return L"C:\\AOL\\sounds\\" + asked + L".wav";
            },
        .busy = [] { return false; },
        .play = [&](const std::wstring&) { return ++played > 0; },
        .playOther = [](const std::wstring&) {},
        .played = [](const std::wstring&) {},
    });
    for (int i = 0; i < 20; ++i)
        detect.line(line, false, 1000);
    require(played <= 12);
    decorate(line, soundCommand(name, true));
    return 0;
}
