#include "im_mail/modIMAnswer.h"

#include "base/clock.h"
#include "base/clsFileOp.h"
#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "chat/modEditorLists.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modFindChild.h"
#include "hook/aolSend.h"
#include "im_mail/clsIMSession.h"
#include "im_mail/modAnswerMessages.h"
#include "im_mail/modBuddyNotes.h"
#include "im_mail/modIMLog.h"
#include "im_mail/modIMRules.h"
#include "settings/Options.h"
#include "ui/MessageLoop.h"
#include "ui/Timer.h"

#include <deque>

namespace velora {
namespace {

constexpr char kModule[] = "modIMAnswer";
constexpr wchar_t kTextClass[] = L"RICHCNTL";
constexpr wchar_t kTooLong[] =
    L"~B~CRIM Answer Message Too Long~B~CN~N ~NThe AutoAnswer message you have selected contains "
    L"more than 512 charcaters (inlucing HTML) and cannot be sent.~N ~NVelora will send the "
    L"default AutoAnswer message.";
constexpr UINT kStepMs = 60;
constexpr std::uint32_t kReplyBoxMs = 5000; ///< for AOL to show the reply box
constexpr std::uint32_t kSentMs = 5000;     ///< for AOL to empty it after Send
constexpr std::size_t kMostWaiting = 100;

HWND handleOf(WindowId im)
{
    return reinterpret_cast<HWND>(im);
}

/// Shown in its parent; a taken IM's own parent may be hidden.
bool shown(HWND window)
{
    return window && (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE);
}

/// The button that opens the reply box of a received IM.
HWND replyButton(HWND im)
{
    for (HWND child = GetWindow(im, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (shown(child) && isReplyCaption(windowCaption(child)))
            return child;
    return nullptr;
}

/// One answer on its way.
struct Job {
    enum class Step { begin, replyBox, sent };
    HWND im;
    PreparedAnswer answer;
    Step step = Step::begin;
    std::uint32_t since = 0;
};

class Answerer {
public:
    bool take(const IMInfo& im)
    {
        const WindowId window = im.window;
        if (!window || jobs_.size() >= kMostWaiting || waitsFor(im.screenName))
            return false;
        answered.setMostPerHour(static_cast<int>(opt::IM::MaxAnswersPerHour.get()));
        auto answer = prepareAnswer(im.caption, aol().edition, aol().version, policy(), answered,
                                    tickCount(), sources());
        if (!answer)
            return false;
        const bool tooLong = answer->tooLong;
        jobs_.push_back({handleOf(window), std::move(*answer)});
        // The warning stands on the screen while the answer goes: nobody may be there to close it.
        if (tooLong)
            postCall([] { MsgBoxEx(kTooLong, kMsgExclamation, L"Auto-Answer"); });
        postCall([] { instance().start(); });
        return true;
    }
    void stop()
    {
        tmrStep.stop();
        jobs_.clear();
    }
    static Answerer& instance()
    {
        static Answerer answerer;
        return answerer;
    }

    clsAnswered answered;
    std::function<void(const std::wstring&)> listener;

private:
    void start()
    {
        if (!tmrStep.active() && !jobs_.empty())
            tmrStep.start(kStepMs, [this] {
                trap(
                    kModule, [&] { step(); }, "step");
            });
    }
    bool waitsFor(const std::wstring& sender) const
    {
        for (const Job& job : jobs_)
            if (screenNameKey(job.answer.sender) == screenNameKey(sender))
                return true;
        return false;
    }
    static AnswerPolicy policy()
    {
        return {static_cast<int>(opt::IM::IMAnswerMode.get()), opt::IM::AnswerOnce.get(),
                opt::IM::UsePersonalMessages.get(), opt::IM::Message.get()};
    }
    static AnswerSources sources()
    {
        const clsAnswerMessages messages(joinPath(imProgramFolder(), L"data"));
        return {.inExceptions = [=](const auto& name) { return messages.inExceptions(name); },
                .hasNote = [](const auto& name) { return hasBuddyNote(name); },
                .personalised =
                    [=](const auto& name) { return messages.read(AnswerKind::personalised, name); },
                .general =
                    [=](const auto& title) {
                        return messages.read(AnswerKind::general, title).value_or(L"");
                    },
                .defaultText = [=] { return messages.defaultText(); },
                .nameFor =
                    [](const auto& name) {
                        return opt::IM::UseAlias.get() ? CheckForAlias(name) : name;
                    }};
    }

    /// One step of the first job; a job that fails or whose time is over leaves the IM as it is.
    void step()
    {
        if (jobs_.empty())
            return tmrStep.stop();
        Job job = jobs_.front();
        const bool goesOn = IsWindow(job.im) && advance(job);
        if (jobs_.empty())
            return;
        if (goesOn)
            jobs_.front() = std::move(job);
        else
            jobs_.pop_front();
    }
    /// False when the job is done with.
    bool advance(Job& job)
    {
        if (job.step == Job::Step::begin) {
            job.since = tickCount();
            job.step = Job::Step::replyBox;
            const HWND button = replyButton(job.im);
            if (button && !shown(FindChildByClass(job.im, kTextClass, 2)))
                clickAolIcon(button);
            return true;
        }
        const HWND reply = FindChildByClass(job.im, kTextClass, 2);
        if (job.step == Job::Step::replyBox) {
            const HWND send = FindChildByClass(job.im, L"_AOL_Icon",
                                               sendIconIndex(aol().edition, aol().version) + 1);
            if (!shown(reply) || !shown(send))
                return tickCount() - job.since < kReplyBoxMs;
            return type(job, reply, send);
        }
        const auto rest = aolText(reply, kAolTimerTimeout);
        if (rest && !rest->empty() && tickCount() - job.since < kSentMs)
            return true;
        if (rest && rest->empty())
            log(job);
        return false;
    }
    bool type(Job& job, HWND reply, HWND send)
    {
        const auto present = aolText(reply, kAolTimerTimeout);
        if (!present)
            return tickCount() - job.since < kReplyBoxMs;
        // What the user has begun to write stays.
        if (!trimView(*present).empty() || !setAolText(reply, job.answer.text, kAolTimerTimeout))
            return false;
        // Noted first: whatever becomes of the click, a loop stays bounded.
        answered.add(job.answer.sender, tickCount());
        if (!clickAolIcon(send))
            return false;
        job.since = tickCount();
        job.step = Job::Step::sent;
        if (listener)
            listener(job.answer.sender);
        return true;
    }
    static void log(const Job& job)
    {
        const auto conversation =
            aolText(FindChildByClass(job.im, kTextClass, 1), kAolTimerTimeout);
        if (!opt::IM::LogIMs.get() || !conversation)
            return;
        const DateTime when = now();
        const std::wstring path = imLogPath(joinPath(imProgramFolder(), L"im logs"),
                                            job.answer.sender, opt::IM::LogIMsByDate.get(), when);
        makeFolder(path.substr(0, path.rfind(L'\\')));
        clsFileOp::AppendTextToFile(path, answeredEntry(*conversation, when));
    }

    /// Switching on forgets who has been answered, wherever it is switched.
    void modeChanged()
    {
        if (!std::exchange(on_, autoAnswerOn()) && on_)
            answered.clear();
    }

    std::deque<Job> jobs_;
    Timer tmrStep;
    bool on_ = autoAnswerOn();
    OptionSubscription changes_ = onOptionChanged([this](OptionId option) {
        if (option == opt::IM::IMAnswerMode.id())
            modeChanged();
    });
};

} // namespace

std::wstring SenderSN(WindowId im)
{
    return trap(
        kModule, [&] { return senderFromCaption(windowCaption(handleOf(im))); }, std::wstring());
}

std::wstring GetSenderMsg(WindowId im)
{
    return trap(
        kModule,
        [&] {
            const auto text = aolText(FindChildByClass(handleOf(im), kTextClass, 1));
            return lastMessageOf(text.value_or(L""), SenderSN(im));
        },
        std::wstring());
}

bool AnswerIM(const IMInfo& im)
{
    return trap(
        kModule, [&] { return autoAnswerOn() && Answerer::instance().take(im); }, false);
}

bool autoAnswerOn()
{
    return opt::IM::IMAnswerMode.get() != 0;
}

void setAnswerMode(int mode)
{
    trap(kModule, [&] { opt::IM::IMAnswerMode.set(mode); });
}

void onAnswered(std::function<void(const std::wstring&)> listener)
{
    Answerer::instance().listener = std::move(listener);
}

void endAnswers()
{
    Answerer::instance().stop();
}

} // namespace velora
