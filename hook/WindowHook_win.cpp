#include "hook/WindowHook.h"

#include "base/trap.h"
#include "hook/AgentImpl.h"

namespace velora {
namespace {

constexpr char kModule[] = "WindowHook";

wire::Rule wireRule(const WatchRule& rule)
{
    const std::uint32_t way = rule.delivery == Delivery::verdict        ? wire::kVerdict
                              : rule.delivery == Delivery::postedBefore ? wire::kPostedBefore
                                                                        : wire::kPostedAfter;
    return {rule.message, static_cast<std::uint32_t>(rule.wLow),
            static_cast<std::uint32_t>(rule.wHigh),
            way | (rule.coalesce && way != wire::kVerdict ? wire::kCoalesce : 0u)
                | (rule.withControl && way == wire::kVerdict ? wire::kWithControl : 0u)};
}

} // namespace

bool AgentImpl::attachHook(WindowHook& hook, HWND window, std::initializer_list<WatchRule> rules)
{
    if (!connected() || rules.size() > wire::kRulesPerSlot)
        return false;
    std::uint32_t slot = 0;
    while (slot < hooks_.size() && (hooks_[slot].hook || hooks_[slot].undetached))
        ++slot;
    if (slot == hooks_.size())
        return false;
    wire::Slot& shared = section()->slots[slot];
    wire::Slot fresh = {};
    fresh.window = reinterpret_cast<std::uint32_t>(window);
    fresh.cookie = ++cookies_;
    for (const WatchRule& rule : rules)
        fresh.rules[fresh.ruleCount++] = wireRule(rule);
    shared = fresh;
    // Known before the command: the window may get a message before the agent's answer is here.
    hooks_[slot] = {&hook, fresh.cookie, 0};
    hook.impl_ = shared_from_this();
    hook.slot_ = static_cast<int>(slot);
    hook.cookie_ = fresh.cookie;
    hook.window_ = window;
    const auto keep = shared_from_this();
    if (succeeds(wire::Op::attach, {.a = slot}))
        return hook.cookie_ == fresh.cookie && hook.window_ == window;
    if (connected() && hooks_[slot].cookie == fresh.cookie) {
        shared.cookie = 0;
        hooks_[slot] = {};
        hook.window_ = nullptr;
    }
    return false;
}

void AgentImpl::detachHook(WindowHook& hook)
{
    Hooked* hooked = byCookie(hook.cookie_);
    if (!hooked || hooked->hook != &hook)
        return;
    const auto slot = static_cast<std::uint32_t>(hooked - hooks_.data());
    section()->slots[slot].cookie = 0;
    *hooked = {nullptr, 0, hook.cookie_};
    if (command(wire::Op::detach, {.a = slot, .b = hook.cookie_, .timeoutMs = kAolTimerTimeout}))
        hooks_[slot].undetached = 0;
}

void AgentImpl::pause(int slot, std::uint32_t cookie)
{
    if (byCookie(cookie))
        __sync_fetch_and_add(&section()->slots[slot].paused, 1);
}

void AgentImpl::resume(int slot, std::uint32_t cookie)
{
    if (!byCookie(cookie))
        return;
    wire::Slot& shared = section()->slots[slot];
    if (__sync_sub_and_fetch(&shared.paused, 1) > 0)
        return;
    const std::int32_t missed = __sync_fetch_and_and(&shared.missed, 0);
    for (std::uint32_t rule = 0; rule < wire::kRulesPerSlot; ++rule)
        if (missed & 1 << rule)
            PostMessageW(events_, wire::kOwnEvent, 0x10000 | rule, static_cast<LPARAM>(cookie));
}

bool WindowHook::attach(AgentLink& link, HWND window, std::initializer_list<WatchRule> rules)
{
    return trap(
        kModule,
        [&] {
            detach();
            return link.impl_->attachHook(*this, window, rules);
        },
        false);
}

void WindowHook::detach()
{
    trap(kModule, [&] {
        const auto impl = std::move(impl_);
        impl_ = nullptr;
        if (impl)
            impl->detachHook(*this);
        window_ = nullptr;
        cookie_ = 0;
        slot_ = -1;
    });
}

WindowHook::Pause::Pause(WindowHook& hook)
    : impl_(hook.impl_), slot_(hook.slot_), cookie_(hook.cookie_)
{
    if (impl_)
        impl_->pause(slot_, cookie_);
}

WindowHook::Pause::~Pause()
{
    if (impl_)
        impl_->resume(slot_, cookie_);
}

void HookMessage::answerNow()
{
    if (posted || answered_)
        return;
    answered_ = true;
    ReplyMessage(static_cast<LRESULT>(wire::answer(noDefault, delayedCode_)));
}

} // namespace velora
