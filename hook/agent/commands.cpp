// The agent's own window: commands of the program come here.
#include "hook/agent/agent.h"

namespace velora::agent {
namespace {

constexpr std::uint32_t kMostText = 1u << 20; // units of a command's text

/// A command as it came, checked.
struct Received {
    const wire::Command* command;
    const wchar_t* text; ///< ends in a null
};

bool check(const COPYDATASTRUCT* data, Received& out)
{
    if (!g.section || !data || data->dwData != wire::kMagic || data->cbData < sizeof(wire::Command)
        || !data->lpData)
        return false;
    const auto* command = static_cast<const wire::Command*>(data->lpData);
    if (command->version != wire::kVersion || command->generation != g.generation
        || command->textUnits == 0 || command->textUnits > kMostText
        || data->cbData != sizeof(wire::Command) + 2 * command->textUnits)
        return false;
    const auto* text = reinterpret_cast<const wchar_t*>(command + 1);
    if (text[command->textUnits - 1] != 0)
        return false;
    out = {command, text};
    return true;
}

bool needsWindow(wire::Op op)
{
    return op >= wire::Op::readLines && op <= wire::Op::imClose && op != wire::Op::menuFind
           && op != wire::Op::menuSync;
}

std::int32_t ping()
{
    for (LocalSlot& slot : g.slot) {
        slot.strikes = 0;
        slot.muted = false;
    }
    return wire::kDone;
}

std::int32_t giveFocus(HWND window)
{
    SetFocus(window);
    return GetFocus() == window ? wire::kDone : wire::kRefused;
}

/// AOL waits in a hook's question meanwhile, so all of it is one command.
std::int32_t sendLine(HWND field, const wchar_t* text)
{
    SetFocus(field);
    // The text is markup, which nobody is to see on its way.
    SendMessageW(field, WM_SETREDRAW, FALSE, 0);
    const bool put = SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0;
    if (put) {
        g.pressing = field;
        SendMessageW(field, WM_CHAR, VK_RETURN, 0);
        g.pressing = nullptr;
    }
    SendMessageW(field, WM_SETREDRAW, static_cast<WPARAM>(-1), 0);
    return put ? wire::kDone : wire::kRefused;
}

std::int32_t quit()
{
    const HWND window = g.window;
    release();
    ReplyMessage(wire::kDone);
    DestroyWindow(window);
    return wire::kDone;
}

std::int32_t run(const wire::Command& command, const wchar_t* text)
{
    const HWND window = windowOf(command.window);
    switch (command.op) {
    case wire::Op::ping: return ping();
    case wire::Op::attach: return attachSlot(command.a);
    case wire::Op::detach:
        if (command.a >= wire::kSlots || g.slot[command.a].table.cookie != command.b)
            return wire::kNotFound;
        detachSlot(command.a);
        return wire::kDone;
    case wire::Op::detachAll: detachSlots(); return wire::kDone;
    case wire::Op::readLines: return readLines(command);
    case wire::Op::readText: return readText(command);
    case wire::Op::readTail: return readTail(command);
    case wire::Op::selRead: return readSelection(command);
    case wire::Op::selReplace:
        SendMessageW(window, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text));
        return wire::kDone;
    case wire::Op::select:
        SendMessageW(window, EM_SETSEL, command.a, static_cast<LPARAM>(command.b));
        return wire::kDone;
    case wire::Op::setText:
        return SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) ? wire::kDone
                                                                                   : wire::kRefused;
    case wire::Op::setFocus: return giveFocus(window);
    case wire::Op::sendLine: return sendLine(window, text);
    case wire::Op::menuFind: return findItem(text);
    case wire::Op::menuSync: syncMenus(); return wire::kDone;
    case wire::Op::imTake: return takeIm(command);
    case wire::Op::imShow: return showIm(command);
    case wire::Op::imGive: return giveIm(window, false);
    case wire::Op::imClose: return giveIm(window, true);
    case wire::Op::quit: return quit();
    }
    return wire::kRefused;
}

LRESULT receive(WPARAM sender, const COPYDATASTRUCT* data)
{
    Received received;
    if (reinterpret_cast<HWND>(sender) != g.companionWindow || !check(data, received))
        return wire::kNoAnswer;
    const wire::Command& command = *received.command;
    if (static_cast<std::int32_t>(command.sequence) - g.section->cancelled <= 0)
        return wire::kCancelled;
    if (needsWindow(command.op) && !isOurs(windowOf(command.window)))
        return wire::kRefused;
    return run(command, received.text);
}

} // namespace

LRESULT CALLBACK agentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_COPYDATA: return receive(wParam, reinterpret_cast<const COPYDATASTRUCT*>(lParam));
    case WM_TIMER:
        if (wParam == kSettleTimer)
            reportSettled();
        else
            checkOwners();
        return 0;
    case wire::kProbe:
        PostMessageW(g.companionWindow, wire::kAlive, 0, static_cast<LPARAM>(g.generation));
        return 0;
    case wire::kCompanionDead:
        if (g.section && static_cast<std::uint32_t>(wParam) == g.generation) {
            release();
            DestroyWindow(window);
        }
        return 0;
    case wire::kReapHolder: reapHolder(reinterpret_cast<HWND>(wParam)); return 0;
    default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

} // namespace velora::agent
