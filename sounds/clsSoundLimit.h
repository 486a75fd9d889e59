#pragma once
#include <cstdint>
#include <deque>

namespace velora {

/// How many sounds of strangers may play within any 60 seconds. Times are those of tickCount.
class clsSoundLimit {
public:
    /// True when `perMinute` sounds have played in the last 60 seconds. 0 or less lets none play.
    bool full(std::uint32_t now, long perMinute);
    /// A stranger's sound begins to play.
    void note(std::uint32_t now);

private:
    std::deque<std::uint32_t> played_;
};

} // namespace velora
