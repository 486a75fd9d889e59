// Encrypting and decrypting in AOL's mail windows: the questions, and what is said when it fails.
#include "base/secret.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "im_mail/clsAolMailBody.h"
#include "im_mail/frmDecrypt.h"
#include "im_mail/modMail.h"
#include "im_mail/modMailTools.h"
#include "settings/Options.h"
#include "ui/Timer.h"

#include <memory>

namespace velora {
namespace {

constexpr char kModule[] = "modMailEncryption";
constexpr wchar_t kEncrypt[] = L"Encrypt E-Mail";
constexpr wchar_t kDecrypt[] = L"Decrypt E-Mail";
constexpr UINT kLookMs = 2000;

/// The last encryption, for as long as its mail is open.
struct LastEncryption {
    HWND body = nullptr;
    EncryptedMail mail;
};
std::unique_ptr<LastEncryption> g_last;
Timer g_look; // whether the mail of the last encryption is still open

void remember(std::unique_ptr<LastEncryption> last)
{
    g_last = std::move(last);
    g_look.start(kLookMs, [] {
        if (canUndoEncryption())
            return;
        g_last.reset();
        g_look.stop();
    });
}

void sayNoMail()
{
    MsgBoxEx(L"~B~CRNo E-Mail is being written!~B~CN~N ~NPlease open AOL's mail window, write your "
             L"E-Mail and try this operation again.",
             kMsgExclamation, kEncrypt);
}

std::wstring askPassword(std::wstring_view prompt, std::wstring_view title)
{
    return InputBoxEx(prompt, title, {}, {.masked = opt::EMail::MaskPassword.get()});
}

EncryptQuestions questions()
{
    return {[] {
                return MsgBoxEx(L"~B~CRNo text has been selected to encrypt!~B~CN~N ~NWould you "
                                L"like to encrypt the entire E-Mail?",
                                kMsgYesNo | kMsgQuestion, kEncrypt)
                       == kAnswerYes;
            },
            [] {
                return askPassword(
                    L"~B~CRPlease enter the E-Mail encryption password~B~CN~N ~NBe sure that the "
                    L"recipient of this E-Mail has this password.",
                    kEncrypt);
            }};
}

void say(EncryptResult result)
{
    switch (result) {
    case EncryptResult::tooLong:
        MsgBoxEx(L"~B~CRCannot apply encrypted text~B~CN~N ~NThe encrypted text contains more than "
                 L"30000 characters. An AOL E-Mail cannot hold more than 30000 characters.  This "
                 L"includes the HTML you cannot see that creates faded text.~N ~N",
                 kMsgExclamation, kEncrypt);
        break;
    case EncryptResult::changed:
        MsgBoxEx(L"~B~CRThe E-Mail has been changed meanwhile!~B~CN~N ~NNothing has been "
                 L"encrypted.  Please select the text again and try this operation again.",
                 kMsgExclamation, kEncrypt);
        break;
    case EncryptResult::failed:
        MsgBoxEx(L"~B~CRAOL did not take the encrypted text!~B~CN~N ~NThe E-Mail has been left as "
                 L"it was.  Please try this operation again.",
                 kMsgExclamation, kEncrypt);
        break;
    case EncryptResult::done:
    case EncryptResult::cancelled: break;
    }
}

/// The envelope in the mail in front, or else in the next one behind it that has one.
std::wstring frontEnvelope()
{
    for (const HWND document : documentsByOrder()) {
        const HWND box = document == aol().chatRoom ? nullptr : documentText(document);
        if (!box)
            continue;
        const auto text = AolMailBody(box).text();
        if (!text)
            continue;
        if (const auto envelope = FindEnvelope(*text))
            return std::wstring(*envelope);
    }
    return {};
}

} // namespace

bool EncryptMail()
{
    return trap(
        kModule,
        [] {
            connectAol();
            const HWND window = composeWindow();
            if (!window) {
                sayNoMail();
                return false;
            }
            auto last = std::make_unique<LastEncryption>();
            last->body = documentText(window);
            AolMailBody body(last->body);
            const EncryptResult result = encryptMail(
                body, questions(), opt::EMail::IncludeDecryptInstructions.get(), last->mail);
            say(result);
            if (result != EncryptResult::done)
                return false;
            remember(std::move(last));
            return true;
        },
        false);
}

bool canUndoEncryption()
{
    return g_last && isAolWindow(g_last->body);
}

bool UndoEncryption()
{
    return trap(
        kModule,
        [] {
            if (!canUndoEncryption())
                return false;
            const std::unique_ptr<LastEncryption> last = std::move(g_last);
            AolMailBody body(last->body);
            if (undoEncryption(body, last->mail))
                return true;
            MsgBoxEx(L"~B~CRThe encryption cannot be undone!~B~CN~N ~NThe E-Mail has been changed "
                     L"since.  It has been left as it is.",
                     kMsgExclamation, kEncrypt);
            return false;
        },
        false);
}

bool DecryptMail()
{
    return trap(
        kModule,
        [] {
            connectAol();
            const std::wstring envelope = frontEnvelope();
            if (envelope.empty()) {
                MsgBoxEx(L"~B~CRNo encrypted text has been found!~B~CN~N ~NPlease open the "
                         L"encrypted E-Mail and try this operation again.",
                         kMsgExclamation, kDecrypt);
                return false;
            }
            std::wstring password = askPassword(
                L"~B~CRPlease enter the E-Mail decryption password.~B~CN~N ~NIf you do not have "
                L"this password, you will need to request it from the sender of this E-Mail.",
                kDecrypt);
            const WipeOnExit wipePassword(password);
            if (trimView(password).empty())
                return false;
            std::wstring text = DecryptMailText(envelope, trimView(password));
            const WipeOnExit wipeText(text);
            frmDecrypt::DisplayMessage(text);
            return true;
        },
        false);
}

} // namespace velora
