#pragma once
// A small AOL in a process of its own, and companions beside it, for the hook tests.
#include "base/handles.h"
#include "hook/WindowHook.h"
#include "hook/helper/protocol.h"
#include "support/aolhost_win.h"
#include "support/process_win.h"

#include <doctest/doctest.h>
#include <string>

namespace velora::hooktest {

using test::textOf;
using test::waitFor;

/// The program that is the small AOL, and the companions.
inline test::Process helper(const std::wstring& arguments)
{
    return {test::buildFolder() + L"\\velora_hook_helper.exe", arguments};
}

inline std::wstring uniqueName(const wchar_t* stem)
{
    static int number = 0;
    return stem + std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(++number);
}

class SmallAol {
public:
    explicit SmallAol(bool ansi = false)
        : title_(uniqueName(L"small_aol_")),
          process_(helper(L"aol " + title_ + (ansi ? L" a" : L" w")))
    {
        REQUIRE(waitFor([&] {
            frame = FindWindowW(L"AOL Frame25", title_.c_str());
            return frame && IsWindowVisible(frame);
        }));
    }

    LRESULT tell(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        DWORD_PTR result = 0;
        SendMessageTimeoutW(frame, message, wParam, lParam, SMTO_NORMAL, 60000, &result);
        return static_cast<LRESULT>(result);
    }
    HWND open(smallaol::Way way = smallaol::kByMessage, int lateMs = 0) const
    {
        return reinterpret_cast<HWND>(tell(smallaol::kOpenChild, way, lateMs));
    }
    HWND control(HWND child, int which) const
    {
        return reinterpret_cast<HWND>(
            tell(smallaol::kControl, reinterpret_cast<WPARAM>(child), which));
    }
    HWND display(HWND child) const { return control(child, 0); }
    HWND input(HWND child) const { return control(child, 1); }
    int count(smallaol::Counter counter) const
    {
        return static_cast<int>(tell(smallaol::kCount, counter));
    }
    void say(HWND display, int lines) const
    {
        tell(smallaol::kSay, reinterpret_cast<WPARAM>(display), lines);
    }
    bool subclassed(HWND window) const
    {
        return tell(smallaol::kRaw, reinterpret_cast<WPARAM>(window)) != 0;
    }
    /// Types Enter as the keyboard does: AOL's own loop makes the character of it.
    void pressEnter(HWND input) const
    {
        PostMessageW(input, WM_KEYDOWN, VK_RETURN, 0x001C0001);
        PostMessageW(input, WM_KEYUP, VK_RETURN, 0xC01C0001);
    }
    bool alive() const { return process_.running(); }
    void kill() { process_.kill(); }

    HWND frame = nullptr;

private:
    std::wstring title_;
    test::Process process_;
};

/// A companion process; `ready` is set when it is where its mode takes it.
class Companion {
public:
    Companion(const SmallAol& aol, const std::wstring& mode)
        : name_(uniqueName(L"velora_test_ready_")),
          ready_(CreateEventW(nullptr, TRUE, FALSE, name_.c_str())),
          process_(helper(L"companion "
                          + std::to_wstring(reinterpret_cast<std::uint32_t>(aol.frame)) + L" "
                          + mode + L" " + name_))
    {
    }
    bool ready() { return WaitForSingleObject(ready_.get(), 0) == WAIT_OBJECT_0; }
    bool alive() const { return process_.running(); }
    DWORD exitCode() const { return process_.exitCode(); }
    void kill() { process_.kill(); }

private:
    std::wstring name_;
    KernelHandle ready_;
    test::Process process_;
};

} // namespace velora::hooktest
