// The IM manager on AOL's real windows: how soon an IM has its tab, what a scan costs, and what is
// left of a thousand IMs.
#include "base/handles.h"
#include "base/win.h"
#include "bench/bench.h"
#include "core/modAOL.h"
#include "hook/AgentLink.h"
#include "im_mail/clsIMSession.h"
#include "im_mail/frmTabIM.h"
#include "im_mail/modIM_Manager.h"
#include "settings/Options.h"
#include "support/aolhost_win.h"
#include "support/memory_store.h"
#include "support/tempdir.h"

#include <psapi.h>

#include <stdexcept>

using namespace velora;
using namespace velora::bench;
using velora::test::AolHost;
using velora::test::waitFor;

namespace {

void need(bool done, const char* what)
{
    if (!done)
        throw std::runtime_error(what);
}

/// AOL and the manager, without a toolbar.
struct Scene {
    TempDir temp;
    AolHost host{{.version = 6}};
    std::wstring formerFolder = imProgramFolder();

    Scene()
    {
        setSettingsStore(std::make_unique<MemoryStore>());
        LoadSettings();
        imProgramFolder() = temp.path();
        aol() = {};
        aol().edition = 0;
        aol().version = 6;
        need(aolLink().connect(host.frame()), "the agent cannot be brought into AOL");
        aolLink().onChild = imDocumentChanged;
        aolLink().onGone = imDocumentGone;
        startIMs();
    }
    ~Scene()
    {
        endIMs();
        Form::unloadAll();
        aolLink().disconnect();
        aol() = {};
        setSettingsStore(nullptr);
        imProgramFolder() = formerFolder;
    }
    HWND arrive(int number)
    {
        const std::wstring name = L"Member" + std::to_wstring(number);
        host.command(L"im " + name + L": hello");
        return host.document(name);
    }
    static bool isTaken(HWND im)
    {
        const clsIMSession* const session = imSession(im);
        return session && session->taken;
    }
    void close(HWND im)
    {
        // On a loaded machine AOL may be too busy to be told; a user would press again.
        need(waitFor([&] {
                 if (isTaken(im))
                     CloseUNT(im);
                 return !imSession(im) && !IsWindow(im);
             }),
             "an IM stays open");
    }
};

struct Counts {
    DWORD handles = 0, gdi = 0, windows = 0, kilobytes = 0;
};

BOOL CALLBACK countWindow(HWND window, LPARAM counter) noexcept
{
    auto& [process, count] = *reinterpret_cast<std::pair<DWORD, DWORD>*>(counter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    count += owner == process;
    if (GetAncestor(window, GA_PARENT) == GetDesktopWindow())
        EnumChildWindows(window, countWindow, counter);
    return TRUE;
}

Counts countsOf(HANDLE process, DWORD id)
{
    Counts counts;
    GetProcessHandleCount(process, &counts.handles);
    // Wine does not count them, but gives a new one the lowest number that is free.
    if (counts.handles == 0 && id == GetCurrentProcessId()) {
        const KernelHandle probe(CreateEventW(nullptr, TRUE, FALSE, nullptr));
        counts.handles = static_cast<DWORD>(reinterpret_cast<UINT_PTR>(probe.get()) / 4);
    }
    std::pair<DWORD, DWORD> windows{id, 0};
    EnumWindows(countWindow, reinterpret_cast<LPARAM>(&windows));
    counts.windows = windows.second;
    PROCESS_MEMORY_COUNTERS memory = {};
    GetProcessMemoryInfo(process, &memory, sizeof memory);
    counts.kilobytes = static_cast<DWORD>(memory.PagefileUsage / 1024);
    counts.gdi = GetGuiResources(process, GR_GDIOBJECTS);
    // Wine does not count them, but knows a handle by its index.
    for (DWORD index = 0;
         !GetGuiResources(process, GR_GDIOBJECTS) && id == GetCurrentProcessId() && index < 0x10000;
         ++index)
        counts.gdi += GetObjectType(reinterpret_cast<HGDIOBJ>(index)) != 0;
    return counts;
}

std::string shown(const char* whose, const Counts& before, const Counts& after)
{
    const auto pair = [](const char* what, DWORD a, DWORD b) {
        return std::string(", ") + what + " " + std::to_string(a) + " -> " + std::to_string(b);
    };
    return whose + pair("handles", before.handles, after.handles)
           + pair("GDI objects", before.gdi, after.gdi)
           + pair("windows", before.windows, after.windows)
           + pair("KB", before.kilobytes, after.kilobytes);
}

/// What re-parenting alone costs, between two windows of other processes.
double bareReparenting(Scene& scene)
{
    opt::IM::TabsOn.set(false);
    const HWND page = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0,
                                      400, 300, nullptr, nullptr, nullptr, nullptr);
    std::vector<double> times;
    for (int i = 0; i < 10; ++i) {
        const HWND im = scene.arrive(i);
        const double start = clockMs();
        SetParent(im, page);
        SetWindowPos(im, nullptr, 0, 0, 400, 300, SWP_NOZORDER | SWP_NOACTIVATE);
        times.push_back(clockMs() - start);
        SetParent(im, scene.host.mdi());
        scene.host.command(L"close Member" + std::to_wstring(i));
    }
    DestroyWindow(page);
    waitFor([] { return imSessions().empty(); });
    opt::IM::TabsOn.set(true);
    return median(times);
}

} // namespace

