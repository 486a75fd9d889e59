// How the program gets its module into AOL, and out again.
#include "base/files.h"
#include "base/win_error.h"
#include "hook/AgentImpl.h"

#include <cwchar>

namespace velora {
namespace {

constexpr DWORD kKnockTimeout = 300;    // ms; an AOL that is busy is left alone
constexpr DWORD kBootTimeout = 3000;    // ms
constexpr DWORD kVerdictTimeout = 2000; // ms
constexpr DWORD kSettleTime = 40;       // ms
constexpr wchar_t kDllName[] = L"dwspy36.dll";

std::wstring withDll(std::wstring folder)
{
    while (!folder.empty() && folder.back() == L'\\')
        folder.pop_back();
    return folder + L"\\" + kDllName;
}

std::wstring dllPath(std::wstring_view given)
{
    if (!given.empty())
        return std::wstring(given);
    std::wstring program(MAX_PATH, L'\0');
    DWORD length;
    while ((length = GetModuleFileNameW(nullptr, program.data(), program.size())) == program.size())
        program.resize(2 * program.size());
    program.resize(length);
    const std::wstring beside = withDll(program.substr(0, program.rfind(L'\\')));
    if (fileExists(beside))
        return beside;
    wchar_t system[MAX_PATH];
    const UINT units = GetSystemDirectoryW(system, MAX_PATH);
    return withDll(std::wstring(system, units < MAX_PATH ? units : 0));
}

VOID CALLBACK aolEnded(PVOID events, BOOLEAN)
{
    PostMessageW(static_cast<HWND>(events), wire::kAolEnded, 0, 0);
}

std::uint32_t newGeneration()
{
    static std::uint32_t last = 0;
    const std::uint32_t now = GetTickCount();
    last = now > last ? now : last + 1;
    return last;
}

/// Lets the agent's messages reach a program that runs with more rights than AOL.
void admitMessages(HWND window)
{
    using Change = BOOL(WINAPI*)(HWND, UINT, DWORD, void*);
    const HMODULE user = GetModuleHandleW(L"user32.dll");
    const auto change = reinterpret_cast<Change>(
        reinterpret_cast<void*>(GetProcAddress(user, "ChangeWindowMessageFilterEx")));
    if (!change)
        return;
    constexpr DWORD kAllow = 1; // MSGFLT_ALLOW
    for (const UINT message : {UINT{WM_COPYDATA}, UINT{wire::kDoorbell}, UINT{wire::kAlive}})
        change(window, message, kAllow, nullptr);
}

} // namespace

bool AgentImpl::fail(DWORD error)
{
    forget();
    lastError_ = error ? error : DWORD{ERROR_GEN_FAILURE};
    return false;
}

bool AgentImpl::connect(HWND frame, std::wstring_view dll)
{
    if (connected() && frame == frame_)
        return true;
    disconnect();
    DWORD pid = 0;
    const DWORD thread = GetWindowThreadProcessId(frame, &pid);
    if (!thread || pid == GetCurrentProcessId())
        return fail(ERROR_INVALID_WINDOW_HANDLE);
    process_.reset(OpenProcess(SYNCHRONIZE, FALSE, pid));
    if (!process_)
        return fail(GetLastError());
    if (!makeEventWindow() || !makeSection(frame))
        return fail(GetLastError());
    if (!bootAgent(frame, thread, dllPath(dll)))
        return false;
    // The handle of a window that was destroyed may have come to another process meanwhile.
    if (section()->aolPid != pid || section()->aolThread != thread)
        return fail(ERROR_INVALID_WINDOW_HANDLE);
    frame_ = frame;
    thread_ = thread;
    agentWindow_ = reinterpret_cast<HWND>(section()->agentWindow);
    if (!RegisterWaitForSingleObject(&wait_, process_.get(), aolEnded, events_, INFINITE,
                                     WT_EXECUTEONLYONCE))
        wait_ = nullptr;
    lastError_ = 0;
    return true;
}

bool AgentImpl::makeEventWindow()
{
    const HINSTANCE module = GetModuleHandleW(nullptr);
    WNDCLASSW eventClass = {};
    eventClass.lpfnWndProc = eventProc;
    eventClass.hInstance = module;
    eventClass.lpszClassName = wire::kEventClass;
    RegisterClassW(&eventClass);
    events_ = CreateWindowExW(0, wire::kEventClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                              module, nullptr);
    if (!events_)
        return false;
    SetWindowLongW(events_, GWL_USERDATA, reinterpret_cast<LONG>(this));
    admitMessages(events_);
    return true;
}

bool AgentImpl::makeSection(HWND frame)
{
    generation_ = newGeneration();
    wchar_t name[64];
    wsprintfW(name, L"%s%08lx%08lx", wire::kSectionName, GetCurrentProcessId(),
              static_cast<unsigned long>(generation_));
    mapping_.reset(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                      sizeof(wire::Section), name));
    if (!mapping_)
        return false;
    view_.reset(MapViewOfFile(mapping_.get(), FILE_MAP_ALL_ACCESS, 0, 0, sizeof(wire::Section)));
    if (!view_)
        return false;
    wire::Section& fresh = *section(); // the system gives it filled with zeros
    fresh.companionPid = GetCurrentProcessId();
    fresh.companionWindow = reinterpret_cast<std::uint32_t>(events_);
    fresh.frame = reinterpret_cast<std::uint32_t>(frame);
    fresh.generation = generation_;
    fresh.verdictTimeout = kVerdictTimeout;
    fresh.settleTime = kSettleTime;
    fresh.size = sizeof(wire::Section);
    fresh.version = wire::kVersion;
    fresh.magic = wire::kMagic;
    return true;
}

