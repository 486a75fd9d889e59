#pragma once
// A hook on one window of AOL: the messages that pass its filter are raised before AOL handles
// them, or told afterwards.
#include "hook/AgentLink.h"

#include <cstdint>
#include <functional>
#include <initializer_list>

namespace velora {

enum class Delivery {
    verdict,      ///< WndMessageX while AOL waits (at most 2 s): short work only, no box, no COM
    postedBefore, ///< WndMessageX some time later, AOL may or may not have handled the message
    postedAfter,  ///< WndMessageX when AOL has handled it
};

struct WatchRule {
    UINT message = 0;
    WPARAM wLow = 0; ///< holds for wParam from wLow to wHigh
    WPARAM wHigh = ~WPARAM{0};
    Delivery delivery = Delivery::verdict;
    bool coalesce = false; ///< posted rules: while one event is under way, further ones are dropped
    bool withControl = false; ///< verdicts: only while Ctrl is held

    /// A rule for one wParam, such as a key code.
    static WatchRule key(UINT message, WPARAM value, Delivery delivery = Delivery::verdict)
    {
        return {message, value, value, delivery};
    }
};

struct HookMessage {
    HWND window = nullptr;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;   ///< a number; a pointer in it belongs to AOL's process
    bool posted = false; ///< AOL is not waiting: noDefault has no effect
    /// Held when the key was pressed, which GetAsyncKeyState cannot tell any more. Not for posted.
    bool shift = false, control = false, alt = false;
    /// AOL is not to handle the message. With a key pressed, the character and the key's release
    /// that follow are kept from AOL too, and are not raised again (the same when it is let
    /// through). With the mouse pressed the release is kept from AOL too, but it is raised.
    bool noDefault = false;

    /// Asks for DelayedEvent(code), 1 to 255, once AOL is done with the message.
    void requestDelayed(int code) { delayedCode_ = code; }
    int delayedCode() const { return delayedCode_; }
    /// Gives AOL the answer now, so that it need not wait for what follows (a box).
    void answerNow();

private:
    int delayedCode_ = 0;
    bool answered_ = false;
};

class WindowHook {
public:
    WindowHook() = default;
    ~WindowHook() { detach(); }
    WindowHook(const WindowHook&) = delete;
    WindowHook& operator=(const WindowHook&) = delete;

    /// Hooks the window (and lets go of a former one). Several hooks may watch one window. False
    /// when it is none of AOL's thread, AOL is busy, or more than 16 rules are given.
    bool attach(AgentLink& link, HWND window, std::initializer_list<WatchRule> rules);
    void detach();
    /// The hooked window; 0 when detached or when the window is destroyed.
    HWND window() const { return window_; }

    std::function<void(HookMessage&)> WndMessageX;
    std::function<void(int eventCode)> DelayedEvent;

    /// While one lives the hook raises nothing. What a coalescing rule saw meanwhile is raised once
    /// afterwards. They nest; the hook may be detached under one.
    class Pause {
    public:
        explicit Pause(WindowHook& hook);
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        std::shared_ptr<AgentImpl> impl_;
        int slot_;
        std::uint32_t cookie_;
    };

private:
    friend class AgentImpl;
    std::shared_ptr<AgentImpl> impl_;
    HWND window_ = nullptr;
    int slot_ = -1;
    std::uint32_t cookie_ = 0;
};

} // namespace velora
