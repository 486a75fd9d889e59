#pragma once
// The one sound that plays: previews, sounds said in the room and, later, sounds of IMs.
#include "sounds/clsMultiMedia.h"

namespace velora {

class clsSoundPlayer {
public:
    clsSoundPlayer(MciPort& port, RandomSource& random) : device_(port, random) {}

    /// Plays a wav or mid file from its beginning; what played before ends. False when the file is
    /// of another kind or does not open.
    bool play(const std::wstring& path);
    /// True while a sound plays or is paused.
    bool busy();
    /// Pauses, and goes on.
    void pause();
    void stop();
    /// Closes the file of a sound that has come to its end, so that it may be moved or deleted.
    /// True when it did.
    bool closeFinished();

    /// The file that is open; empty when none is.
    const std::wstring& path() const { return device_.FileName(); }
    /// How much of the sound has been played, from 0 to 1.
    double progress();

private:
    clsMultiMedia device_;
};

} // namespace velora
