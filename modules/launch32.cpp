// launch32.dll: what an AOL installation, and a running AOL, say of themselves. It stands alone (no
// code of the program's, no C++ library), since it lies in the system folder for whoever asks.
#include "base/win.h"

#include <tlhelp32.h>

#include <initializer_list>

namespace {

constexpr int kAnswer = 3;
constexpr int kLongestPath = 1024;
constexpr int kMostChildren = 1000;

bool equalNoCase(const wchar_t* a, const wchar_t* b)
{
    return CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE, a, -1, b, -1) == CSTR_EQUAL;
}

/// folder + "\" + file as a wide path; false when it is too long.
bool join(const char* folder, const wchar_t* file, wchar_t (&path)[kLongestPath])
{
    const int length = MultiByteToWideChar(CP_ACP, 0, folder, -1, path, kLongestPath - 32);
    if (length <= 1)
        return false;
    wchar_t* end = path + length - 1;
    if (end[-1] != L'\\')
        *end++ = L'\\';
    lstrcpynW(end, file, 32);
    return true;
}

/// The major and minor number of a file's version resource.
bool fileVersion(const wchar_t* path, unsigned& major, unsigned& minor)
{
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(path, &ignored);
    // A resource of more than this is none that a program of AOL's time carries.
    if (size == 0 || size > 0x100000)
        return false;
    void* block = HeapAlloc(GetProcessHeap(), 0, size);
    if (!block)
        return false;
    VS_FIXEDFILEINFO* info = nullptr;
    UINT length = 0;
    const bool found = GetFileVersionInfoW(path, 0, size, block)
                       && VerQueryValueW(block, L"\\", reinterpret_cast<void**>(&info), &length)
                       && info && length >= sizeof *info;
    if (found) {
        major = HIWORD(info->dwFileVersionMS);
        minor = LOWORD(info->dwFileVersionMS);
    }
    HeapFree(GetProcessHeap(), 0, block);
    return found;
}

bool hasClass(HWND window, const wchar_t* className)
{
    wchar_t name[64];
    return GetClassNameW(window, name, 64) && equalNoCase(name, className);
}

HWND childOfClass(HWND parent, const wchar_t* className)
{
    HWND child = GetWindow(parent, GW_CHILD);
    for (int i = 0; child && i < kMostChildren; ++i, child = GetWindow(child, GW_HWNDNEXT))
        if (hasClass(child, className))
            return child;
    return nullptr;
}

/// Another program may use AOL's class names: only waol.exe counts.
bool isAol(HWND frame)
{
    DWORD process = 0;
    GetWindowThreadProcessId(frame, &process);
    const HANDLE list = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (list == INVALID_HANDLE_VALUE)
        return false;
    PROCESSENTRY32W entry;
    entry.dwSize = sizeof entry;
    bool found = false;
    for (BOOL more = Process32FirstW(list, &entry); more && !found;
         more = Process32NextW(list, &entry))
        found = entry.th32ProcessID == process && equalNoCase(entry.szExeFile, L"waol.exe");
    CloseHandle(list);
    return found;
}

/// The name in a welcome window's caption (after the first comma, before the first "!", without
/// blanks at its ends), or 0. The caption is cut.
const wchar_t* welcomed(wchar_t* caption)
{
    bool welcome = false;
    for (const wchar_t* prefix : {L"Welcome,", L"Willkommen,", L"Bienvenue,"}) {
        const int length = lstrlenW(prefix);
        welcome |= CompareStringW(LOCALE_INVARIANT, 0, prefix, length, caption,
                                  lstrlenW(caption) < length ? -1 : length)
                   == CSTR_EQUAL;
    }
    if (!welcome)
        return nullptr;
    wchar_t* name = caption;
    while (*name != L',')
        ++name;
    ++name;
    while (*name == L' ')
        ++name;
    wchar_t* end = name;
    while (*end && *end != L'!')
        ++end;
    while (end > name && end[-1] == L' ')
        --end;
    *end = 0;
    return name;
}

} // namespace

extern "C" {

/// The version of waol.exe (or aol.exe, where that is missing) in AOL's folder, as text: "7.0". The
/// buffer has three characters: exactly three are written, without an end, blanks where the answer
/// is shorter or there is none. Answers the number of characters that count. `folder` is in the
/// system's code page.
__declspec(dllexport) int __stdcall AOLGetVersion(const char* folder, char* buffer)
{
    if (!buffer)
        return 0;
    for (int i = 0; i < kAnswer; ++i)
        buffer[i] = ' ';
    wchar_t path[kLongestPath];
    unsigned major = 0, minor = 0;
    if (!folder
        || !((join(folder, L"waol.exe", path) && fileVersion(path, major, minor))
             || (join(folder, L"aol.exe", path) && fileVersion(path, major, minor))))
        return 0;
    wchar_t text[32];
    wsprintfW(text, L"%u.%u", major, minor);
    int written = 0;
    for (; written < kAnswer && text[written]; ++written)
        buffer[written] = static_cast<char>(text[written]);
    return written;
}

/// The screen name that is signed on to the running AOL, in the system's code page. At most `size`
/// characters are written, the ending NUL among them. Answers the length of what was written, 0
/// when nobody is signed on.
__declspec(dllexport) int __stdcall AOLGetScreenName(char* buffer, int size)
{
    if (!buffer || size <= 0)
        return 0;
    buffer[0] = 0;
    HWND frame = nullptr;
    while ((frame = FindWindowExW(nullptr, frame, L"AOL Frame25", nullptr)) && !isAol(frame)) {
    }
    const HWND mdi = frame ? childOfClass(frame, L"MDIClient") : nullptr;
    HWND child = mdi ? GetWindow(mdi, GW_CHILD) : nullptr;
    for (int i = 0; child && i < kMostChildren; ++i, child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t caption[256];
        GetWindowTextW(child, caption, 256);
        const wchar_t* name = welcomed(caption);
        if (!name)
            continue;
        char ansi[512];
        const int length = WideCharToMultiByte(CP_ACP, 0, name, -1, ansi, 512, nullptr, nullptr);
        if (length <= 1)
            return 0;
        lstrcpynA(buffer, ansi, size);
        return lstrlenA(buffer);
    }
    return 0;
}

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(module);
    return TRUE;
}
}
