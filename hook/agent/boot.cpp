// How the agent comes into AOL and how it lets go.
#include "hook/agent/agent.h"

namespace velora::agent {

State g;

namespace {

UINT bootMessage()
{
    static UINT message = 0;
    if (!message)
        message = RegisterWindowMessageW(wire::kBootMessage);
    return message;
}

VOID CALLBACK companionEnded(PVOID generation, BOOLEAN)
{
    // A pool thread: restoring window procedures from here would be wrong, so the agent's own
    // window does it.
    PostMessageW(g.window, wire::kCompanionDead, reinterpret_cast<WPARAM>(generation), 0);
}

wire::Section* openSection(std::uint32_t pid, std::uint32_t generation, HANDLE& mapping)
{
    wchar_t name[64];
    wsprintfW(name, L"%s%08lx%08lx", wire::kSectionName, static_cast<unsigned long>(pid),
              static_cast<unsigned long>(generation));
    mapping = OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, name);
    if (!mapping)
        return nullptr;
    auto* section =
        static_cast<wire::Section*>(MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, 0));
    MEMORY_BASIC_INFORMATION memory;
    if (section && VirtualQuery(section, &memory, sizeof memory)
        && memory.RegionSize >= sizeof(wire::Section) && section->magic == wire::kMagic
        && section->version == wire::kVersion && section->size == sizeof(wire::Section)
        && section->companionPid == pid && section->generation == generation)
        return section;
    if (section)
        UnmapViewOfFile(section);
    CloseHandle(mapping);
    return nullptr;
}

bool makeWindow()
{
    if (g.window && IsWindow(g.window))
        return true;
    WNDCLASSW agentClass = {};
    agentClass.lpfnWndProc = agentProc;
    agentClass.hInstance = g.module;
    agentClass.lpszClassName = wire::kAgentClass;
    RegisterClassW(&agentClass);
    g.window = CreateWindowExW(0, wire::kAgentClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                               g.module, nullptr);
    return g.window && registerHolderClass();
}

bool adopt(wire::Section* section, HANDLE mapping)
{
    DWORD pid = 0;
    GetWindowThreadProcessId(windowOf(section->companionWindow), &pid);
    if (pid != section->companionPid || !isOurs(windowOf(section->frame)) || !makeWindow())
        return false;
    g.companion = OpenProcess(SYNCHRONIZE, FALSE, section->companionPid);
    if (!g.companion)
        return false;
    g.section = section;
    g.mapping = mapping;
    g.generation = section->generation;
    g.companionWindow = windowOf(section->companionWindow);
    if (!RegisterWaitForSingleObject(&g.wait, g.companion, companionEnded,
                                     reinterpret_cast<PVOID>(g.generation), INFINITE,
                                     WT_EXECUTEONLYONCE)) {
        g.wait = nullptr;
        return false;
    }
    return true;
}

} // namespace

bool isOurs(HWND window)
{
    return window && GetWindowThreadProcessId(window, nullptr) == g.thread;
}

void boot(std::uint32_t companionPid, std::uint32_t generation)
{
    if (g.releasing || (g.section && g.generation == generation))
        return;
    HANDLE mapping = nullptr;
    wire::Section* section = openSection(companionPid, generation, mapping);
    if (!section)
        return;
    // The module stays for the rest of AOL's life: a window procedure of ours may be called for as
    // long as another program's lies over it.
    HMODULE pinned;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<LPCWSTR>(&boot), &pinned);
    release();
    g.thread = GetCurrentThreadId();
    if (!adopt(section, mapping)) {
        const DWORD error = GetLastError();
        section->bootError = error ? error : ERROR_INVALID_DATA;
        if (g.companion)
            CloseHandle(g.companion);
        g.companion = nullptr;
        g.section = nullptr;
        g.mapping = nullptr;
        UnmapViewOfFile(section);
        CloseHandle(mapping);
        return;
    }
    section->aolPid = GetCurrentProcessId();
    section->aolThread = g.thread;
    watchFrame(windowOf(section->frame));
    section->agentWindow = number(g.window);
}

void release()
{
    if (!g.section)
        return;
    // First of all nothing more goes to the program: giving back sends messages through windows
    // that are still subclassed.
    wire::Section* section = g.section;
    g.releasing = true;
    g.section = nullptr;
    g.generation = 0;
    KillTimer(g.window, kSettleTimer);
    g.settling.clear();
    removeMenus();
    giveAllIms();
    detachSlots();
    for (int i = 0; i < g.records; ++i)
        if (g.record[i].window) {
            g.record[i].roles = 0;
            unwatchIdle(g.record[i]);
        }
    // Waits for a callback that is just running; it only posts.
    UnregisterWaitEx(g.wait, INVALID_HANDLE_VALUE);
    CloseHandle(g.companion);
    UnmapViewOfFile(section);
    CloseHandle(g.mapping);
    g.wait = g.companion = g.mapping = nullptr;
    g.companionWindow = g.frame = g.mdi = nullptr;
    g.releasing = false;
}

} // namespace velora::agent

extern "C" {

/// The hook that brings the module into AOL; the program removes it as soon as it has booted,
/// because a hook slows every message of the thread.
__declspec(dllexport) LRESULT CALLBACK dwBootHook(int code, WPARAM wParam, LPARAM lParam)
{
    using namespace velora::agent;
    if (code == HC_ACTION) {
        const auto* sent = reinterpret_cast<const CWPSTRUCT*>(lParam);
        if (sent->message == bootMessage())
            boot(static_cast<std::uint32_t>(sent->wParam),
                 static_cast<std::uint32_t>(sent->lParam));
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH) {
        velora::agent::g.module = module;
        DisableThreadLibraryCalls(module);
    }
    return TRUE;
}
}
