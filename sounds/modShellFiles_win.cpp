#include "base/handles.h"
#include "base/trap.h"
#include "sounds/modShellFiles.h"

#include <shellapi.h>
#include <shlobj.h>

namespace velora {
namespace {

constexpr char kModule[] = "modShellFiles";

struct PidlTraits {
    using Type = LPITEMIDLIST;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type list) noexcept { CoTaskMemFree(list); }
};

int CALLBACK browseCallback(HWND window, UINT message, LPARAM, LPARAM start) noexcept
{
    if (message == BFFM_INITIALIZED && start)
        SendMessageW(window, BFFM_SETSELECTIONW, TRUE, start);
    return 0;
}

} // namespace

bool recycleFile(const std::wstring& path, HWND owner)
{
    return trap(
        kModule,
        [&] {
            // The list of files ends with an empty one.
            std::wstring files = path;
            files.push_back(L'\0');
            SHFILEOPSTRUCTW operation{};
            operation.hwnd = owner;
            operation.wFunc = FO_DELETE;
            operation.pFrom = files.c_str();
            operation.fFlags = FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_SILENT | FOF_NOERRORUI;
            return SHFileOperationW(&operation) == 0 && !operation.fAnyOperationsAborted
                   && GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES;
        },
        false);
}

std::wstring chooseFolder(HWND owner, const wchar_t* title, const std::wstring& start)
{
    return trap(
        kModule,
        [&] {
            const bool com = SUCCEEDED(CoInitialize(nullptr));
            BROWSEINFOW browse{};
            browse.hwndOwner = owner;
            browse.lpszTitle = title;
            browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
            browse.lpfn = browseCallback;
            browse.lParam = start.empty() ? 0 : reinterpret_cast<LPARAM>(start.c_str());
            std::wstring folder;
            {
                const UniqueHandle<PidlTraits> chosen(SHBrowseForFolderW(&browse));
                wchar_t path[MAX_PATH] = {};
                if (chosen && SHGetPathFromIDListW(chosen.get(), path))
                    folder = path;
            }
            if (com)
                CoUninitialize();
            while (folder.size() > 3 && folder.ends_with(L'\\'))
                folder.pop_back();
            return folder;
        },
        std::wstring());
}

} // namespace velora
