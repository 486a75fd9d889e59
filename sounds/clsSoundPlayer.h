#pragma once
// The one sound that plays: previews, sounds said in the room and sounds of IMs.
#include "sounds/clsMultiMedia.h"

namespace velora {

/// The way to the control that plays mp3 files. Times are seconds; 0 when they are not known.
class MediaControl {
public:
    virtual ~MediaControl() = default;
    /// Begins to play a file; false when there is no control, or it does not take the file.
    virtual bool play(const std::wstring& path) = 0;
    /// Pauses, and goes on.
    virtual void pause() = 0;
    /// Ends the sound and lets go of its file.
    virtual void stop() = 0;
    /// True while a sound plays, is paused or still being opened.
    virtual bool busy() = 0;
    virtual double length() = 0;
    virtual double position() = 0;
};

class clsSoundPlayer {
public:
    clsSoundPlayer(MciPort& port, RandomSource& random, MediaControl& control)
        : device_(port, random), control_(control)
    {
    }

    /// Plays a wav, mid or mp3 file from its beginning; what played before ends. False when the
    /// file is of another kind or does not open.
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
    const std::wstring& path() const;
    /// How much of the sound has been played, from 0 to 1.
    double progress();

private:
    bool byControl() const { return !controlPath_.empty(); }

    clsMultiMedia device_;
    MediaControl& control_;
    std::wstring controlPath_; ///< what the control plays; empty while MCI has the sound
};

} // namespace velora
