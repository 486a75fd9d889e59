#pragma once
// Answers a chain of windows, one after the other, while the code under test waits in them.
#include "support/drive_win.h"
#include "ui/Form.h"

#include <doctest/doctest.h>

#include <functional>
#include <string>
#include <vector>

namespace velora::test {

/// What to do in the next window with this caption, once it is there and shows `part`: set the text
/// of its edit, choose a radio button, press a button; or what `act` does instead.
struct Step {
    std::wstring caption, part = {};
    std::wstring press = L"OK";
    std::wstring type = {}, choose = {};
    std::function<void(HWND)> act = {};
};

/// Starts something and takes the steps; fails the test when one cannot be taken. A timer looks for
/// the windows, so that what one step opens is there for the next one.
class Steps {
public:
    explicit Steps(std::vector<Step> steps, const std::function<void()>& start = {})
        : steps_(std::move(steps))
    {
        timer_.start(20, [this] { tick(); });
        if (start)
            start();
        const bool done = drive::until([this] { return this->done(); }, 3 * drive::kPatience);
        CHECK_MESSAGE(done, "stands at step ", next_);
        if (!done)
            Form::unloadAll();
    }

private:
    bool done() const
    {
        return next_ == steps_.size() && !busy_ && (steps_.back().act || !IsWindow(last_));
    }
    void tick()
    {
        if (next_ == steps_.size() || busy_)
            return;
        const Step& step = steps_[next_];
        for (HWND window = nullptr;
             (window = FindWindowExW(nullptr, window, nullptr, step.caption.c_str())) != nullptr;)
            if (IsWindowVisible(window) && IsWindowEnabled(window) && take(step, window))
                return;
    }
    /// True when the window was the one.
    bool take(const Step& step, HWND window)
    {
        std::wstring texts;
        HWND edit = nullptr;
        for (const HWND child : drive::children(window)) {
            texts += drive::text(child) + L"\n";
            wchar_t name[16] = L"";
            if (GetClassNameW(child, name, 16) && !lstrcmpiW(name, L"Edit"))
                edit = child;
        }
        const HWND button = step.act ? nullptr : drive::child(window, step.press);
        // A box that was answered may still be about to go.
        const bool answered = window == last_ && step.part == steps_[next_ - 1].part;
        if (texts.find(step.part) == texts.npos || (!step.act && !button) || answered)
            return false;
        last_ = window;
        ++next_;
        if (step.act) {
            busy_ = true;
            step.act(window);
            busy_ = false;
            return true;
        }
        if (!step.type.empty())
            SetWindowTextW(edit, step.type.c_str());
        if (!step.choose.empty())
            SendMessageW(drive::child(window, step.choose), BM_CLICK, 0, 0);
        PostMessageW(button, BM_CLICK, 0, 0);
        return true;
    }

    std::vector<Step> steps_;
    std::size_t next_ = 0;
    bool busy_ = false;
    HWND last_ = nullptr;
    Timer timer_;
};

/// In a dialog, by keys: waits for its focus.
inline Step byKeys(const wchar_t* caption, std::function<void()> keys)
{
    return {.caption = caption, .act = [keys = std::move(keys)](HWND window) {
                CHECK(drive::activate(window));
                keys();
            }};
}

} // namespace velora::test
