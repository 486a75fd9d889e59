#pragma once
// Answers message boxes that the code under test shows.
#include "support/drive_win.h"
#include "ui/Form.h"

#include <doctest/doctest.h>

#include <map>
#include <string>
#include <string_view>

namespace velora::test {

/// Answers the next window with this caption (a message box of ours, or the system's folder window)
/// by a button, once it is there and says `part`, `typed` in its first edit box; whatever is waited
/// for before it goes on undisturbed. Make it before the call that shows the window.
class Answer {
public:
    explicit Answer(const wchar_t* button = L"OK", const wchar_t* caption = L"Velora",
                    const wchar_t* part = L"", std::wstring typed = {})
        : button_(button), caption_(caption), part_(part), typed_(std::move(typed)),
          timer_(SetTimer(nullptr, 0, 20, tick))
    {
        waiting()[timer_] = this;
    }
    ~Answer()
    {
        KillTimer(nullptr, timer_);
        waiting().erase(timer_);
    }
    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;

    /// True when the window came and said so, the markup left out.
    bool said(std::wstring_view part) const { return shown_.find(part) != shown_.npos; }
    bool came() const { return came_; }

private:
    static std::map<UINT_PTR, Answer*>& waiting()
    {
        static std::map<UINT_PTR, Answer*> answers;
        return answers;
    }
    static void CALLBACK tick(HWND, UINT, UINT_PTR timer, DWORD) noexcept
    {
        const auto found = waiting().find(timer);
        if (found == waiting().end())
            return;
        Answer& self = *found->second;
        if (GetTickCount() - self.start_ > 6 * drive::kPatience) {
            // Some other box waits for its answer, for ever.
            FAIL_CHECK("the box did not come");
            self.start_ = GetTickCount();
            Form::unloadAll();
            return;
        }
        const HWND window = FindWindowW(nullptr, self.caption_);
        if (!window || !IsWindowVisible(window))
            return;
        std::wstring texts;
        for (const HWND child : drive::children(window))
            texts += drive::text(child) + L"\n";
        const HWND button = drive::child(window, self.button_);
        if (texts.find(self.part_) == texts.npos || !button || !IsWindowEnabled(button))
            return;
        self.shown_ = texts;
        self.came_ = true;
        if (!self.typed_.empty())
            SetWindowTextW(drive::child(window, L"Edit"), self.typed_.c_str());
        KillTimer(nullptr, timer); // the window is answered only once
        // Not with the mouse: AOL may come to the front between two of its messages.
        CHECK(PostMessageW(button, BM_CLICK, 0, 0));
    }

    const wchar_t* button_;
    const wchar_t* caption_;
    const wchar_t* part_;
    std::wstring typed_;
    bool came_ = false;
    DWORD start_ = GetTickCount();
    std::wstring shown_;
    UINT_PTR timer_;
};

} // namespace velora::test
