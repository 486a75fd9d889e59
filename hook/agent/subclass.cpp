// The window procedure that the agent puts over AOL's windows.
#include "hook/agent/agent.h"

namespace velora::agent {
namespace {

LRESULT callFormer(WNDPROC former, bool unicode, HWND window, UINT message, WPARAM wParam,
                   LPARAM lParam)
{
    if (!former)
        return IsWindowUnicode(window) ? DefWindowProcW(window, message, wParam, lParam)
                                       : DefWindowProcA(window, message, wParam, lParam);
    return unicode ? CallWindowProcW(former, window, message, wParam, lParam)
                   : CallWindowProcA(former, window, message, wParam, lParam);
}

LONG setProc(HWND window, bool unicode, WNDPROC proc)
{
    const LONG value = reinterpret_cast<LONG>(proc);
    return unicode ? SetWindowLongW(window, GWL_WNDPROC, value)
                   : SetWindowLongA(window, GWL_WNDPROC, value);
}

bool oursIsLast(const Record& record)
{
    const LONG own = reinterpret_cast<LONG>(&watchProc);
    return (record.unicode ? GetWindowLongW(record.window, GWL_WNDPROC)
                           : GetWindowLongA(record.window, GWL_WNDPROC))
           == own;
}

/// What the slots said to one message.
struct Verdict {
    bool swallow = false;
    std::uint32_t asked = 0;
    int codes = 0; ///< how many delayed events to post
    struct {
        std::uint32_t cookie, code;
    } delayed[4];
};

bool stillWatching(int slot, HWND window)
{
    return g.section && g.slot[slot].table.cookie && g.slot[slot].table.window == number(window);
}

/// Everything that is to happen before AOL has the message.
Verdict beforeAol(std::uint32_t slots, std::uint32_t skip, HWND window, UINT message, WPARAM wParam,
                  LPARAM lParam)
{
    Verdict verdict;
    for (int i = 0; i < wire::kSlots; ++i) {
        if (!(slots & 1u << i))
            continue;
        for (std::uint32_t r = 0; stillWatching(i, window) && r < g.slot[i].table.ruleCount; ++r) {
            const wire::Rule rule = g.slot[i].table.rules[r];
            if (!holds(rule, message, static_cast<std::uint32_t>(wParam)))
                continue;
            if (rule.mode & wire::kPostedBefore)
                postRule(i, r, message, wParam, lParam);
            if (!(rule.mode & wire::kVerdict) || (skip & 1u << i) || (verdict.asked & 1u << i))
                continue;
            if ((rule.mode & wire::kWithControl) && GetKeyState(VK_CONTROL) >= 0)
                continue;
            verdict.asked |= 1u << i;
            const std::uint32_t cookie = g.slot[i].table.cookie;
            const std::uint32_t answer = ask(i, window, message, wParam, lParam);
            verdict.swallow = verdict.swallow || wire::swallows(answer);
            if (wire::eventCode(answer) && verdict.codes < 4)
                verdict.delayed[verdict.codes++] = {
                    cookie, static_cast<std::uint32_t>(wire::eventCode(answer))};
        }
    }
    return verdict;
}

void afterAol(std::uint32_t slots, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    for (int i = 0; i < wire::kSlots; ++i)
        if (slots & 1u << i)
            for (std::uint32_t r = 0; stillWatching(i, window) && r < g.slot[i].table.ruleCount;
                 ++r)
                if ((g.slot[i].table.rules[r].mode & wire::kPostedAfter)
                    && holds(g.slot[i].table.rules[r], message, static_cast<std::uint32_t>(wParam)))
                    postRule(i, r, message, wParam, lParam);
}

void rolesAfterAol(std::uint32_t roles, HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                   LRESULT result)
{
    if (roles & kFrameRole) {
        if (message == WM_INITMENUPOPUP && HIWORD(lParam) == 0)
            insertInto(reinterpret_cast<HMENU>(wParam));
        if (message == WM_WINDOWPOSCHANGED || message == WM_SIZE || message == WM_SHOWWINDOW
            || message == WM_ACTIVATE || message == WM_ACTIVATEAPP)
            postMoved();
    }
    if (message == WM_PARENTNOTIFY)
        parentNotify(roles, window, wParam, lParam);
    if ((roles & kMdiRole) && message == WM_MDICREATE)
        touchChild(reinterpret_cast<HWND>(result));
    if ((roles & kChildRole) && message == WM_SETTEXT)
        touchChild(window);
}

void destroyed(Record& record)
{
    const Record former = record;
    record = {};
    if (!g.section)
        return;
    for (int i = 0; i < wire::kSlots; ++i)
        if (former.slots & 1u << i)
            g.slot[i] = {};
    g.settling.remove(number(former.window));
    if (former.roles & kHeldRole)
        heldDestroyed(former.window);
    if (former.window == g.mdi)
        g.mdi = nullptr;
    if (former.roles || former.slots)
        postEvent(wire::Event::gone, 0, 0, number(former.window));
}

} // namespace

Record* findRecord(HWND window)
{
    for (int i = 0; i < g.records; ++i)
        if (g.record[i].window == window)
            return &g.record[i];
    return nullptr;
}

LRESULT CALLBACK watchProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    Record* record = findRecord(window);
    if (!record)
        return callFormer(nullptr, false, window, message, wParam, lParam);
    // Any call out of here may attach, detach or destroy: from now on only the copy is used.
    const Record copy = *record;
    if (message == WM_NCDESTROY) {
        destroyed(*record);
        return callFormer(copy.former, copy.unicode, window, message, wParam, lParam);
    }
    const bool ownEnter = message == WM_CHAR && wParam == VK_RETURN && window == g.pressing;
    // AOL may stay in this message for long: what the user types meanwhile is no part of it.
    if (ownEnter)
        g.pressing = nullptr;
    if (!g.section || !(copy.roles | copy.slots) || ownEnter)
        return callFormer(copy.former, copy.unicode, window, message, wParam, lParam);

