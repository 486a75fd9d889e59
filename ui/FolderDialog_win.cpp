#include "base/handles.h"
#include "base/trap.h"
#include "ui/FolderDialog.h"

#include <objbase.h>
#include <shlobj.h>

namespace velora {
namespace {

constexpr char kModule[] = "FolderDialog";

struct PidlTraits {
    using Type = LPITEMIDLIST;
    static Type invalid() noexcept { return nullptr; }
    static void close(Type list) noexcept { CoTaskMemFree(list); }
};

int CALLBACK browseCallback(HWND window, UINT message, LPARAM, LPARAM start) noexcept
{
    // Wine tells folders apart by their time of last access too, which the first look for them may
    // change: it finds nothing then, but the second look does.
    if (message == BFFM_INITIALIZED && start)
        for (int look = 0; look < 2; ++look)
            SendMessageW(window, BFFM_SETSELECTIONW, TRUE, start);
    return 0;
}

} // namespace

std::wstring chooseFolder(HWND owner, const wchar_t* title, const std::wstring& start,
                          bool offerNewFolder)
{
    return trap(
        kModule,
        [&] {
            const bool com = SUCCEEDED(CoInitialize(nullptr));
            BROWSEINFOW browse{};
            browse.hwndOwner = owner;
            browse.lpszTitle = title;
            browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE
                             | (offerNewFolder ? 0u : BIF_NONEWFOLDERBUTTON);
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
