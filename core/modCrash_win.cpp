#include "core/modCrash.h"

#include "base/product.h"
#include "base/win.h"

#include <exception>
#include <tlhelp32.h>

// Everything here runs in a process whose heap and stack may be damaged: fixed buffers, no
// allocation, no exceptions, nothing of the C++ library.

namespace velora {
namespace {

constexpr DWORD kTerminated = 0xE0000001; // std::terminate, e.g. an exception that left a noexcept
constexpr int kMostFrames = 60;
constexpr int kMostModules = 96;

wchar_t g_report[MAX_PATH + 40];
wchar_t g_former[MAX_PATH + 40];
void (*g_giveBack)() noexcept = nullptr;
LONG g_crashed = 0;

struct Module {
    DWORD_PTR base, size;
    wchar_t name[64];
};
Module g_modules[kMostModules];
int g_moduleCount = 0;

char g_text[16384];
int g_length = 0;

/// wsprintfA writes at most 1024 characters, which every line here stays below.
template <class... Args>
void line(const char* format, Args... args)
{
    if (g_length < static_cast<int>(sizeof g_text) - 1024)
        g_length += wsprintfA(g_text + g_length, format, args...);
}

void listModules()
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, GetCurrentProcessId());
    if (snapshot == INVALID_HANDLE_VALUE)
        return;
    static MODULEENTRY32W entry;
    entry.dwSize = sizeof entry;
    for (BOOL more = Module32FirstW(snapshot, &entry); more && g_moduleCount < kMostModules;
         more = Module32NextW(snapshot, &entry)) {
        Module& module = g_modules[g_moduleCount++];
        module.base = reinterpret_cast<DWORD_PTR>(entry.modBaseAddr);
        module.size = entry.modBaseSize;
        lstrcpynW(module.name, entry.szModule, 64);
    }
    CloseHandle(snapshot);
}

const Module* moduleOf(DWORD_PTR address)
{
    for (int i = 0; i < g_moduleCount; ++i)
        if (address - g_modules[i].base < g_modules[i].size)
            return &g_modules[i];
    return nullptr;
}

void frame(DWORD_PTR address)
{
    if (const Module* module = moduleOf(address))
        line("  %ls+0x%lX\r\n", module->name, static_cast<DWORD>(address - module->base));
    else
        line("  0x%08lX\r\n", static_cast<DWORD>(address));
}

/// A return address stands right behind a call instruction; only then is the value on the stack
/// shown. Optimised code has no frame pointers to follow.
bool followsCall(DWORD_PTR address)
{
    if (!moduleOf(address))
        return false;
    const auto* code = reinterpret_cast<const unsigned char*>(address);
    if (IsBadReadPtr(code - 7, 7))
        return false;
    return code[-5] == 0xE8 || (code[-2] == 0xFF && (code[-1] & 0x38) == 0x10)
           || (code[-3] == 0xFF && (code[-2] & 0x38) == 0x10)
           || (code[-6] == 0xFF && (code[-5] & 0x38) == 0x10)
           || (code[-7] == 0xFF && (code[-6] & 0x38) == 0x10);
}

void stack(const CONTEXT& context)
{
    const auto* at = reinterpret_cast<const DWORD_PTR*>(context.Esp);
    MEMORY_BASIC_INFORMATION region;
    if (!VirtualQuery(at, &region, sizeof region))
        return;
    const auto* end = reinterpret_cast<const DWORD_PTR*>(
        static_cast<const char*>(region.BaseAddress) + region.RegionSize);
    for (int shown = 0; at < end && shown < kMostFrames; ++at) {
        if (followsCall(*at)) {
            frame(*at);
            ++shown;
        }
    }
}

void compose(const EXCEPTION_POINTERS& exception)
{
    const EXCEPTION_RECORD& record = *exception.ExceptionRecord;
    const CONTEXT& context = *exception.ContextRecord;
    SYSTEMTIME time;
    GetLocalTime(&time);
    line("%ls has crashed: %04d-%02d-%02d %02d:%02d:%02d\r\n", kProductName, time.wYear,
         time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond);
    line("exception 0x%08lX at\r\n", record.ExceptionCode);
    listModules();
    frame(reinterpret_cast<DWORD_PTR>(record.ExceptionAddress));
    if (record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION && record.NumberParameters >= 2)
        line("%s 0x%08lX\r\n", record.ExceptionInformation[0] ? "writing" : "reading",
             static_cast<DWORD>(record.ExceptionInformation[1]));
    line("eax %08lX ebx %08lX ecx %08lX edx %08lX\r\n", context.Eax, context.Ebx, context.Ecx,
         context.Edx);
    line("esi %08lX edi %08lX ebp %08lX esp %08lX eip %08lX\r\n", context.Esi, context.Edi,
         context.Ebp, context.Esp, context.Eip);
    line("stack:\r\n");
    stack(context);
    line("modules:\r\n");
    for (int i = 0; i < g_moduleCount; ++i)
        line("  %08lX %08lX %ls\r\n", static_cast<DWORD>(g_modules[i].base),
             static_cast<DWORD>(g_modules[i].size), g_modules[i].name);
}

void writeReport()
{
    MoveFileExW(g_report, g_former, MOVEFILE_REPLACE_EXISTING);
    const HANDLE file = CreateFileW(g_report, GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    DWORD written;
    WriteFile(file, g_text, static_cast<DWORD>(g_length), &written, nullptr);
    CloseHandle(file);
}

LONG WINAPI crashed(EXCEPTION_POINTERS* exception)
{
    // A crash inside this handler ends the process at once.
    if (InterlockedExchange(&g_crashed, 1) == 0) {
        compose(*exception);
        writeReport();
        if (g_giveBack)
            g_giveBack();
    }
    TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

[[noreturn]] void terminated()
{
    RaiseException(kTerminated, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    TerminateProcess(GetCurrentProcess(), kTerminated);
    for (;;)
        Sleep(INFINITE);
}

} // namespace

void installCrashHandler(const std::wstring& folder, void (*giveBack)() noexcept) noexcept
{
    if (folder.size() < MAX_PATH) {
        lstrcpyW(g_report, folder.c_str());
        lstrcatW(g_report, L"\\velora-crash.txt");
        lstrcpyW(g_former, g_report);
        lstrcatW(g_former, L".1");
    }
    g_giveBack = giveBack;
    SetUnhandledExceptionFilter(crashed);
    std::set_terminate(terminated);
}

} // namespace velora
