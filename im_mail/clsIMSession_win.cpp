#include "im_mail/clsIMSession.h"

#include "base/clsFileOp.h"
#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/modAOL.h"
#include "core/modFindChild.h"
#include "core/modMain.h"
#include "im_mail/modIMRules.h"
#include "settings/Options.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "clsIMSession";
/// AOL's notice that the text of a display changed.
constexpr UINT kTextChanged = 5143;
/// A longer conversation is read from its end, not as a whole.
constexpr LRESULT kWholeRead = 16000;
/// More than the log writer looks back.
constexpr LRESULT kLookBack = 4000;
/// What waits for a log that cannot be written.
constexpr std::size_t kMostUnwritten = 1u << 20;
constexpr std::uint64_t kMostLog = 16u << 20;
constexpr int kEnd = 0x7FFFFFFF;

bool isShown(HWND control)
{
    // Not IsWindowVisible: the whole IM may be hidden.
    return (GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE) != 0;
}

bool isRich(HWND control)
{
    return hasClass(control, L"RICHCNTL") || hasClass(control, L"RICHCNTLREADONLY");
}

bool fromInternet(HWND window)
{
    for (int which = 1; const HWND text = FindChildByClass(window, L"_AOL_Static", which);
         ++which) {
        // Most of AOL's controls show their text outside; only the others need be asked.
        const std::wstring caption = windowCaption(text);
        if (isInternetSenderText(caption.empty() ? GetAPITextEx(text, 200) : caption))
            return true;
    }
    return false;
}

} // namespace

std::optional<IMParts> findIMParts(HWND window)
{
    IMParts parts;
    bool foreign = false;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (isRich(child))
            (parts.conversation ? parts.reply : parts.conversation) = child;
        else if (hasClass(child, L"_AOL_Edit") || hasClass(child, L"_AOL_Listbox"))
            foreign = true; // a mail, a chat room
        else if (!parts.respond && isShown(child) && isReplyCaption(windowCaption(child)))
            parts.respond = child;
    }
    if (foreign || !parts.conversation || (!parts.reply && !parts.respond))
        return std::nullopt;
    return parts;
}

std::wstring& imProgramFolder()
{
    static std::wstring folder = AppPath();
    return folder;
}

clsIMSession::clsIMSession(HWND window, std::wstring screenName)
    : window_(window), screenName_(std::move(screenName)), started_(now())
{
    lastChange = GetTickCount();
    findParts();
    internet_ = fromInternet(window);
    sbcConversation.WndMessageX = [this](HookMessage&) { refresh(); };
}

IMInfo clsIMSession::info() const
{
    return {id(), screenName_, windowCaption(window_), text_, internet_, false};
}

bool clsIMSession::findParts()
{
    const auto found = findIMParts(window_);
    if (!found || *found == parts_)
        return false;
    if (found->conversation != parts_.conversation)
        sbcConversation.detach();
    parts_ = *found;
    return true;
}

bool clsIMSession::begin()
{
    return trap(
        kModule,
        [&] {
            if (begun_)
                return true;
            AgentLink& link = aolLink();
            auto text = link.readText(parts_.conversation);
            if (!text)
                return false;
            if (text->find(kBeginImLabel) == text->npos) {
                if (!link.select(parts_.conversation, 0, 0)
                    || !link.replaceSelection(parts_.conversation, beginRecord(started_)))
                    return false;
                // AOL, or the next note, may add where the caret is.
                link.select(parts_.conversation, kEnd, kEnd);
                text = link.readText(parts_.conversation);
                if (!text)
                    return false;
            } else {
                resumeLog(*text);
            }
            begun_ = true;
            length_ = static_cast<LRESULT>(text->size());
            take(std::move(*text));
            return true;
        },
        false);
}

