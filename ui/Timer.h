#pragma once
// A timer as an object: `Timer tmrIMWatch;` in a form, started and stopped; it dies with its owner.
#include "base/win.h"

#include <functional>

namespace velora {

class Timer {
public:
    Timer() = default;
    ~Timer() { stop(); }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    /// Calls `tick` every `milliseconds` until stop(); a running timer starts anew. While a tick
    /// runs (it may pump messages) further ones are left out.
    void start(UINT milliseconds, std::function<void()> tick);
    /// The same, one time.
    void startOnce(UINT milliseconds, std::function<void()> tick);
    /// Safe inside the tick.
    void stop();
    bool active() const { return id_ != 0; }

private:
    static void CALLBACK proc(HWND, UINT, UINT_PTR id, DWORD) noexcept;

    UINT_PTR id_ = 0;
    bool once_ = false;
    bool running_ = false;
    std::function<void()> tick_;
};

} // namespace velora
