#include "im_mail/modIMServices.h"

#include "core/MsgBoxEx.h"
#include "im_mail/frmAlert.h"
#include "im_mail/frmAnswered.h"
#include "im_mail/frmAutoAnswer.h"
#include "im_mail/frmEditNotes.h"
#include "im_mail/frmIgnored.h"
#include "im_mail/modBuddyTip.h"
#include "im_mail/modIMAnswer.h"
#include "im_mail/modTempIgnore.h"
#include "settings/Options.h"

namespace velora {
namespace {

constexpr int kTipOffset = 16;

IMSubscription& subscription()
{
    static IMSubscription events;
    return events;
}

void switchIms(bool on)
{
    const bool done = TempIgnore(!on);
    MsgBoxEx(!done ? L"AOL did not confirm the change. Please try again."
             : on  ? L"You will receive Instant Messages again."
                   : L"You will receive no Instant Messages until you turn them on again.",
             done ? kMsgInformation : kMsgExclamation, L"Instant Messages");
}

/// The note comes beside the pointer that clicked the tab.
void showNote(const IMInfo& im, bool byUser)
{
    hideBuddyTip();
    const HWND owner = GetActiveWindow();
    POINT at;
    if (im.window && byUser && owner && opt::IM::DisplayNotes.get() && GetCursorPos(&at))
        showBuddyTip(owner, {at.x + kTipOffset, at.y + kTipOffset}, im.screenName);
}

} // namespace

void startIMServices(IMServiceRoutes manager)
{
    frmAlert::setFocusRoute(std::move(manager.focusIM));
    frmAutoAnswer::setAdjustRoute(std::move(manager.adjustIMWindow));
    onAnswered([](const std::wstring& sender) {
        if (opt::IM::ShowAnswerWin.get())
            frmAnswered::add(sender);
    });
    IMEvents events;
    events.onNewIM = [](const IMInfo& im) {
        alertFor(im, im.text);
        if (hearsFrom(im.text, im.screenName))
            AnswerIM(im);
    };
    events.onNewText = [](const IMInfo& im, const std::wstring& fresh) {
        alertFor(im, fresh);
        if (hearsFrom(fresh, im.screenName))
            AnswerIM(im);
    };
    events.onCurrentIM = [](const IMInfo& im, bool byUser) { showNote(im, byUser); };
    events.onIMClosed = [](const IMInfo&) { hideBuddyTip(); };
    subscription() = observeIMs(std::move(events));

    IMRoutes& routes = imRoutes();
    routes.autoAnswer = frmAutoAnswer::openWindow;
    routes.autoAnswerOn = autoAnswerOn;
    routes.addToIgnore = AddToIgnore;
    routes.editNotes = frmEditNotes::edit;
    routes.imSwitch = switchIms;
}

void endIMServices()
{
    subscription() = {};
    endAnswers();
    hideBuddyTip();
}

} // namespace velora
