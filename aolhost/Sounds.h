#pragma once
// The sounds of an AOL folder, synthesised: small mono wave files and one MIDI tune.
#include <string>
#include <vector>

namespace aolhost {

struct SoundFile {
    std::wstring name; ///< with its extension
    std::string bytes;
};
std::vector<SoundFile> allSounds();

} // namespace aolhost
