#include "core/clsSavedClipboard.h"

#include "base/win_error.h"
#include "core/modClipboard.h"

#include <cstring>
#include <string_view>

namespace velora {
namespace {

constexpr DWORD kOwnerLimit = 500;

bool isPicture(UINT format)
{
    return format == CF_BITMAP || format == CF_ENHMETAFILE;
}

bool isMemory(UINT format)
{
    switch (format) {
    case CF_BITMAP:
    case CF_PALETTE:
    case CF_METAFILEPICT:
    case CF_ENHMETAFILE:
    case CF_OWNERDISPLAY:
    case CF_DSPBITMAP:
    case CF_DSPMETAFILEPICT:
    case CF_DSPENHMETAFILE: return false;
    default: break;
    }
    if (format >= CF_PRIVATEFIRST && format <= CF_GDIOBJLAST)
        return false;
    // OLE's own entries speak of the object behind the clipboard, which our copy is not.
    wchar_t name[64] = L"";
    GetClipboardFormatNameW(format, name, 64);
    for (const std::wstring_view live : {L"DataObject", L"Ole Private Data"})
        if (name == live)
            return false;
    return true;
}

HGLOBAL copyMemory(HANDLE memory)
{
    const SIZE_T size = GlobalSize(memory);
    const void* const from = size > 0 ? GlobalLock(memory) : nullptr;
    if (!from)
        return nullptr;
    const HGLOBAL copy = GlobalAlloc(GMEM_MOVEABLE, size);
    if (void* const to = copy ? GlobalLock(copy) : nullptr) {
        std::memcpy(to, from, size);
        GlobalUnlock(copy);
    }
    GlobalUnlock(memory);
    return copy;
}

HANDLE copyOf(UINT format, HANDLE data)
{
    if (format == CF_BITMAP)
        return CopyImage(data, IMAGE_BITMAP, 0, 0, 0);
    if (format == CF_ENHMETAFILE)
        return CopyEnhMetaFileW(static_cast<HENHMETAFILE>(data), nullptr);
    return copyMemory(data);
}

} // namespace

struct SavedClipboard::Format {
    UINT format;
    HANDLE data;
    Format(UINT id, HANDLE copy) : format(id), data(copy) {}
    Format(const Format&) = delete;
    Format& operator=(const Format&) = delete;
    ~Format()
    {
        if (!data)
            return;
        if (format == CF_BITMAP)
            DeleteObject(data);
        else if (format == CF_ENHMETAFILE)
            DeleteEnhMetaFile(static_cast<HENHMETAFILE>(data));
        else
            GlobalFree(data);
    }
};

SavedClipboard::SavedClipboard(HWND owner)
{
    const HWND offers = GetClipboardOwner();
    DWORD_PTR answer = 0;
    if (offers && GetWindowThreadProcessId(offers, nullptr) != GetCurrentThreadId()
        && !SendMessageTimeoutW(offers, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, kOwnerLimit, &answer))
        throw Error("the clipboard's owner does not answer");
    const OpenedClipboard clipboard(owner);
    // Bitmaps that Windows makes from a DIB need no copy of their own.
    const bool dib = IsClipboardFormatAvailable(CF_DIB);
    for (UINT format = EnumClipboardFormats(0); format; format = EnumClipboardFormats(format)) {
        if (!isMemory(format) && (!isPicture(format) || (format == CF_BITMAP && dib)))
            continue;
        const HANDLE data = GetClipboardData(format);
        if (const HANDLE copy = data ? copyOf(format, data) : nullptr)
            formats_.push_back(std::make_unique<Format>(format, copy));
    }
}

SavedClipboard::~SavedClipboard() = default;

std::optional<std::wstring> SavedClipboard::exchange(HWND owner, DWORD process)
{
    // All in one turn: nobody can copy anything between the look and the exchange.
    const OpenedClipboard clipboard(owner);
    DWORD present = 0;
    GetWindowThreadProcessId(GetClipboardOwner(), &present);
    if (present != process)
        return std::nullopt;
    std::wstring text = textOf(clipboard);
    if (!EmptyClipboard())
        throwLastError("the clipboard cannot be emptied");
    for (const auto& saved : formats_)
        if (SetClipboardData(saved->format, saved->data))
            saved->data = nullptr; // the system's now
    return text;
}

} // namespace velora