    if ((copy.roles & kFrameRole) && message == WM_COMMAND && tookCommand(wParam, lParam))
        return 0;
    const bool queued = InSendMessageEx(nullptr) == ISMEX_NOSEND;
    const auto followUp = record->press.next(message, static_cast<std::uint32_t>(wParam), queued);
    // Whoever took a press of the mouse hears of its release, too: only there it is known whether
    // the pointer is still on the button.
    if (followUp.swallow && message != WM_LBUTTONUP)
        return 0;
    Verdict verdict = beforeAol(copy.slots, followUp.asked, window, message, wParam, lParam);
    verdict.swallow = verdict.swallow || followUp.swallow;
    if (verdict.asked) {
        record = findRecord(window);
        if (record)
            record->press.pressed(message, static_cast<std::uint32_t>(wParam), verdict.asked,
                                  verdict.swallow);
    }
    LRESULT result = 0;
    if (!verdict.swallow && (!verdict.asked || IsWindow(window)))
        result = callFormer(copy.former, copy.unicode, window, message, wParam, lParam);
    afterAol(copy.slots, window, message, wParam, lParam);
    for (int i = 0; i < verdict.codes; ++i)
        postEvent(wire::Event::delayed, verdict.delayed[i].cookie, verdict.delayed[i].code,
                  number(window));
    if (g.section)
        rolesAfterAol(copy.roles, window, message, wParam, lParam, result);
    return result;
}

Record* watch(HWND window)
{
    if (Record* known = findRecord(window))
        return known;
    Record* free = findRecord(nullptr);
    if (!free) {
        if (g.records == kRecords)
            return nullptr;
        free = &g.record[g.records++];
    }
    *free = {};
    free->unicode = IsWindowUnicode(window);
    free->window = window;
    free->former = reinterpret_cast<WNDPROC>(setProc(window, free->unicode, watchProc));
    if (!free->former) {
        *free = {};
        return nullptr;
    }
    return free;
}

void unwatchIdle(Record& record)
{
    if (record.roles || record.slots)
        return;
    record.press = {};
    if (!oursIsLast(record))
        return;
    setProc(record.window, record.unicode, record.former);
    record = {};
}

wire::Status attachSlot(std::uint32_t slot)
{
    if (slot >= wire::kSlots)
        return wire::kRefused;
    const wire::Slot table = g.section->slots[slot];
    const HWND window = windowOf(table.window);
    if (!sound(table) || !isOurs(window))
        return wire::kRefused;
    detachSlot(slot);
    Record* record = watch(window);
    if (!record)
        return wire::kFull;
    g.slot[slot] = {table, 0, false};
    // Nothing of this slot can be under way yet; what stands there was left by its last user.
    g.section->slots[slot].pending = 0;
    record->slots |= 1u << slot;
    return wire::kDone;
}

void detachSlot(std::uint32_t slot)
{
    const HWND window = windowOf(g.slot[slot].table.window);
    g.slot[slot] = {};
    Record* record = window ? findRecord(window) : nullptr;
    if (!record)
        return;
    record->slots &= ~(1u << slot);
    unwatchIdle(*record);
}

void detachSlots()
{
    for (std::uint32_t i = 0; i < wire::kSlots; ++i)
        detachSlot(i);
}

} // namespace velora::agent
