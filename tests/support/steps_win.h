#pragma once
// Answers a chain of modal windows, one after the other, while the code under test waits in them.
#include "support/drive_win.h"

#include <string>
#include <vector>

namespace velora::test {

/// What to do in the next window with this caption, once it is there and shows `part`: set the text
/// of its edit, choose a radio button, press a button.
struct Step {
    std::wstring caption, part;
    std::wstring press = L"OK";
    std::wstring type = {}, choose = {};
};

/// Works from a timer and never pumps, so that what one step opens is there for the next one. Make
/// it before what opens the first window.
class Steps {
public:
    explicit Steps(std::vector<Step> steps) : steps_(std::move(steps))
    {
        timer_.start(20, [this] { tick(); });
    }
    bool done() const { return next_ == steps_.size() && !IsWindow(last_); }
    /// Which one is waited for, for a failure's message.
    std::size_t next() const { return next_; }

private:
    void tick()
    {
        if (next_ == steps_.size() || (IsWindow(last_) && IsWindowVisible(last_)))
            return;
        const Step& step = steps_[next_];
        const HWND window = FindWindowW(nullptr, step.caption.c_str());
        if (!window || !IsWindowVisible(window) || !IsWindowEnabled(window))
            return;
        std::wstring texts;
        HWND edit = nullptr;
        for (const HWND child : drive::children(window)) {
            texts += drive::text(child) + L"\n";
            wchar_t name[16] = L"";
            if (GetClassNameW(child, name, 16) && !lstrcmpiW(name, L"Edit"))
                edit = child;
        }
        const HWND button = drive::child(window, step.press);
        if (texts.find(step.part) == texts.npos || !button)
            return;
        if (!step.type.empty())
            SetWindowTextW(edit, step.type.c_str());
        if (!step.choose.empty())
            SendMessageW(drive::child(window, step.choose), BM_CLICK, 0, 0);
        last_ = window;
        ++next_;
        PostMessageW(button, BM_CLICK, 0, 0);
    }

    std::vector<Step> steps_;
    std::size_t next_ = 0;
    HWND last_ = nullptr;
    Timer timer_;
};

} // namespace velora::test
