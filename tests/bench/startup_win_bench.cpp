// How long programs take from their start to their first window, and how large they are.
#include "base/files.h"
#include "base/win.h"
#include "bench/bench.h"
#include "support/aolhost_win.h"

#include <stdexcept>
#include <string>

using namespace velora;
using namespace velora::bench;

namespace {

std::wstring beside(const wchar_t* name)
{
    return test::buildFolder() + L"\\" + name;
}

struct Sought {
    DWORD process;
    const wchar_t* title;
    bool found;
};

BOOL CALLBACK isSought(HWND window, LPARAM data)
{
    Sought& sought = *reinterpret_cast<Sought*>(data);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t title[64];
    GetWindowTextW(window, title, 64);
    sought.found |=
        process == sought.process && IsWindowVisible(window) && std::wstring(title) == sought.title;
    return !sought.found;
}

/// Milliseconds until the program shows a window with that title. The program is ended then.
double untilWindow(const std::wstring& program, const wchar_t* title)
{
    const double start = clockMs();
    const test::Process process(program, {});
    Sought sought{process.id(), title, false};
    while (!sought.found && clockMs() - start < 20000) {
        EnumWindows(isSought, reinterpret_cast<LPARAM>(&sought));
        if (!sought.found && WaitForSingleObject(process.handle(), 1) == WAIT_OBJECT_0)
            throw std::runtime_error("a program ended before it showed its window");
    }
    const double taken = clockMs() - start;
    if (!sought.found)
        throw std::runtime_error("a program showed no window");
    return taken;
}

double medianStart(const std::wstring& program, const wchar_t* title)
{
    untilWindow(program, title); // its file is in memory from now on
    std::vector<double> taken;
    for (int round = 0; round < 9; ++round)
        taken.push_back(untilWindow(program, title));
    return median(std::move(taken));
}

unsigned long long sizeOf(const wchar_t* name)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(beside(name).c_str(), GetFileExInfoStandard, &data))
        throw std::runtime_error("a module is missing beside the benchmark");
    return data.nFileSizeLow;
}

} // namespace

// script/bench names the installed program: a start needs its companion files.
BENCH("start-up: from the start of the program to its window")
{
    constexpr double kOwnPause = 200; // the start-up window's last moment, which the user shall see
    const double empty = medianStart(beside(L"velora_bench_empty.exe"), L"Empty window");
    report.row("a program with one empty window", empty);
    wchar_t installed[MAX_PATH];
    if (!GetEnvironmentVariableW(L"VELORA_INSTALLED", installed, MAX_PATH)) {
        report.note("velora.exe: not measured, no installation named in VELORA_INSTALLED");
        return;
    }
    const velora::test::AolHost aol; // or the start would be AOL's
    const double program = medianStart(installed, L"Velora Toolbar");
    report.row("velora.exe to its panel over AOL", program, empty);
    report.rowWithAim("velora.exe's own part: less the empty program and 200 ms of pause",
                      program - empty - kOwnPause, 150);
}

BENCH("sizes")
{
    report.bytes("velora.exe", sizeOf(L"velora.exe"), 2u << 20);
    report.bytes("dwspy36.dll, the module in AOL", sizeOf(L"dwspy36.dll"), 32u << 10);
}
