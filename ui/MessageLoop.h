#pragma once
// The one message loop of the program and its nested forms. Everything here that says "pumps" runs
// handlers of any window, timer and wait handle before it returns: the caller's own form may have
// been closed by then (the object still lives: closed forms are deleted only by the outermost
// loop).
#include "base/win.h"

#include <functional>
#include <memory>

namespace velora {

/// Pumps until quitMessageLoop; answers its code.
int runMessageLoop();
/// Ends every loop, the nested ones too. Callable from any handler.
void quitMessageLoop(int code = 0);
bool messageLoopQuits();

/// Pumps what is waiting and returns.
void doEvents();
/// Pumps until `condition` holds or the time is over or the program ends; answers the condition.
/// The condition is asked again after each message and at least every 20 ms.
bool waitUntil(const std::function<bool()>& condition, DWORD milliseconds);
/// Pumps while the condition holds and the program does not end (modal forms). The condition is
/// asked after each message and wait handle.
void pumpWhile(const std::function<bool()>& condition);
/// Pumps for that long.
void pause(DWORD milliseconds);

/// Runs `call` from the message loop, soon, after the present handler has returned. Works inside
/// the system's own loops too (an open menu, a window being dragged). Calls keep their order.
void postCall(std::function<void()> call);

/// A wait for a kernel handle, ended by destroying it (also from inside its own callback).
class WaitHandle {
public:
    WaitHandle() = default;
    WaitHandle(WaitHandle&&) = default;
    WaitHandle& operator=(WaitHandle&&) = default;
    explicit operator bool() const { return entry_ != nullptr; }
    struct Entry;

private:
    friend WaitHandle addWaitHandle(HANDLE, std::function<void()>, bool);
    std::shared_ptr<Entry> entry_;
};

/// Calls `signalled` from the loop when the handle is signalled: once (a process that ended), or
/// each time when `repeats` (an auto-reset event, or one that the callback resets). The handle must
/// stay open as long as the answer lives. At most 60 handles at a time; throws Error beyond.
[[nodiscard]] WaitHandle addWaitHandle(HANDLE handle, std::function<void()> signalled,
                                       bool repeats = false);

} // namespace velora
