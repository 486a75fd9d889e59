#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "base/win.h"
#include "core/MsgBoxEx.h"
#include "core/modMain.h"
#include "core/modSettingsFile.h"

#include <commdlg.h>

namespace velora {
namespace {

constexpr char kModule[] = "modSettingsFile";
constexpr wchar_t kTitle[] = L"Options";
constexpr wchar_t kFirstName[] = L"Velora settings.txt";
constexpr wchar_t kCopy[] = L"data\\settings before loading.txt";
constexpr std::uint64_t kMostBytes = 4u << 20;

/// The system's window for a file; empty when cancelled. Pumps messages.
std::wstring askFile(void* owner, bool save)
{
    wchar_t path[MAX_PATH] = L"";
    if (save)
        lstrcpynW(path, kFirstName, MAX_PATH);
    OPENFILENAMEW wish = {};
    wish.lStructSize = sizeof wish;
    wish.hwndOwner = static_cast<HWND>(owner);
    wish.lpstrFilter = L"Settings of Velora\0*.txt\0All files\0*.*\0";
    wish.lpstrFile = path;
    wish.nMaxFile = MAX_PATH;
    wish.lpstrDefExt = L"txt";
    wish.lpstrTitle = save ? L"Save Settings" : L"Load Settings";
    wish.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR
                 | (save ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
    return (save ? GetSaveFileNameW(&wish) : GetOpenFileNameW(&wish)) ? path : L"";
}

std::wstring nameOf(const std::wstring& path)
{
    return L"~B" + literal(path.substr(path.find_last_of(L'\\') + 1)) + L"~B";
}

bool replaces(const std::wstring& path, std::size_t count)
{
    return MsgBoxEx(L"Do you want to replace all your settings by the " + std::to_wstring(count)
                        + L" settings of " + nameOf(path)
                        + L"?~N ~NThe present ones are kept in Velora's folder, as ~B"
                        + literal(kCopy) + L"~B.",
                    kMsgYesNo | kMsgQuestion | kMsgSecondDefault, kTitle)
           == kAnswerYes;
}

} // namespace

void saveSettings(void* owner)
{
    const std::wstring path = askFile(owner, true);
    if (path.empty())
        return;
    try {
        replaceFile(path, settingsFile(presentSettings()));
    } catch (...) {
        reportCurrentException(kModule, "saveSettings");
        MsgBoxEx(L"~B~CRThe settings cannot be saved!~B~CN~N ~NThe file " + nameOf(path)
                     + L" cannot be written.",
                 kMsgExclamation, kTitle);
        return;
    }
    MsgBoxEx(L"Your settings are in the file " + nameOf(path) + L".", kMsgInformation, kTitle);
}

bool loadSettings(void* owner)
{
    const std::wstring path = askFile(owner, false);
    return !path.empty() && loadSettingsFrom(path);
}

bool loadSettingsFrom(const std::wstring& path)
{
    const auto bytes = trap(
        kModule, [&] { return readFile(path, kMostBytes); }, std::optional<std::string>());
    const ReadSettings read = bytes ? readSettingsFile(*bytes) : ReadSettings{{}, 1};
    if (read.badLine) {
        MsgBoxEx(L"~B~CRThe settings cannot be loaded!~B~CN~N ~NThe file " + nameOf(path)
                     + (*read.badLine == 1
                            ? std::wstring(L" holds no settings of Velora.")
                            : L" cannot be read from line " + std::to_wstring(*read.badLine)
                                  + L" on. Nothing has been changed."),
                 kMsgExclamation, kTitle);
        return false;
    }
    if (!replaces(path, read.settings.size()))
        return false;
    try {
        makeFolder(joinPath(AppPath(), L"data"));
        replaceFileKeepingCopies(joinPath(AppPath(), kCopy), settingsFile(presentSettings()));
        replaceSettings(read.settings);
    } catch (...) {
        reportCurrentException(kModule, "loadSettingsFrom");
        MsgBoxEx(L"~B~CRThe settings cannot be loaded!~B~CN~N ~NVelora may not write its settings "
                 L"or the copy of the present ones. They are as they were.",
                 kMsgExclamation, kTitle);
        return false;
    }
    MsgBoxEx(L"The settings have been loaded.", kMsgInformation, kTitle);
    return true;
}

} // namespace velora
