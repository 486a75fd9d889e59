#include "core/modClipboard.h"

#include "base/handles.h"
#include "base/win_error.h"

#include <algorithm>

namespace velora {
namespace {

struct GlobalMemoryTraits {
    using Type = HGLOBAL;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type memory) noexcept { GlobalFree(memory); }
};
using GlobalMemory = UniqueHandle<GlobalMemoryTraits>;

} // namespace

OpenedClipboard::OpenedClipboard(HWND owner)
{
    for (int tries = 0; !OpenClipboard(owner); ++tries) {
        if (tries == 10)
            throwLastError("another program holds the clipboard");
        Sleep(20);
    }
}

OpenedClipboard::~OpenedClipboard()
{
    CloseClipboard();
}

void setClipboardText(HWND owner, std::wstring_view text)
{
    GlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t)));
    auto* const to = memory ? static_cast<wchar_t*>(GlobalLock(memory.get())) : nullptr;
    if (!to)
        throwLastError("no memory for the clipboard");
    std::copy(text.begin(), text.end(), to);
    to[text.size()] = 0;
    GlobalUnlock(memory.get());
    const OpenedClipboard clipboard(owner);
    EmptyClipboard();
    if (!SetClipboardData(CF_UNICODETEXT, memory.get()))
        throwLastError("the clipboard takes no text");
    memory.release(); // the system's now
}

std::wstring clipboardText(HWND owner)
{
    return textOf(OpenedClipboard(owner));
}

std::wstring textOf(const OpenedClipboard&)
{
    const HANDLE memory = GetClipboardData(CF_UNICODETEXT);
    const auto* const words = memory ? static_cast<const wchar_t*>(GlobalLock(memory)) : nullptr;
    if (!words)
        return {};
    // What another program put there need not end in a NUL.
    const std::size_t most = GlobalSize(memory) / sizeof(wchar_t);
    const std::wstring text(words, std::find(words, words + most, L'\0'));
    GlobalUnlock(memory);
    return text;
}

} // namespace velora
