// The mail menu, and what it does beside encrypting.
#include "im_mail/modMailTools.h"

#include "base/text.h"
#include "base/trap.h"
#include "chat/ToolbarRoutes.h"
#include "chat/frmFadeInsert.h"
#include "chat/modCurrentFade.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "hook/aolSend.h"
#include "im_mail/clsAolMailBody.h"
#include "settings/Options.h"
#include "sounds/frmWavs.h"
#include "sounds/modMailAttach.h"
#include "ui/Menu.h"

#include <commdlg.h>

namespace velora {
namespace {

constexpr char kModule[] = "modMailTools";
constexpr wchar_t kTitle[] = L"Mail";

HWND mailInFront()
{
    connectAol();
    const HWND window = composeWindow();
    if (!window)
        MsgBoxEx(L"~B~CRNo E-Mail is being written!~B~CN~N ~NPlease open AOL's mail window and try "
                 L"this operation again.",
                 kMsgExclamation, kTitle);
    return window;
}

/// A sound that the user picks in AOL's sounds folder; empty when cancelled. Pumps messages.
std::wstring pickSound()
{
    wchar_t path[MAX_PATH] = L"";
    const std::wstring folder = aol().folder.empty() ? L"" : aol().folder + L"\\sounds";
    OPENFILENAMEW wish = {};
    wish.lStructSize = sizeof wish;
    wish.lpstrFilter = L"Sounds\0*.wav;*.mid;*.mp3\0All files\0*.*\0";
    wish.lpstrFile = path;
    wish.nMaxFile = MAX_PATH;
    wish.lpstrInitialDir = folder.c_str();
    wish.lpstrTitle = L"Attach a Sound";
    wish.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    return GetOpenFileNameW(&wish) ? path : L"";
}

} // namespace

bool WriteMailTo()
{
    return trap(
        kModule,
        [] {
            const std::wstring name =
                trim(InputBoxEx(L"To whom do you want to write?", kTitle, {}, {.maxLength = 255}));
            if (name.empty() || !RequireAOLOnline())
                return false;
            const MailWindow mail = AOL_OpenEMail();
            return mail && setAolText(mail.to, name);
        },
        false);
}

bool FadeMailSelection()
{
    return trap(
        kModule,
        [] {
            const HWND window = mailInFront();
            if (!window)
                return false;
            AolMailBody body(documentText(window));
            const EncryptResult result = replaceSelected(body, [](std::wstring text) {
                FadeEngine(text, true);
                return text;
            });
            if (result == EncryptResult::cancelled)
                MsgBoxEx(L"~B~CRNo text has been selected to fade!~B~CN~N ~NPlease select it in "
                         L"your E-Mail and try this operation again.",
                         kMsgExclamation, kTitle);
            else if (result == EncryptResult::tooLong)
                MsgBoxEx(L"~B~CRCannot apply faded text~B~CN~N ~NThe E-Mail would contain more "
                         L"than 30000 characters, the HTML you cannot see included.",
                         kMsgExclamation, kTitle);
            else if (result != EncryptResult::done)
                MsgBoxEx(L"~B~CRAOL did not take the faded text!~B~CN~N ~NThe E-Mail has been left "
                         L"as it was.",
                         kMsgExclamation, kTitle);
            return result == EncryptResult::done;
        },
        false);
}

bool AttachSound()
{
    return trap(
        kModule,
        [] {
            const HWND window = mailInFront();
            if (!window)
                return false;
            frmWavs* const list = frmWavs::instance();
            std::wstring path = list ? list->selectedPath() : std::wstring();
            if (path.empty())
                path = pickSound();
            if (path.empty())
                return false;
            if (attachToMail(window, path))
                return true;
            MsgBoxEx(L"~B~CRThe sound could not be attached!~B~CN~N ~NPlease attach it by hand: "
                     L"~B~CB"
                         + literal(path),
                     kMsgExclamation, kTitle);
            return false;
        },
        false);
}

void routeMail(ToolbarRoutes& routes)
{
    routes.encryptMail = [] { EncryptMail(); };
    routes.decryptMail = [] { DecryptMail(); };
    routes.mailMenu = [](Menu& mnuMailItem) {
        const ToolbarRoutes& others = toolbarRoutes();
        mnuMailItem.item(L"&Write to...", [] { WriteMailTo(); });
        if (others.quoteReply)
            mnuMailItem.item(L"Reply with &Quote", others.quoteReply);
        mnuMailItem.separator();
        mnuMailItem.item(L"&Encrypt...", [] { EncryptMail(); });
        mnuMailItem.item(L"&Undo Encryption", [] { UndoEncryption(); },
                         {.enabled = canUndoEncryption()});
        mnuMailItem.item(L"&Decrypt...", [] { DecryptMail(); }); // mnuDecrypt
        mnuMailItem.separator();
        mnuMailItem.item(L"&Attach a Sound...", [] { AttachSound(); });
        mnuMailItem.item(L"&Fade the Selection", [] { FadeMailSelection(); });
        mnuMailItem.item(L"Fade and &Insert...", [] { frmFadeInsert::showWindow(); });
        mnuMailItem.separator();
        if (others.editTemplates)
            mnuMailItem.item(L"Reply &Templates...", others.editTemplates);
        mnuMailItem.item(L"Buttons on Mail &Windows",
                         [] { opt::Toolbar::MailBar.set(!opt::Toolbar::MailBar.get()); },
                         {.checked = opt::Toolbar::MailBar.get()});
    };
}

} // namespace velora
