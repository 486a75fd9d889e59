#include "im_mail/modIMServices.h"

#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "im_mail/frmAlert.h"
#include "im_mail/frmAnswered.h"
#include "im_mail/frmAutoAnswer.h"
#include "im_mail/frmEditNotes.h"
#include "im_mail/frmIgnored.h"
#include "im_mail/modIMAnswer.h"
#include "im_mail/modIM_Manager.h"
#include "im_mail/modTempIgnore.h"
#include "settings/Options.h"
#include "sounds/modPlayback.h"

#include <deque>

namespace velora {
namespace {

constexpr char kModule[] = "modIMServices";

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

/// IMs from the internet that wait to be accepted. One question at a time; what more strangers
/// write meanwhile waits its turn.
struct Newcomers {
    std::deque<IMInfo> waiting;
    bool asking = false;
};
Newcomers& newcomers()
{
    static Newcomers present;
    return present;
}
constexpr std::size_t kMostNewcomers = 50;

bool accepts(const IMInfo& im)
{
    return MsgBoxEx(L"~B" + literal(im.screenName)
                        + L"~B writes to you from the internet.~N ~NDo you want to accept this "
                          L"Instant Message?",
                    kMsgYesNo | kMsgQuestion, L"Instant Message")
           == kAnswerYes;
}

void askNewcomers()
{
    Newcomers& present = newcomers();
    if (present.asking)
        return;
    present.asking = true;
    trap(kModule, [&] {
        while (!present.waiting.empty()) {
            const IMInfo im = present.waiting.front();
            present.waiting.pop_front();
            const auto window = reinterpret_cast<HWND>(im.window);
            if (!imSession(window))
                continue;
            if (accepts(im))
                onMessage(im, im.text);
            else
                CloseUNT(window);
        }
    });
    present.asking = false;
}

void onNewIM(const IMInfo& im)
{
    if (!im.internet || opt::IM::AutoAcceptAIM.get())
        return onMessage(im, im.text);
    if (newcomers().waiting.size() < kMostNewcomers)
        newcomers().waiting.push_back(im);
    askNewcomers();
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
    events.onNewIM = onNewIM;
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
    newcomers().waiting.clear();
    endAnswers();
}

} // namespace velora
