#include "im_mail/modIMServices.h"

#include "core/MsgBoxEx.h"
#include "im_mail/frmAlert.h"
#include "im_mail/frmAnswered.h"
#include "im_mail/frmAutoAnswer.h"
#include "im_mail/frmEditNotes.h"
#include "im_mail/frmIgnored.h"
#include "im_mail/modIMAnswer.h"
#include "im_mail/modTempIgnore.h"
#include "settings/Options.h"
#include "sounds/modPlayback.h"

namespace velora {
namespace {

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

/// What came from the sender: told, heard and answered as the options say.
void onMessage(const IMInfo& im, const std::wstring& fresh)
{
    alertFor(im, fresh);
    if (!hearsFrom(fresh, im.screenName))
        return;
    if (opt::IM::IMWavsEnabled.get())
        if (const std::wstring wav = soundNamedBy(fresh, im.screenName); !wav.empty())
            PlayIMWav(wav);
    AnswerIM(im);
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
    events.onNewIM = [](const IMInfo& im) { onMessage(im, im.text); };
    events.onNewText = onMessage;
    subscription() = observeIMs(std::move(events));

    IMRoutes& routes = imRoutes();
    routes.autoAnswer = frmAutoAnswer::openWindow;
    routes.autoAnswerOn = autoAnswerOn;
    routes.addToIgnore = AddToIgnore;
    routes.ignoredNames = frmIgnored::openList;
    routes.editNotes = frmEditNotes::edit;
    routes.imSwitch = switchIms;
}

void endIMServices()
{
    subscription() = {};
    endAnswers();
}

} // namespace velora
