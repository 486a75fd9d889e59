#include "ui/MessageLoop.h"

#include "base/trap.h"
#include "base/win_error.h"
#include "ui/Form.h"

#include <algorithm>
#include <deque>
#include <vector>

namespace velora {

struct WaitHandle::Entry {
    HANDLE handle;
    std::function<void()> signalled;
    bool repeats;
    bool over = false;
};

namespace {
constexpr char kModule[] = "MessageLoop";
constexpr UINT kRunCall = WM_APP + 1;
constexpr std::size_t kMaxWaits = 60; // the system's limit is 63 beside the message queue

struct Loop {
    int depth = 0;
    bool quits = false;
    int code = 0;
    int sinceWait = 0;
    std::vector<std::weak_ptr<WaitHandle::Entry>> waits;
    std::deque<std::function<void()>> calls;
    HWND sink = nullptr;
};

Loop& loop()
{
    static auto& state = *new Loop;
    return state;
}

class Depth {
public:
    Depth() { ++loop().depth; }
    ~Depth() { --loop().depth; }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;
};

std::vector<std::shared_ptr<WaitHandle::Entry>> liveWaits()
{
    std::vector<std::shared_ptr<WaitHandle::Entry>> live;
    auto& waits = loop().waits;
    std::erase_if(waits, [](const auto& entry) { return entry.expired(); });
    for (const auto& weak : waits)
        if (auto entry = weak.lock(); entry && !entry->over)
            live.push_back(std::move(entry));
    return live;
}

// Waits for a message or a handle and serves the handle.
void waitOnce(DWORD milliseconds)
{
    loop().sinceWait = 0;
    const auto waits = liveWaits();
    std::vector<HANDLE> handles;
    for (const auto& entry : waits)
        handles.push_back(entry->handle);
    const DWORD count = static_cast<DWORD>(handles.size());
    const DWORD result = MsgWaitForMultipleObjectsEx(count, handles.data(), milliseconds,
                                                     QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    if (result == WAIT_OBJECT_0 + count || result == WAIT_TIMEOUT)
        return;
    if (result > WAIT_OBJECT_0 + count) {
        // A handle that was closed under us would make every wait fail: drop it. (Waiting for each
        // to find it would use up the signals of the others.)
        for (const auto& entry : waits) {
            DWORD flags = 0;
            if (!GetHandleInformation(entry->handle, &flags))
                entry->over = true;
        }
        Sleep(1);
        return;
    }
    const auto& entry = waits[result - WAIT_OBJECT_0];
    if (!entry->repeats)
        entry->over = true;
    const auto signalled = entry->signalled;
    trap(kModule, signalled, "wait handle");
}

void dispatch(MSG& message)
{
    if (message.message == WM_QUIT) {
        quitMessageLoop(static_cast<int>(message.wParam));
        return;
    }
    if (translateFormKeys(message))
        return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

// One message, or one wait of at most that long. A flood of messages must not starve the handles,
// nor a handle that stays signalled the messages: they take turns.
void turn(DWORD milliseconds)
{
    if (loop().depth == 1)
        deleteClosedForms();
    constexpr int kMessagesPerWait = 16;
    MSG message;
    if (loop().sinceWait++ >= kMessagesPerWait)
        waitOnce(0);
    if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        dispatch(message);
    else
        waitOnce(milliseconds);
}

LRESULT CALLBACK sinkProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    if (message != kRunCall)
        return DefWindowProcW(window, message, wParam, lParam);
    trap(
        kModule,
        [] {
            if (loop().calls.empty())
                return;
            const auto call = std::move(loop().calls.front());
            loop().calls.pop_front();
            call();
        },
        "posted call");
    return 0;
}

HWND sink()
{
    if (!loop().sink) {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = sinkProc;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"VeloraCalls";
        RegisterClassW(&windowClass);
        loop().sink = CreateWindowExW(0, windowClass.lpszClassName, L"", 0, 0, 0, 0, 0,
                                      HWND_MESSAGE, nullptr, windowClass.hInstance, nullptr);
        if (!loop().sink)
            throwLastError("no window for posted calls");
    }
    return loop().sink;
}

} // namespace

void pumpWhile(const std::function<bool()>& condition)
{
    const Depth depth;
    while (!loop().quits && condition())
        turn(INFINITE);
}

int runMessageLoop()
{
    pumpWhile([] { return true; });
    loop().quits = false;
    const Depth depth;
    if (loop().depth == 1)
        deleteClosedForms();
    return loop().code;
}

void quitMessageLoop(int code)
{
    loop().quits = true;
    loop().code = code;
    // Wakes the loop if it waits.
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

bool messageLoopQuits()
{
    return loop().quits;
}

void doEvents()
{
    const Depth depth;
    // What the messages themselves post is served later: a window that posts to itself for ever
    // must not hold the caller.
    constexpr int kMost = 1000;
    MSG message;
    waitOnce(0);
    for (int i = 0; i < kMost && !loop().quits && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);
         ++i)
        dispatch(message);
    if (loop().depth == 1)
        deleteClosedForms();
}

bool waitUntil(const std::function<bool()>& condition, DWORD milliseconds)
{
    const Depth depth;
    const DWORD start = GetTickCount();
    while (!condition()) {
        const DWORD passed = GetTickCount() - start;
        if (loop().quits || passed >= milliseconds)
            return false;
        constexpr DWORD kAskAgain = 20;
        turn(std::min(kAskAgain, milliseconds - passed));
    }
    return true;
}

void pause(DWORD milliseconds)
{
    waitUntil([] { return false; }, milliseconds);
}

void postCall(std::function<void()> call)
{
    const HWND window = sink();
    loop().calls.push_back(std::move(call));
    if (!PostMessageW(window, kRunCall, 0, 0)) {
        loop().calls.pop_back();
        throwLastError("message queue full");
    }
}

WaitHandle addWaitHandle(HANDLE handle, std::function<void()> signalled, bool repeats)
{
    if (liveWaits().size() >= kMaxWaits)
        throw Error("too many wait handles");
    WaitHandle result;
    result.entry_ = std::make_shared<WaitHandle::Entry>(
        WaitHandle::Entry{handle, std::move(signalled), repeats});
    loop().waits.push_back(result.entry_);
    return result;
}

} // namespace velora
