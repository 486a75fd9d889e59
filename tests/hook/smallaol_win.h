#pragma once
// A small AOL in a process of its own, and companions beside it, for the hook tests.
#include "base/handles.h"
#include "hook/WindowHook.h"
#include "hook/helper/protocol.h"

#include <doctest/doctest.h>
#include <functional>
#include <optional>
#include <string>

namespace velora::hooktest {

/// Dispatches messages until the condition holds; false after `ms`.
inline bool pumpUntil(const std::function<bool()>& condition, DWORD ms = 8000)
{
    const DWORD start = GetTickCount();
    for (;;) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        if (condition())
            return true;
        if (GetTickCount() - start > ms)
            return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
    }
}

class Process {
public:
    explicit Process(const std::wstring& arguments)
    {
        wchar_t program[MAX_PATH];
        GetModuleFileNameW(nullptr, program, MAX_PATH);
        std::wstring folder(program);
        folder.resize(folder.rfind(L'\\') + 1);
        std::wstring line = L"\"" + folder + L"velora_hook_helper.exe\" " + arguments;
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process = {};
        REQUIRE(CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                               &startup, &process));
        CloseHandle(process.hThread);
        handle_.reset(process.hProcess);
    }
    ~Process() { kill(); }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    void kill()
    {
        if (alive()) {
            TerminateProcess(handle_.get(), 99);
            WaitForSingleObject(handle_.get(), 5000);
        }
    }
    bool alive() const { return WaitForSingleObject(handle_.get(), 0) == WAIT_TIMEOUT; }
    DWORD exitCode() const
    {
        DWORD code = 0;
        GetExitCodeProcess(handle_.get(), &code);
        return code;
    }

private:
    KernelHandle handle_;
};

inline std::wstring uniqueName(const wchar_t* stem)
{
    static int number = 0;
    return stem + std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(++number);
}

class SmallAol {
public:
    explicit SmallAol(bool ansi = false)
        : title_(uniqueName(L"small_aol_")), process_(L"aol " + title_ + (ansi ? L" a" : L" w"))
    {
        REQUIRE(pumpUntil(
            [&] {
                frame = FindWindowW(L"AOL Frame25", title_.c_str());
                return frame && IsWindowVisible(frame);
            },
            20000));
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
    bool alive() const { return process_.alive(); }
    void kill() { process_.kill(); }

    HWND frame = nullptr;

private:
    std::wstring title_;
    Process process_;
};

/// A companion process; `ready` is set when it is where its mode takes it.
class Companion {
public:
    Companion(const SmallAol& aol, const std::wstring& mode)
        : name_(uniqueName(L"velora_test_ready_")),
          ready_(CreateEventW(nullptr, TRUE, FALSE, name_.c_str())),
          process_(L"companion " + std::to_wstring(reinterpret_cast<std::uint32_t>(aol.frame))
                   + L" " + mode + L" " + name_)
    {
    }
    bool ready() { return WaitForSingleObject(ready_.get(), 0) == WAIT_OBJECT_0; }
    bool alive() const { return process_.alive(); }
    DWORD exitCode() const { return process_.exitCode(); }
    void kill() { process_.kill(); }

private:
    std::wstring name_;
    KernelHandle ready_;
    Process process_;
};

inline std::wstring windowText(HWND window)
{
    wchar_t text[4096] = {};
    DWORD_PTR units = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, 4096, reinterpret_cast<LPARAM>(text), SMTO_NORMAL, 5000,
                        &units);
    return {text, units};
}

} // namespace velora::hooktest
