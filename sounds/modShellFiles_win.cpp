#include "base/handles.h"
#include "base/trap.h"
#include "sounds/modShellFiles.h"

#include <shellapi.h>
#include <shlobj.h>

namespace velora {
namespace {

constexpr char kModule[] = "modShellFiles";

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

} // namespace velora
