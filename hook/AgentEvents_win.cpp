// What comes from the agent: questions that AOL waits for, and events from the queue.
#include "base/trap.h"
#include "hook/AgentImpl.h"

namespace velora {
namespace {

constexpr char kModule[] = "AgentLink";

std::int32_t exchange(std::int32_t& value, std::int32_t with)
{
    return __sync_lock_test_and_set(&value, with);
}

HWND windowOf(std::uint32_t number)
{
    return reinterpret_cast<HWND>(number);
}

} // namespace

LRESULT CALLBACK AgentImpl::eventProc(HWND window, UINT message, WPARAM wParam,
                                      LPARAM lParam) noexcept
{
    auto* impl = reinterpret_cast<AgentImpl*>(GetWindowLongW(window, GWL_USERDATA));
    if (impl && (message == WM_COPYDATA || message >= WM_APP))
        return trap(
            kModule, [&] { return impl->onMessage(message, wParam, lParam); }, LRESULT{0});
    return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT AgentImpl::onMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto keep = shared_from_this();
    if (!section())
        return 0;
    const bool current = static_cast<std::uint32_t>(lParam) == generation_;
    switch (message) {
    case WM_COPYDATA: return onQuestion(wParam, reinterpret_cast<const COPYDATASTRUCT*>(lParam));
    case wire::kDoorbell:
        if (current)
            onDoorbell(static_cast<std::uint32_t>(wParam));
        return 0;
    case wire::kAlive:
        if (current)
            onAlive();
        return 0;
    case wire::kOwnEvent: onOwnEvent(wParam, static_cast<std::uint32_t>(lParam)); return 0;
    case wire::kAolEnded: onAolEnded(); return 0;
    default: return 0;
    }
}

LRESULT AgentImpl::onQuestion(WPARAM sender, const COPYDATASTRUCT* data)
{
    if (reinterpret_cast<HWND>(sender) != agentWindow_ || !data || data->dwData != wire::kMagic
        || data->cbData != sizeof(wire::Question))
        return 0;
    const auto question = *static_cast<const wire::Question*>(data->lpData);
    if (question.version != wire::kVersion || question.generation != generation_)
        return 0;
    busy_ = false;
    Hooked* hooked = byCookie(question.cookie);
    if (!hooked || section()->slots[hooked - hooks_.data()].paused)
        return 0;
    HookMessage message;
    message.window = windowOf(question.window);
    message.message = question.message;
    message.wParam = question.wParam;
    message.lParam = static_cast<LPARAM>(question.lParam);
    message.shift = question.modifiers & wire::kShift;
    message.control = question.modifiers & wire::kControl;
    message.alt = question.modifiers & wire::kAlt;
    raise(*hooked, message);
    return static_cast<LRESULT>(wire::answer(message.noDefault, message.delayedCode()));
}

void AgentImpl::onDoorbell(std::uint32_t position)
{
    // A handler may pump messages, so the next doorbell may come in the middle of this one; whoever
    // takes a record moves the tail on first.
    for (;;) {
        wire::Section* shared = section();
        if (!shared || shared->queueTail == shared->queueHead
            || static_cast<std::int32_t>(shared->queueTail - position) > 0)
            return;
        const wire::Queued event = shared->queue[shared->queueTail % wire::kQueueSize];
        __sync_synchronize();
        shared->queueTail = shared->queueTail + 1;
        onEvent(event);
    }
}

void AgentImpl::onEvent(const wire::Queued& event)
{
    switch (event.kind) {
    case wire::Event::message: {
        HookMessage message;
        message.message = event.a;
        message.wParam = event.b;
        message.lParam = static_cast<LPARAM>(event.c);
        raiseMissable(event.cookie, event.extra, message);
        return;
    }
    case wire::Event::delayed: return raiseDelayed(event.cookie, static_cast<int>(event.extra));
    case wire::Event::child: return call(&AgentLink::onChild, windowOf(event.a));
    case wire::Event::gone: return onGone(windowOf(event.a));
    case wire::Event::moved: exchange(section()->movedPending, 0); return call(&AgentLink::onMoved);
    case wire::Event::menu: return call(&AgentLink::onMenu, UINT{event.a});
    case wire::Event::muted: command(wire::Op::ping, {}); return;
    }
}

/// `what`: an event code, or 0x10000 and a rule number.
void AgentImpl::onOwnEvent(WPARAM what, std::uint32_t cookie)
{
    if (!(what & 0x10000))
        return raiseDelayed(cookie, static_cast<int>(what));
    Hooked* hooked = byCookie(cookie);
    if (!hooked)
        return;
    const std::uint32_t rule = what & 0xFFFF;
    const wire::Slot& slot = section()->slots[hooked - hooks_.data()];
    if (rule >= slot.ruleCount || rule >= wire::kRulesPerSlot)
        return;
    HookMessage message;
    message.message = slot.rules[rule].message;
    message.wParam = slot.rules[rule].wLow;
    raiseMissable(cookie, rule, message);
}

AgentImpl::Hooked* AgentImpl::byCookie(std::uint32_t cookie)
{
    for (Hooked& hooked : hooks_)
        if (cookie && hooked.cookie == cookie && hooked.hook)
            return &hooked;
    return nullptr;
}

/// A posted rule's event: while the hook is paused it is kept if it coalesces, else dropped.
void AgentImpl::raiseMissable(std::uint32_t cookie, std::uint32_t rule, HookMessage& message)
{
    Hooked* hooked = byCookie(cookie);
    if (!hooked || rule >= wire::kRulesPerSlot)
        return;
    wire::Slot& slot = section()->slots[hooked - hooks_.data()];
    const std::int32_t bit = 1 << rule;
    // Cleared before the handler runs: what changes while it reads makes an event of its own.
    __sync_fetch_and_and(&slot.pending, ~bit);
    if (slot.paused) {
        if (slot.rules[rule].mode & wire::kCoalesce)
            __sync_fetch_and_or(&slot.missed, bit);
        return;
    }
    message.window = windowOf(slot.window);
    message.posted = true;
    raise(*hooked, message);
    if (message.delayedCode() && byCookie(cookie))
        PostMessageW(events_, wire::kOwnEvent, message.delayedCode() & 0xFF,
                     static_cast<LPARAM>(cookie));
}

void AgentImpl::raise(Hooked& hooked, HookMessage& message)
{
    // The handler may detach or destroy its hook, so it is a copy that runs.
    const auto handler = hooked.hook->WndMessageX;
    if (handler)
        trap(
            kModule, [&] { handler(message); }, "WndMessageX");
}

void AgentImpl::raiseDelayed(std::uint32_t cookie, int code)
{
    Hooked* hooked = byCookie(cookie);
    if (!hooked)
        return;
    const auto handler = hooked->hook->DelayedEvent;
    if (handler)
        trap(
            kModule, [&] { handler(code); }, "DelayedEvent");
}

template <class Callback, class... Values>
void AgentImpl::call(Callback AgentLink::*callback, Values... values)
{
    if (!owner_)
        return;
    const Callback handler = owner_->*callback;
    if (handler)
        trap(
            kModule, [&] { handler(values...); }, "AgentLink");
}

void AgentImpl::onGone(HWND window)
{
    for (Hooked& hooked : hooks_)
        if (hooked.hook && hooked.hook->window_ == window) {
            section()->slots[&hooked - hooks_.data()].cookie = 0;
            hooked.hook->window_ = nullptr;
            hooked = {};
        }
    std::erase_if(held, [&](const HeldIm& entry) { return entry.im == window; });
    call(&AgentLink::onGone, window);
}

void AgentImpl::onAlive()
{
    busy_ = false;
    for (std::uint32_t i = 0; i < hooks_.size() && connected(); ++i)
        if (const std::uint32_t cookie = hooks_[i].undetached)
            if (command(wire::Op::detach, {.a = i, .b = cookie, .timeoutMs = kAolTimerTimeout}))
                hooks_[i].undetached = 0;
    if (menusUnsynced_)
        syncMenus();
}

void AgentImpl::onAolEnded()
{
    forget();
    call(&AgentLink::onAolEnded);
}

} // namespace velora
