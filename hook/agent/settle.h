#pragma once
// Windows that were just made or changed, until they have been left alone for a while: AOL builds a
// window's controls after the window, in its own time. Pure; times are milliseconds of a counter
// that may wrap.
#include <cstdint>

namespace velora::agent {

class SettleList {
public:
    static constexpr int kSize = 64;
    /// A window that never comes to rest is reported all the same, so often.
    static constexpr std::uint32_t kLongest = 1000;

    /// Notes a change of the window. False when the list is full: report it at once.
    constexpr bool touch(std::uint32_t window, std::uint32_t now)
    {
        for (int i = 0; i < count_; ++i)
            if (entries_[i].window == window) {
                entries_[i].last = now;
                return true;
            }
        if (count_ == kSize)
            return false;
        entries_[count_++] = {window, now, now};
        return true;
    }

    /// Takes out a window that has been at rest for `rest` ms (or is overdue); 0 when none has.
    constexpr std::uint32_t takeSettled(std::uint32_t now, std::uint32_t rest)
    {
        for (int i = 0; i < count_; ++i)
            if (now - entries_[i].last >= rest || now - entries_[i].first >= kLongest) {
                const std::uint32_t window = entries_[i].window;
                removeAt(i);
                return window;
            }
        return 0;
    }

    constexpr void remove(std::uint32_t window)
    {
        for (int i = 0; i < count_; ++i)
            if (entries_[i].window == window)
                return removeAt(i);
    }

    constexpr bool empty() const { return count_ == 0; }
    constexpr void clear() { count_ = 0; }

private:
    struct Entry {
        std::uint32_t window, first, last;
    };
    constexpr void removeAt(int at)
    {
        for (--count_; at < count_; ++at)
            entries_[at] = entries_[at + 1];
    }

    Entry entries_[kSize] = {};
    int count_ = 0;
};

} // namespace velora::agent
