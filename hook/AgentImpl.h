#pragma once
// Inside of AgentLink and WindowHook: the connection, its section of shared memory and its event
// window. For the files of this room only.
#include "base/handles.h"
#include "hook/AgentLink.h"
#include "hook/WindowHook.h"
#include "hook/wire.h"

#include <array>
#include <memory>
#include <vector>

namespace velora {

class AgentImpl : public std::enable_shared_from_this<AgentImpl> {
public:
    explicit AgentImpl(AgentLink& owner) : owner_(&owner) {}
    AgentImpl(const AgentImpl&) = delete;
    AgentImpl& operator=(const AgentImpl&) = delete;

    /// The link object is going; its hooks may live on, detached.
    void orphan() { owner_ = nullptr; }

    // AgentBoot_win.cpp
    bool connect(HWND frame, std::wstring_view dll);
    void disconnect();
    bool connected() const { return section() && IsWindow(agentWindow_); }

    // AgentLink_win.cpp
    struct Arguments {
        HWND window = nullptr;
        std::uint32_t a = 0, b = 0;
        RECT area = {};
        std::wstring_view text = {};
        DWORD timeoutMs = kAolTimeout;
    };
    /// The agent's answer; absent when AOL is busy or gone.
    std::optional<std::int32_t> command(wire::Op op, const Arguments& arguments);
    bool succeeds(wire::Op op, const Arguments& arguments);
    /// Runs a read; the bulk area when it holds this read's result.
    const wire::Bulk* read(wire::Op op, const Arguments& arguments);
    void noteBusy();
    void syncMenus();

    // WindowHook_win.cpp
    bool attachHook(WindowHook& hook, HWND window, std::initializer_list<WatchRule> rules);
    void detachHook(WindowHook& hook);
    void pause(int slot, std::uint32_t cookie);
    void resume(int slot, std::uint32_t cookie);

    wire::Section* section() const { return static_cast<wire::Section*>(view_.get()); }

    struct HeldIm {
        HWND im, holder;
    };
    std::vector<HeldIm> held;

private:
    friend class AgentLink;

    struct Hooked {
        WindowHook* hook = nullptr;
        std::uint32_t cookie = 0;
        std::uint32_t undetached = 0; ///< cookie that the agent still has to let go
    };

    // AgentBoot_win.cpp
    bool makeSection(HWND frame);
    bool makeEventWindow();
    bool bootAgent(HWND frame, DWORD thread, const std::wstring& dll);
    bool fail(DWORD error);
    void forget();

    // AgentEvents_win.cpp
    static LRESULT CALLBACK eventProc(HWND window, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept;
    LRESULT onMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT onQuestion(WPARAM sender, const COPYDATASTRUCT* data);
    void onDoorbell(std::uint32_t position);
    void onEvent(const wire::Queued& event);
    void onOwnEvent(WPARAM what, std::uint32_t cookie);
    void onGone(HWND window);
    void onAlive();
    void onAolEnded();
    Hooked* byCookie(std::uint32_t cookie);
    void raise(Hooked& hooked, HookMessage& message);
    void raiseMissable(std::uint32_t cookie, std::uint32_t rule, HookMessage& message);
    void raiseDelayed(std::uint32_t cookie, int code);
    template <class Callback, class... Values>
    void call(Callback AgentLink::*callback, Values... values);

    AgentLink* owner_;
    HWND frame_ = nullptr, events_ = nullptr, agentWindow_ = nullptr;
    DWORD thread_ = 0, lastError_ = 0;
    KernelHandle process_, mapping_;
    MappedView view_;
    HANDLE wait_ = nullptr;
    std::uint32_t generation_ = 0, sequence_ = 0, cookies_ = 0;
    bool busy_ = false, menusUnsynced_ = false;
    std::array<Hooked, wire::kSlots> hooks_;
};

} // namespace velora
