#include "base/trap.h"
#include "core/modAOL.h"
#include "core/modCaptions.h"
#include "core/modFindChild.h"
#include "hook/aolSend.h"
#include "sounds/modMailAttach.h"
#include "ui/MessageLoop.h"

#include <dlgs.h>

namespace velora {
namespace {

constexpr char kModule[] = "modMailAttach";
constexpr DWORD kDialogLimit = 8000; // ms

HWND iconTitled(HWND window, const std::wstring& caption)
{
    for (int which = 1; const HWND icon = FindChildByClass(window, L"_AOL_Icon", which); ++which)
        if (windowCaption(icon).starts_with(caption))
            return icon;
    return nullptr;
}

/// The system's window for choosing a file that belongs to `owner`.
HWND fileDialog(HWND owner)
{
    for (HWND dialog = FindWindowExW(nullptr, nullptr, L"#32770", nullptr); dialog;
         dialog = FindWindowExW(nullptr, dialog, L"#32770", nullptr))
        if (GetWindow(dialog, GW_OWNER) == owner && isAolWindow(dialog) && IsWindowVisible(dialog))
            return dialog;
    return nullptr;
}

/// Its field for the name: a combo box's edit in newer systems.
HWND nameField(HWND dialog)
{
    const HWND combo = GetDlgItem(dialog, cmb13);
    const HWND inner = combo ? FindWindowExW(combo, nullptr, L"ComboBox", nullptr) : nullptr;
    const HWND edit = FindWindowExW(inner ? inner : combo, nullptr, L"Edit", nullptr);
    return combo && edit ? edit : GetDlgItem(dialog, edt1);
}

} // namespace

bool attachToNewMail(const std::wstring& path)
{
    const MailWindow mail = AOL_OpenEMail();
    return mail && attachToMail(mail.window, path);
}

bool attachToMail(HWND mail, const std::wstring& path)
{
    return trap(
        kModule,
        [&] {
            const HWND window = AOL_OpenAttachments(mail);
            // The window may stand there before its buttons do.
            HWND attach = nullptr;
            const std::wstring caption = attachCaption(aol().edition);
            if (!window
                || !waitUntil([&] { return (attach = iconTitled(window, caption)) != nullptr; },
                              kDialogLimit)
                || !clickAolIcon(attach))
                return false;
            HWND dialog = nullptr, name = nullptr;
            if (!waitUntil(
                    [&] {
                        dialog = fileDialog(window);
                        return dialog && (name = nameField(dialog)) != nullptr;
                    },
                    kDialogLimit)
                || !setAolText(name, path)
                || !postToAol(dialog, WM_COMMAND, IDOK,
                              reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDOK)))
                || !waitUntil([&] { return !IsWindow(dialog); }, kDialogLimit))
                return false;
            const HWND ok = iconTitled(window, L"OK");
            return clickAolIcon(ok) && waitUntil([&] { return !IsWindow(window); }, kDialogLimit);
        },
        false);
}

HWND openMailBody()
{
    return trap(
        kModule,
        []() -> HWND {
            const HWND mdi = AOLMDI();
            for (HWND at = mdi ? GetTopWindow(mdi) : nullptr; at; at = GetWindow(at, GW_HWNDNEXT)) {
                const MailWindow mail = mailFields(at);
                if (hasClass(at, L"AOL Child") && mail.to && mail.subject && mail.body)
                    return mail.body;
            }
            return nullptr;
        },
        nullptr);
}

} // namespace velora
