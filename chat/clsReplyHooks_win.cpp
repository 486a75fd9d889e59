#include "chat/clsReplyHooks.h"

#include "base/text.h"
#include "base/trap.h"
#include "base/wildcard.h"
#include "chat/modEditorLists.h"
#include "chat/modTemplates.h"
#include "core/modAOL.h"
#include "core/modCaptions.h"
#include "core/modFindChild.h"

#include <algorithm>
#include <utility>

namespace velora {
namespace {

constexpr char kModule[] = "clsReplyHooks";
constexpr wchar_t kTextClass[] = L"RICHCNTL";
constexpr wchar_t kReadOnlyClass[] = L"RICHCNTLREADONLY";
constexpr wchar_t kIconClass[] = L"_AOL_Icon";
constexpr wchar_t kEditClass[] = L"_AOL_Edit";

/// AOL may build a reply late; a window that comes later than this is none of it.
constexpr DWORD kPatience = 30000;
constexpr UINT kTickMs = 500;
/// Bounds for what strangers can open and users can press.
constexpr std::size_t kMostRead = 64, kMostAwaited = 8, kMostAgain = 64;
constexpr int kMostIcons = 16;
/// Windows hooked at a time, those in front: the agent has a limited number of hooks, and each
/// window takes up to three.
constexpr std::size_t kHooked = 4;

bool isImCaption(const std::wstring& caption)
{
    const int edition = aol().edition, version = aol().version;
    return wildcardMatch(imReceivedPattern(edition, version), caption)
           || wildcardMatch(imSentPattern(edition, version), caption)
           || wildcardMatch(internetImPattern(edition, version), caption);
}

/// The one text of a window that could be a mail or a message that is read; 0 when it is another
/// kind of window. Sends no message.
HWND readText(HWND child)
{
    if (!hasClass(child, L"AOL Child") || FindChildByClass(child, kEditClass)
        || FindChildByClass(child, L"_AOL_Listbox") || isImCaption(windowCaption(child)))
        return nullptr;
    const HWND plain = FindChildByClass(child, kTextClass);
    const HWND readOnly = FindChildByClass(child, kReadOnlyClass);
    if ((plain && readOnly) || FindChildByClass(child, plain ? kTextClass : kReadOnlyClass, 2))
        return nullptr;
    return plain ? plain : readOnly;
}

std::vector<HWND> documents()
{
    std::vector<HWND> found;
    for (HWND child = GetWindow(AOLMDI(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        found.push_back(child);
    return found;
}

bool holds(const std::vector<HWND>& windows, HWND window)
{
    return std::find(windows.begin(), windows.end(), window) != windows.end();
}

bool inside(HWND window, LPARAM where)
{
    RECT area{};
    GetClientRect(window, &area);
    return PtInRect(&area, {static_cast<short>(LOWORD(where)), static_cast<short>(HIWORD(where))});
}

/// Puts the reply's text into its box, and the cursor behind it. The user may be typing already:
/// what is there is touched only when a part of it has to go.
void putReply(AgentLink& link, HWND body, const std::wstring& existing, const std::wstring& text)
{
    constexpr int end = 0x7FFFFFF0; // behind any text
    if (existing.empty() || !text.starts_with(existing)) {
        link.setText(body, text);
        link.select(body, end, end);
    } else if (link.select(body, end, end)) {
        link.replaceSelection(body, std::wstring_view(text).substr(existing.size()));
    }
}

} // namespace

HWND GetMailReplyWnd(HWND window)
{
    if (!hasClass(window, L"AOL Child") || !FindChildByClass(window, kEditClass))
        return nullptr;
    if (const HWND body = FindChildByClass(window, kTextClass))
        return body;
    // Older boards write in an "_AOL_Edit", the one of several lines.
    for (int which = 1; const HWND edit = FindChildByClass(window, kEditClass, which); ++which)
        if (GetWindowLongW(edit, GWL_STYLE) & ES_MULTILINE)
            return edit;
    return nullptr;
}

void ScrollToCursor(HWND textBox)
{
    sendToAol(textBox, EM_SCROLLCARET, 0, 0, kAolTimerTimeout);
}

clsReplyHooks::clsReplyHooks() = default;

clsReplyHooks::~clsReplyHooks()
{
    detach();
}

void clsReplyHooks::detach()
{
    trap(kModule, [&] {
        tmrReply.stop();
        read_.clear();
        awaited_.clear();
        again_.clear();
    });
}

void clsReplyHooks::childGone(HWND child)
{
    trap(kModule, [&] {
        std::erase_if(read_, [&](const auto& read) { return read->window == child; });
        std::erase_if(awaited_, [&](const Awaited& awaited) { return awaited.window == child; });
        std::erase(again_, child);
        // The handle may come again, as the reply's.
        for (Awaited& awaited : awaited_)
            std::erase(awaited.present, child);
        hookFront();
    });
}

void clsReplyHooks::childChanged(HWND child)
{
    trap(kModule, [&] {
        if (!GetReplyWnd(child) && !lookAt(child) && !holds(again_, child)
            && again_.size() < kMostAgain)
            again_.push_back(child);
        hookFront();
        keepTicking();
    });
}

bool clsReplyHooks::lookAt(HWND child)
{
    const HWND text = readText(child);
    if (!text || find(child))
        return true;
    auto read = std::make_unique<ReadWindow>();
    read->window = child;
    read->text = text;
    const std::wstring captions[] = {replyCaption(aol().edition), replyAllCaption(aol().edition),
                                     forwardCaption(aol().edition)};
    for (int which = 1; which <= kMostIcons; ++which) {
        const HWND icon = FindChildByClass(child, kIconClass, which);
        if (!icon)
            break;
        const auto caption = aolText(icon, kAolTimerTimeout);
        if (!caption)
            return !IsWindow(child);
        for (std::size_t i = 0; i < std::size(captions); ++i)
            if (!read->icons[i] && equalNoCase(trimView(*caption), captions[i]))
                read->icons[i] = icon;
    }
    if (read->icon(Button::reply) && read_.size() < kMostRead)
        read_.push_back(std::move(read));
    return true;
}

// The windows in front have the hooks: there the user presses next.
void clsReplyHooks::hookFront()
{
    unhooked_ = false;
    if (!aolLink().connected())
        return;
    std::vector<ReadWindow*> front;
    for (const HWND child : documents())
        for (const auto& read : read_)
            if (read->window == child)
                front.push_back(read.get());
    for (std::size_t i = kHooked; i < front.size(); ++i)
        for (WindowHook& sbcMB : front[i]->sbcMB)
            sbcMB.detach();
    for (std::size_t i = 0; i < std::min(kHooked, front.size()); ++i)
        unhooked_ |= !hook(*front[i]);
}

const clsReplyHooks::ReadWindow* clsReplyHooks::find(HWND window) const
{
    const auto found = std::find_if(read_.begin(), read_.end(),
                                    [&](const auto& read) { return read->window == window; });
    return found == read_.end() ? nullptr : found->get();
}

HWND clsReplyHooks::GetReplyHelpIcon(HWND window) const
{
    const ReadWindow* const read = find(window);
    return read ? read->icon(Button::reply) : nullptr;
}

HWND clsReplyHooks::GetFwdHelpIcon(HWND window) const
{
    const ReadWindow* const read = find(window);
    return read ? read->icon(Button::forward) : nullptr;
}

bool clsReplyHooks::IsStandaloneMB(HWND window) const
{
    return GetReplyHelpIcon(window) && !GetFwdHelpIcon(window);
}

bool clsReplyHooks::hooked(HWND window) const
{
    const ReadWindow* const read = find(window);
    return read && read->sbcMB[static_cast<int>(Button::reply)].window();
}

bool clsReplyHooks::hook(ReadWindow& read)
{
    bool all = true;
    for (std::size_t i = 0; i < read.icons.size(); ++i) {
        WindowHook& sbcMB = read.sbcMB[i];
        if (!read.icons[i] || sbcMB.window())
            continue;
        sbcMB.WndMessageX = [this, &read, button = static_cast<Button>(i)](HookMessage& message) {
            happened(read, button, message);
        };
        // A key that is let through is raised once: its character and release are not.
        all &= sbcMB.attach(aolLink(), read.icons[i],
                            {{WM_LBUTTONDOWN},
                             {WM_LBUTTONDBLCLK},
                             {WM_LBUTTONUP},
                             WatchRule::key(WM_KEYDOWN, VK_SPACE),
                             WatchRule::key(WM_KEYDOWN, VK_RETURN),
                             WatchRule::key(WM_CHAR, VK_RETURN),
                             WatchRule::key(WM_KEYUP, VK_SPACE)});
    }
    return all;
}

void clsReplyHooks::happened(ReadWindow& read, Button button, HookMessage& message)
{
    trap(kModule, [&] {
        if (message.message == WM_LBUTTONDOWN || message.message == WM_LBUTTONDBLCLK) {
            read.pressed = message.window;
            return;
        }
        if (message.message == WM_LBUTTONUP
            && (std::exchange(read.pressed, nullptr) != message.window
                || !inside(message.window, message.lParam)))
            return;
        remember(read, button);
    });
}

bool clsReplyHooks::quoteFront()
{
    return trap(
        kModule,
        [&] {
            for (const HWND child : documents())
                if (const ReadWindow* const read = find(child))
                    return remember(*read, Button::reply, true)
                           && clickAolIcon(GetReplyHelpIcon(child));
            return false;
        },
        false);
}

bool clsReplyHooks::remember(const ReadWindow& read, Button button, bool always)
{
    forwarded_ = button == Button::forward;
    // The press that quoteFront has made is heard like the user's own.
    const bool expected = std::any_of(awaited_.begin(), awaited_.end(), [&](const Awaited& a) {
        return a.always && a.from == read.window && !a.window;
    });
    if (expected || (!always && !quoteRules(read.board()).enabled))
        return expected;
    const auto selection = aolLink().selectionText(read.text);
    const auto text = aolLink().readText(read.text);
    if (!selection || !text || trim(*text).empty())
        return false;
    Awaited awaited;
    awaited.from = read.window;
    awaited.always = always;
    awaited.original = {*text, *selection};
    awaited.subject = subjectFromMailText(shownText(awaited.original));
    if (awaited.subject.empty())
        awaited.subject = windowCaption(read.window);
    awaited.board = read.board();
    awaited.since = GetTickCount();
    awaited.present = documents();
    if (awaited_.size() == kMostAwaited)
        awaited_.erase(awaited_.begin());
    awaited_.push_back(std::move(awaited));
    keepTicking();
    return true;
}

bool clsReplyHooks::GetReplyWnd(HWND child)
{
    const auto is = [&](const Awaited& awaited) { return awaited.window == child; };
    if (std::none_of(awaited_.begin(), awaited_.end(), is)) {
        const std::wstring caption = windowCaption(child);
        if (!hasClass(child, L"AOL Child") || !isReplySubject(caption))
            return false;
        const auto found = std::find_if(awaited_.begin(), awaited_.end(), [&](const Awaited& a) {
            return !a.window && !holds(a.present, child) && answersSubject(caption, a.subject);
        });
        if (found == awaited_.end())
            return false;
        found->window = child;
        for (Awaited& other : awaited_)
            other.present.push_back(child);
    }
    fillAll();
    return true;
}

void clsReplyHooks::fillAll()
{
    // While AOL is asked for one, it may tell of the next press.
    std::vector<Awaited> present;
    for (Awaited& awaited : awaited_)
        if (awaited.window)
            present.push_back(std::move(awaited));
    std::erase_if(awaited_, [](const Awaited& awaited) { return awaited.window != nullptr; });
    for (Awaited& awaited : present)
        if (!fill(awaited))
            awaited_.push_back(std::move(awaited));
}

bool clsReplyHooks::fill(const Awaited& awaited)
{
    if (!IsWindow(awaited.window))
        return true;
    const HWND body = GetMailReplyWnd(awaited.window);
    const auto existing = body ? aolLink().readText(body, kAolTimerTimeout) : std::nullopt;
    if (!existing)
        return false;
    const QuoteRules rules = quoteRules(awaited.board);
    const auto alias = [&](const std::wstring& sender) {
        return rules.aliases ? CheckForAlias(sender) : sender;
    };
    const std::wstring separator =
        GetSeperatorText(loadTemplate(defaultTemplate()).CharHtml, awaited.original, alias);
    const bool selected = !trim(awaited.original.selection).empty();
    const bool quotes = selected || rules.includeMessage || awaited.always;
    const QuoteStyle style{rules.quoteStyle && quotes, rules.stripReturns, aol().version};
    const std::wstring quote = FormatQuote(
        separator, quotes ? GetQuoteText(awaited.original, rules.includeHead) : std::wstring(),
        style);
    // Without a quote nothing stands in for AOL's own copy: it stays.
    const std::wstring text =
        composeReply(*existing, quotes ? awaited.original : OriginalMessage{}, quote);
    // One try: a text that AOL took too late for us must not be put there again.
    putReply(aolLink(), body, *existing, text);
    ScrollToCursor(body);
    return true;
}

void clsReplyHooks::tick()
{
    trap(kModule, [&] {
        const DWORD now = GetTickCount();
        std::erase_if(awaited_, [&](const Awaited& a) { return now - a.since > kPatience; });
        fillAll();
        for (const HWND child : std::exchange(again_, {}))
            if (IsWindow(child) && !lookAt(child))
                again_.push_back(child);
        hookFront();
        keepTicking();
    });
}

void clsReplyHooks::keepTicking()
{
    const bool needed = !awaited_.empty() || !again_.empty() || unhooked_ || read_.size() > kHooked;
    if (!needed)
        tmrReply.stop();
    else if (!tmrReply.active())
        tmrReply.start(kTickMs, [this] { tick(); });
}

} // namespace velora
