#pragma once
// Answers message boxes that the code under test shows.
#include "support/drive_win.h"

#include <doctest/doctest.h>

#include <string>
#include <string_view>

namespace velora::test {

/// Answers the next message box of ours by a button, once it is there; whatever is waited for
/// before it goes on undisturbed. Make it before the call that shows the box.
class Answer {
public:
    explicit Answer(const wchar_t* button = L"OK") : button_(button)
    {
        waiting() = this;
        timer_ = SetTimer(nullptr, 0, 20, tick);
    }
    ~Answer()
    {
        KillTimer(nullptr, timer_);
        waiting() = nullptr;
    }
    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;

    /// True when the box said so, the markup left out.
    bool said(std::wstring_view part) const { return shown_.find(part) != shown_.npos; }

private:
    static Answer*& waiting()
    {
        static Answer* answer = nullptr;
        return answer;
    }
    static void CALLBACK tick(HWND, UINT, UINT_PTR timer, DWORD) noexcept
    {
        const HWND box = FindWindowW(nullptr, L"Velora");
        Answer* const self = waiting();
        if (!self || !box || !IsWindowVisible(box))
            return;
        // Pressing pumps: the box is answered only once.
        KillTimer(nullptr, timer);
        for (const HWND child : drive::children(box))
            self->shown_ += drive::text(child) + L"\n";
        CHECK(drive::press(box, self->button_));
    }

    const wchar_t* button_;
    UINT_PTR timer_ = 0;
    std::wstring shown_;
};

} // namespace velora::test
