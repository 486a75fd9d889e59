#include "ui/Timer.h"

#include "base/trap.h"
#include "base/win_error.h"

#include <map>

namespace velora {
namespace {
constexpr char kModule[] = "Timer";

std::map<UINT_PTR, Timer*>& runningTimers()
{
    static auto& timers = *new std::map<UINT_PTR, Timer*>;
    return timers;
}
} // namespace

void Timer::start(UINT milliseconds, std::function<void()> tick)
{
    stop();
    id_ = SetTimer(nullptr, 0, milliseconds, proc);
    if (!id_)
        throwLastError("no timer");
    runningTimers()[id_] = this;
    tick_ = std::move(tick);
    once_ = false;
    running_ = false;
}

void Timer::startOnce(UINT milliseconds, std::function<void()> tick)
{
    start(milliseconds, std::move(tick));
    once_ = true;
}

void Timer::stop()
{
    if (!id_)
        return;
    KillTimer(nullptr, id_);
    runningTimers().erase(id_);
    id_ = 0;
}

void CALLBACK Timer::proc(HWND, UINT, UINT_PTR id, DWORD) noexcept
{
    trap(kModule, [&] {
        // A tick that was queued before stop() still arrives; it finds no timer.
        const auto found = runningTimers().find(id);
        if (found == runningTimers().end() || found->second->running_)
            return;
        Timer* const timer = found->second;
        const auto tick = timer->tick_; // the tick may start the timer anew or destroy it
        if (timer->once_)
            timer->stop();
        timer->running_ = true;
        trap(kModule, tick, "tick");
        const auto again = runningTimers().find(id);
        if (again != runningTimers().end() && again->second == timer)
            timer->running_ = false;
    });
}

} // namespace velora