void clsIMSession::refresh()
{
    trap(kModule, [&] {
        // AOL may tell of a change while it is being read.
        if (reading_ || finished_ || !begun_)
            return;
        reading_ = true;
        struct Done {
            bool& flag;
            ~Done() { flag = false; }
        } const done{reading_};
        const auto length =
            sendToAol(parts_.conversation, WM_GETTEXTLENGTH, 0, 0, kAolTimerTimeout);
        if (!length || *length == length_)
            return;
        const auto fresh = readNew(*length);
        if (!fresh)
            return;
        length_ = *length;
        if (fresh->empty())
            return;
        lastChange = GetTickCount();
        log(*fresh);
        if (onFresh)
            onFresh(*this, *fresh);
    });
}

/// What the conversation has got since it was read last; absent when AOL does not answer.
std::optional<std::wstring> clsIMSession::readNew(LRESULT length)
{
    AgentLink& link = aolLink();
    const LRESULT grown = length - length_;
    if (length > kWholeRead && grown > 0 && writer_.begun()) {
        const auto tail = link.readTail(parts_.conversation, static_cast<int>(grown + kLookBack),
                                        kAolTimerTimeout);
        if (!tail)
            return std::nullopt;
        const std::wstring fresh = writer_.update(*tail);
        text_ += fresh;
        return fresh;
    }
    auto whole = link.readText(parts_.conversation, kAolTimerTimeout);
    if (!whole)
        return std::nullopt;
    text_ = std::move(*whole);
    return writer_.update(text_);
}

void clsIMSession::take(std::wstring whole)
{
    text_ = std::move(whole);
    std::wstring fresh = writer_.update(text_);
    // The conversation of a stranger who wrote the label himself has no header of its own.
    if (!resumed_ && !trimView(fresh).starts_with(kBeginImLabel))
        fresh.insert(0, beginRecord(started_));
    log(fresh);
}

void clsIMSession::finish()
{
    trap(kModule, [&] {
        if (finished_ || !begun_)
            return;
        if (IsWindow(parts_.conversation))
            refresh();
        finished_ = true;
        sbcConversation.detach();
        log(endRecord(now()));
    });
}

void clsIMSession::watch(bool on)
{
    if (!on) {
        sbcConversation.detach();
        return;
    }
    if (watched() || !begun_ || finished_)
        return;
    // Asked before the conversation is destroyed: the last words are read then.
    sbcConversation.attach(aolLink(), parts_.conversation,
                           {{kTextChanged, 0, ~WPARAM{0}, Delivery::postedAfter, true},
                            {WM_DESTROY, 0, ~WPARAM{0}, Delivery::verdict, false}});
    refresh();
}

bool clsIMSession::addNote(std::wstring_view note)
{
    AgentLink& link = aolLink();
    // At the end: what the user has selected would be replaced.
    const bool added = link.select(parts_.conversation, kEnd, kEnd)
                       && link.replaceSelection(parts_.conversation, logNoteText(note));
    if (added)
        refresh();
    return added;
}

/// After a former run of the program the log holds a part of this conversation: only the rest is
/// written.
void clsIMSession::resumeLog(const std::wstring& conversation)
{
    const auto bytes = readFile(logPath(), kMostLog);
    if (bytes)
        resumed_ = writer_.resume(from1252(*bytes), conversation);
}

std::wstring clsIMSession::logPath() const
{
    return imLogPath(imProgramFolder() + L"\\im logs", screenName_, opt::IM::LogIMsByDate.get(),
                     started_);
}

void clsIMSession::log(std::wstring_view record)
{
    unwritten_ += record;
    if (unwritten_.size() > kMostUnwritten)
        unwritten_.erase(0, unwritten_.size() - kMostUnwritten);
    if (opt::IM::LogIMs.get())
        flush();
}

void clsIMSession::flush()
{
    if (unwritten_.empty())
        return;
    trap(kModule, [&] {
        if (path_.empty())
            path_ = logPath();
        makeFolder(path_.substr(0, path_.rfind(L'\\')));
        if (clsFileOp::AppendTextToFile(path_, unwritten_)) {
            unwritten_.clear();
            logFailed_ = false;
        } else if (!std::exchange(logFailed_, true)) {
            throw Error("the IM log cannot be written");
        }
    });
}

} // namespace velora
