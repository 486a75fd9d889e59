#include "core/modFindChild.h"

#include "base/text.h"
#include "base/trap.h"
#include "hook/aolSend.h"

namespace velora {

namespace {

constexpr char kModule[] = "modFindChild";
/// Windows change their order while they are walked: no walk goes on for ever.
constexpr int kMostSiblings = 5000;

// FindWindowEx isn't used: on Wine it finds nothing after a window of another class.
template <class Matches>
HWND findFrom(HWND first, int which, const Matches& matches)
{
    HWND window = first;
    for (int walked = 0; window && walked < kMostSiblings; ++walked) {
        if (matches(window) && --which <= 0)
            return window;
        window = GetWindow(window, GW_HWNDNEXT);
    }
    return nullptr;
}

} // namespace

std::wstring windowClass(HWND window)
{
    wchar_t name[257];
    return std::wstring(name, static_cast<std::size_t>(GetClassNameW(window, name, 257)));
}

bool hasClass(HWND window, std::wstring_view className)
{
    return window && equalNoCase(windowClass(window), className);
}

std::wstring windowCaption(HWND window)
{
    // For windows of another process neither call sends a message.
    wchar_t text[1024];
    const int length = GetWindowTextW(window, text, 1024);
    return std::wstring(text, static_cast<std::size_t>(length));
}

HWND FindChildByClass(HWND parent, std::wstring_view className, int which)
{
    return trap(
        kModule,
        [&]() -> HWND {
            if (!parent)
                return nullptr;
            return findFrom(GetWindow(parent, GW_CHILD), which,
                            [&](HWND window) { return hasClass(window, className); });
        },
        nullptr);
}

HWND FindNextByClass(HWND after, std::wstring_view className)
{
    return trap(
        kModule,
        [&]() -> HWND {
            if (!after)
                return nullptr;
            return findFrom(GetWindow(after, GW_HWNDNEXT), 1,
                            [&](HWND window) { return hasClass(window, className); });
        },
        nullptr);
}

HWND FindChildByTitle(HWND parent, std::wstring_view caption, int which)
{
    return trap(
        kModule,
        [&]() -> HWND {
            if (!parent)
                return nullptr;
            return findFrom(GetWindow(parent, GW_CHILD), which, [&](HWND window) {
                return windowCaption(window).starts_with(caption);
            });
        },
        nullptr);
}

std::wstring GetAPIText(HWND window)
{
    return trap(
        kModule, [&] { return aolText(window).value_or(std::wstring()); }, std::wstring());
}

std::wstring GetAPITextEx(HWND window, std::size_t limit)
{
    std::wstring text = GetAPIText(window);
    if (text.size() > limit)
        text.resize(limit);
    return text;
}

} // namespace velora
