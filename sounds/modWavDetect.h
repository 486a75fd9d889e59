#pragma once
// Wav detect: what a line of the room makes heard.
#include "sounds/clsSoundLimit.h"

#include <functional>
#include <string>
#include <string_view>

namespace velora {

class clsWavDetect {
public:
    /// What the detector may do. All are set.
    struct Doors {
        /// How many sounds of others may play within 60 seconds.
        std::function<long()> perMinute;
        /// The file for a sound name; empty when the library has none.
        std::function<std::wstring(const std::wstring& name)> getWavPath;
        /// True while a sound plays or is paused.
        std::function<bool()> busy;
        /// Plays a wav or mid; false when it does not open.
        std::function<bool(const std::wstring& path)> play;
        /// Hands over a file of any other kind. It may not pump messages.
        std::function<void(const std::wstring& path)> playOther;
        /// A sound begins to play.
        std::function<void(const std::wstring& name)> played;
    };
    explicit clsWavDetect(Doors doors) : doors_(std::move(doors)) {}

    /// Looks at one line, at a time as tickCount gives it. The user's own sounds are heard like
    /// everyone's, once, when the room shows them, and do not count against the limit. Nothing is
    /// looked up while a sound plays, while the limit is reached, or for a name that is no plain
    /// file name.
    void line(std::wstring_view message, bool own, std::uint32_t now);

private:
    Doors doors_;
    clsSoundLimit limit_;
};

} // namespace velora
