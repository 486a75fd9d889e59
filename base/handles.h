#pragma once
// One owner for every kind of system handle: explicit, move-only, freed in one place.
#include "base/win.h"

#include <utility>

namespace velora {

/// Traits give `Type`, `invalid()` and `close(Type)`.
template <class Traits>
class UniqueHandle {
public:
    using Type = typename Traits::Type;

    UniqueHandle() noexcept = default;
    explicit UniqueHandle(Type value) noexcept : value_(value) {}
    UniqueHandle(UniqueHandle&& other) noexcept : value_(other.release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept
    {
        if (this != &other)
            reset(other.release());
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    ~UniqueHandle() { reset(); }

    Type get() const noexcept { return value_; }
    explicit operator bool() const noexcept { return value_ != Traits::invalid(); }
    Type release() noexcept { return std::exchange(value_, Traits::invalid()); }
    void reset(Type value = Traits::invalid()) noexcept
    {
        if (value_ != Traits::invalid())
            Traits::close(value_);
        value_ = value;
    }

private:
    Type value_ = Traits::invalid();
};

struct KernelHandleTraits {
    using Type = HANDLE;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type h) noexcept { CloseHandle(h); }
};
/// CreateFile and its kin answer INVALID_HANDLE_VALUE where the others answer 0.
struct FileHandleTraits {
    using Type = HANDLE;
    static Type invalid() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(Type h) noexcept { CloseHandle(h); }
};
struct FindHandleTraits {
    using Type = HANDLE;
    static Type invalid() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(Type h) noexcept { FindClose(h); }
};
struct RegistryKeyTraits {
    using Type = HKEY;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type h) noexcept { RegCloseKey(h); }
};
struct LibraryTraits {
    using Type = HMODULE;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type h) noexcept { FreeLibrary(h); }
};
struct HookTraits {
    using Type = HHOOK;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type h) noexcept { UnhookWindowsHookEx(h); }
};
struct ViewTraits {
    using Type = void*;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type view) noexcept { UnmapViewOfFile(view); }
};
struct IconTraits {
    using Type = HICON;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type h) noexcept { DestroyIcon(h); }
};
struct MenuTraits {
    using Type = HMENU;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type h) noexcept { DestroyMenu(h); }
};
struct MemoryDcTraits {
    using Type = HDC;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type h) noexcept { DeleteDC(h); }
};
template <class Gdi>
struct GdiTraits {
    using Type = Gdi;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type h) noexcept { DeleteObject(h); }
};

using KernelHandle = UniqueHandle<KernelHandleTraits>;
using FileHandle = UniqueHandle<FileHandleTraits>;
using FindHandle = UniqueHandle<FindHandleTraits>;
using RegistryKey = UniqueHandle<RegistryKeyTraits>;
using Library = UniqueHandle<LibraryTraits>;
using HookHandle = UniqueHandle<HookTraits>;
using MappedView = UniqueHandle<ViewTraits>;
using Icon = UniqueHandle<IconTraits>;
using MenuHandle = UniqueHandle<MenuTraits>;
using MemoryDc = UniqueHandle<MemoryDcTraits>;
using Font = UniqueHandle<GdiTraits<HFONT>>;
using Brush = UniqueHandle<GdiTraits<HBRUSH>>;
using Pen = UniqueHandle<GdiTraits<HPEN>>;
using Bitmap = UniqueHandle<GdiTraits<HBITMAP>>;
using Region = UniqueHandle<GdiTraits<HRGN>>;

} // namespace velora
