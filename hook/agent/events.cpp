// What the agent tells and asks the program.
#include "hook/agent/agent.h"

namespace velora::agent {
namespace {

// Vista's SMTO_ERRORONEXIT: the wait ends when the program's thread does. Older systems ignore it.
constexpr UINT kErrorOnExit = 0x20;

std::int32_t* word(std::int32_t& value)
{
    return &value;
}
bool setBit(std::int32_t& bits, std::int32_t bit)
{
    return __sync_fetch_and_or(word(bits), bit) & bit;
}
bool clearBit(std::int32_t& bits, std::int32_t bit)
{
    return __sync_fetch_and_and(word(bits), ~bit) & bit;
}

/// Of this thread, so as they were when the message was made: by now the user may have let go.
std::uint32_t modifiers()
{
    return (GetKeyState(VK_SHIFT) < 0 ? wire::kShift : 0u)
           | (GetKeyState(VK_CONTROL) < 0 ? wire::kControl : 0u)
           | (GetKeyState(VK_MENU) < 0 ? wire::kAlt : 0u);
}

} // namespace

bool postEvent(wire::Event kind, std::uint32_t cookie, std::uint32_t extra, std::uint32_t a,
               std::uint32_t b, std::uint32_t c)
{
    wire::Section* section = g.section;
    if (!section)
        return false;
    const std::uint32_t head = section->queueHead;
    if (head - *const_cast<volatile std::uint32_t*>(&section->queueTail) >= wire::kQueueSize) {
        ++section->lostEvents;
        return false;
    }
    section->queue[head % wire::kQueueSize] = {kind, cookie, extra, a, b, c};
    __sync_synchronize();
    section->queueHead = head + 1;
    if (PostMessageW(g.companionWindow, wire::kDoorbell, head, g.generation))
        return true;
    section->queueHead = head;
    ++section->lostEvents;
    return false;
}

void postMoved()
{
    wire::Section* section = g.section;
    if (!section || setBit(section->movedPending, 1))
        return;
    if (!postEvent(wire::Event::moved, 0, 0, 0))
        clearBit(section->movedPending, 1);
}

void postRule(int slot, std::uint32_t rule, UINT message, WPARAM wParam, LPARAM lParam)
{
    wire::Slot& shared = g.section->slots[slot];
    const wire::Slot& own = g.slot[slot].table;
    if (shared.cookie != own.cookie)
        return;
    const bool coalesce = own.rules[rule].mode & wire::kCoalesce;
    const std::int32_t bit = 1 << rule;
    const auto paused = [&] { return *const_cast<volatile std::int32_t*>(&shared.paused) != 0; };
    if (paused()) {
        if (!coalesce)
            return;
        // Whoever of the two sides clears the bit sees to the event, so none is lost when the pause
        // ends just here.
        setBit(shared.missed, bit);
        if (paused() || !clearBit(shared.missed, bit))
            return;
    }
    if (coalesce && setBit(shared.pending, bit))
        return;
    if (!postEvent(wire::Event::message, own.cookie, rule, message,
                   static_cast<std::uint32_t>(wParam), static_cast<std::uint32_t>(lParam))
        && coalesce)
        clearBit(shared.pending, bit);
}

std::uint32_t ask(int slot, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    LocalSlot& own = g.slot[slot];
    const wire::Slot& shared = g.section->slots[slot];
    if (own.muted || shared.paused || shared.cookie != own.table.cookie)
        return 0;
    const std::uint32_t generation = g.generation;
    const std::uint32_t cookie = own.table.cookie;
    wire::Question question = {wire::kVersion,
                               generation,
                               cookie,
                               number(window),
                               message,
                               static_cast<std::uint32_t>(wParam),
                               static_cast<std::uint32_t>(lParam),
                               modifiers()};
    COPYDATASTRUCT data = {wire::kMagic, sizeof question, &question};
    DWORD_PTR answer = 0;
    ++g.section->questions;
    // Never SMTO_BLOCK: while AOL waits it has to answer what the program sends it.
    const LRESULT sent =
        SendMessageTimeoutW(g.companionWindow, WM_COPYDATA, reinterpret_cast<WPARAM>(g.window),
                            reinterpret_cast<LPARAM>(&data), SMTO_ABORTIFHUNG | kErrorOnExit,
                            g.section->verdictTimeout, &answer);
    if (g.generation != generation || own.table.cookie != cookie)
        return sent ? static_cast<std::uint32_t>(answer) & wire::kSwallow : 0;
    if (sent) {
        own.strikes = 0;
        return static_cast<std::uint32_t>(answer);
    }
    ++g.section->timeouts;
    if (++own.strikes >= wire::kStrikes) {
        own.muted = true;
        postEvent(wire::Event::muted, cookie, 0, 0);
    }
    return 0;
}

} // namespace velora::agent