BENCH("im: from AOL's window to its tab")
{
    Scene scene;
    const double bare = bareReparenting(scene);
    report.row("bare re-parenting", bare);
    std::vector<double> times;
    for (int i = 0; i < 15; ++i) {
        const HWND im = scene.arrive(100 + i);
        const double built = clockMs();
        need(waitFor([&] { return Scene::isTaken(im); }), "an IM is not taken");
        times.push_back(clockMs() - built);
        scene.close(im);
    }
    report.row("built by AOL to its tab, 40 ms of it until it counts as settled", median(times),
               bare);
    report.rowWithAim("the same against the aim", median(times), 100);
}

BENCH("im: a scan with 50 open IMs")
{
    Scene scene;
    for (int i = 0; i < 50; ++i)
        scene.arrive(i);
    need(waitFor([] { return openIMs().Count() == 50; }), "50 IMs are not taken");
    const HWND mdi = scene.host.mdi();
    const auto walk = [&] {
        wchar_t text[256];
        for (HWND child = GetWindow(mdi, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            GetClassNameW(child, text, 256);
            GetWindowTextW(child, text, 256);
        }
    };
    const double bare = medianMs(200, walk);
    report.row("walking AOL's documents", bare);
    report.row("FindImTab, the 50 in tabs", medianMs(200, [] { FindImTab(true); }), bare);
    setTabsOn(false);
    need(waitFor([] { return openIMs().Count() == 0; }), "the IMs are not given back");
    const double full = medianMs(200, walk);
    report.row("walking AOL's documents, the 50 among them", full);
    report.row("FindImTab, the 50 in AOL", medianMs(200, [] { FindImTab(false); }), full);
    report.row("what the watch timer does", medianMs(50, [] { watchIMs(); }), full);
}

BENCH("im: a thousand opened and closed")
{
    Scene scene;
    const auto rounds = [&](int from, int to) {
        for (int i = from; i < to; ++i) {
            const HWND im = scene.arrive(i);
            need(waitFor([&] { return Scene::isTaken(im); }), "an IM is not taken");
            scene.close(im);
        }
    };
    rounds(0, 50); // what is made once
    const HANDLE self = GetCurrentProcess();
    const Counts before = countsOf(self, GetCurrentProcessId());
    const Counts aolBefore = countsOf(scene.host.process(), scene.host.processId());
    const double start = clockMs();
    rounds(50, 1050);
    report.row("one IM, opened, taken, logged and closed", (clockMs() - start) / 1000);
    report.note(shown("Velora", before, countsOf(self, GetCurrentProcessId())));
    report.note(shown("AOL", aolBefore, countsOf(scene.host.process(), scene.host.processId())));
}