bool AgentImpl::bootAgent(HWND frame, DWORD thread, const std::wstring& dll)
{
    Library module(LoadLibraryW(dll.c_str()));
    if (!module)
        return fail(GetLastError());
    const auto proc = reinterpret_cast<HOOKPROC>(
        reinterpret_cast<void*>(GetProcAddress(module.get(), wire::kHookExport)));
    if (!proc)
        return fail(GetLastError());
    DWORD_PTR ignored = 0;
    if (!SendMessageTimeoutW(frame, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, kKnockTimeout, &ignored))
        return fail(ERROR_TIMEOUT);
    // The hook lives only for this one message: while it is on, every message inside AOL is slow.
    HookHandle hook(SetWindowsHookExW(WH_CALLWNDPROC, proc, module.get(), thread));
    if (!hook)
        return fail(GetLastError());
    SetLastError(0);
    const LRESULT sent = SendMessageTimeoutW(
        frame, RegisterWindowMessageW(wire::kBootMessage), GetCurrentProcessId(),
        static_cast<LPARAM>(generation_), SMTO_ABORTIFHUNG, kBootTimeout, &ignored);
    const DWORD error = GetLastError();
    hook.reset();
    if (!sent)
        return fail(error ? error : DWORD{ERROR_TIMEOUT});
    if (!section()->agentWindow)
        return fail(section()->bootError);
    return true;
}

void AgentImpl::disconnect()
{
    if (!section())
        return;
    const auto keep = shared_from_this();
    const bool gone = succeeds(wire::Op::quit, {});
    // AOL is busy: the agent lets go as soon as AOL comes back to its messages.
    if (!gone && agentWindow_)
        PostMessageW(agentWindow_, wire::kCompanionDead, generation_, 0);
    forget();
}

void AgentImpl::forget()
{
    for (Hooked& hooked : hooks_) {
        if (hooked.hook)
            hooked.hook->window_ = nullptr;
        hooked = {};
    }
    held.clear();
    if (wait_)
        UnregisterWaitEx(wait_, INVALID_HANDLE_VALUE);
    wait_ = nullptr;
    if (events_)
        DestroyWindow(events_);
    events_ = agentWindow_ = frame_ = nullptr;
    thread_ = 0;
    busy_ = menusUnsynced_ = false;
    view_.reset();
    mapping_.reset();
    process_.reset();
}

} // namespace velora
