#include "hook/aolSend.h"

#include "base/trap.h"
#include "hook/AgentLink.h"

namespace velora {
namespace {

constexpr char kModule[] = "aolSend";
constexpr LRESULT kLongestText = 1 << 20; // characters

/// The text by two messages, for a window that no agent watches.
std::optional<std::wstring> textByMessages(HWND window, DWORD timeoutMs)
{
    const auto length = sendToAol(window, WM_GETTEXTLENGTH, 0, 0, timeoutMs);
    if (!length)
        return std::nullopt;
    const LRESULT bounded = *length < 0 ? 0 : *length < kLongestText ? *length : kLongestText;
    std::wstring text(static_cast<std::size_t>(bounded) + 1, L'\0');
    const auto got = sendToAol(window, WM_GETTEXT, text.size(),
                               reinterpret_cast<LPARAM>(text.data()), timeoutMs);
    if (!got)
        return std::nullopt;
    text.resize(*got < 0 ? 0 : *got < bounded ? *got : bounded);
    return text;
}

} // namespace

std::optional<LRESULT> sendToAol(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                 DWORD timeoutMs)
{
    AgentLink* link = AgentLink::forWindow(window);
    if (!window || (link && link->busy()) || IsHungAppWindow(window))
        return std::nullopt;
    DWORD_PTR result = 0;
    if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, timeoutMs, &result))
        return static_cast<LRESULT>(result);
    // Hooks answer while we wait, so the link may have gone meanwhile.
    if (IsWindow(window) && (link = AgentLink::forWindow(window)))
        link->noteBusy();
    return std::nullopt;
}

bool postToAol(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return window && PostMessageW(window, message, wParam, lParam);
}

std::optional<std::wstring> aolText(HWND window, DWORD timeoutMs)
{
    return trap(
        kModule,
        [&]() -> std::optional<std::wstring> {
            if (AgentLink* link = AgentLink::forWindow(window))
                return link->readText(window, timeoutMs);
            return textByMessages(window, timeoutMs);
        },
        std::nullopt);
}

bool setAolText(HWND window, std::wstring_view text, DWORD timeoutMs)
{
    return trap(
        kModule,
        [&] {
            const std::wstring terminated(text);
            return sendToAol(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(terminated.c_str()),
                             timeoutMs)
                .has_value();
        },
        false);
}

} // namespace velora
