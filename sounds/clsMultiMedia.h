#pragma once
// One sound file opened through the Media Control Interface.
//
// MCI's errors are not reported: a command that fails changes nothing, and every operation does
// nothing while no file is open.
#include "base/random.h"
#include "sounds/modMci.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace velora {

/// The way to MCI.
class MciPort {
public:
    virtual ~MciPort() = default;
    /// The device's answer up to its first NUL; absent when the command failed.
    virtual std::optional<std::wstring> send(const std::wstring& command) = 0;
    /// The path in a form that the port can send: the same, or the file's short path.
    virtual std::wstring sendable(const std::wstring& path) { return path; }
};
/// The system's own (mciSendString).
MciPort& systemMci();

class clsMultiMedia {
public:
    clsMultiMedia(MciPort& port, RandomSource& random) : port_(port), random_(random) {}
    clsMultiMedia(const clsMultiMedia&) = delete;
    clsMultiMedia& operator=(const clsMultiMedia&) = delete;
    ~clsMultiMedia() { mmClose(); }

    /// "PCM", "MS ADPCM", "IMA ADPCM", "Unknown" or empty.
    std::wstring FormatTag();
    /// Bits per sample. Both kinds of ADPCM have 4; a file that is no PCM keeps the former value.
    std::int16_t Bits();
    void Bits(std::int16_t bits) { bits_ = bits; }
    std::int16_t Channels();
    void Channels(std::int16_t channels) { channels_ = channels; }

    /// Opens a wav or mid file; one that is open is closed first. Any other file opens nothing.
    void mmOpen(const std::wstring& path);
    void mmClose();
    void mmPause();
    /// Plays from the present position. With Wait it returns at the sound's end, and the program
    /// stands still meanwhile.
    void mmPlay();
    void mmStop();
    /// Milliseconds in both kinds of device as Windows opens them for a wav; ticks for a mid.
    void mmSeek(long position);

    /// Empty when nothing is open. Setting it opens the file.
    const std::wstring& FileName() const { return fileName_; }
    void FileName(const std::wstring& path) { mmOpen(path); }
    bool Wait() const { return wait_; }
    void Wait(bool wait) { wait_ = wait; }
    /// 0 when it cannot be told, as Position.
    long Length();
    /// Samples per second.
    std::int32_t SamplingRate();
    void SamplingRate(std::int32_t rate) { samplingRate_ = rate; }
    long Position();
    /// Seeks.
    void Position(long position) { mmSeek(position); }
    /// "playing", "paused", "stopped", ...; empty when it cannot be told.
    std::wstring Status();

private:
    std::optional<std::wstring> ask(MciQuery query);
    bool sendIfAny(const std::optional<std::wstring>& command);
    std::optional<long> askNumber(MciQuery query);

    MciPort& port_;
    RandomSource& random_;
    std::wstring fileName_;
    std::wstring alias_;
    bool wait_ = false;
    std::int16_t bits_ = 0;
    std::int16_t channels_ = 0;
    std::int32_t samplingRate_ = 0;
    std::wstring formatTag_;
};

} // namespace velora
