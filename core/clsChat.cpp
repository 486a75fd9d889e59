#include "core/clsChat.h"

#include "base/trap.h"

#include <algorithm>
#include <utility>

namespace velora {

namespace {

constexpr char kModule[] = "ctlChatSpy";
constexpr std::size_t kShortestName = 3;
/// From this length on AOL may still be breaking the last line: it is left for the next change.
constexpr std::size_t kUnsettledLine = 251;
/// What is asked for beyond the previous section: room for the line that the cut may halve and for
/// some new ones. More than that came at once only in a burst.
constexpr std::size_t kTailMargin = 3096;
constexpr std::size_t kLongestTail = 1u << 18;

constexpr std::wstring_view kLineEnds = L"\r\n\v";

bool isShort(const std::wstring& screenName, const std::wstring& message)
{
    return screenName.size() < kShortestName || message.empty();
}

/// The chat text of a display's tail: a cut tail begins amid a line, which is left out, so that
/// the result is an end of the whole chat text.
std::wstring chatOfTail(std::wstring_view tail, bool whole)
{
    if (!whole) {
        const std::size_t end = tail.find_first_of(kLineEnds);
        if (end == tail.npos)
            return {};
        const bool pair = tail[end] == L'\r' && end + 1 < tail.size() && tail[end + 1] == L'\n';
        tail.remove_prefix(end + (pair ? 2 : 1));
    }
    return GetChat(displayLines(tail));
}

struct Seen {
    std::wstring text;
    bool whole;
};

std::optional<Seen> readWhole(ChatDisplay& display)
{
    const auto text = display.whole();
    if (!text)
        return std::nullopt;
    return Seen{GetChat(displayLines(*text)), true};
}

/// The chat text's end, at least as long as a section unless it is the whole text. It needs about
/// `behind` characters more than a section.
std::optional<Seen> readEnd(ChatDisplay& display, std::size_t behind)
{
    const auto tail = display.tail(std::min(kSectionLength + kTailMargin + behind, kLongestTail));
    if (!tail)
        return std::nullopt;
    Seen seen{chatOfTail(tail->text, tail->whole), tail->whole};
    if (!seen.whole && seen.text.size() < kSectionLength)
        return readWhole(display);
    return seen;
}

} // namespace

std::vector<std::wstring> displayLines(std::wstring_view displayText)
{
    std::vector<std::wstring> lines;
    std::wstring line;
    for (std::size_t i = 0; i < displayText.size(); ++i) {
        const wchar_t c = displayText[i];
        if (kLineEnds.find(c) == kLineEnds.npos) {
            if (c != 0)
                line += c;
            continue;
        }
        lines.push_back(std::exchange(line, {}));
        if (c == L'\r' && i + 1 < displayText.size() && displayText[i + 1] == L'\n')
            ++i;
    }
    if (!line.empty())
        lines.push_back(std::move(line));
    while (!lines.empty() && lines.back().empty())
        lines.pop_back();
    return lines;
}

std::wstring GetChat(const std::vector<std::wstring>& lines)
{
    std::wstring text;
    for (const std::wstring& line : lines) {
        text += line.find(L':') == line.npos ? L" " : L"\r\n";
        text += line;
    }
    return text;
}

std::wstring LastSection(std::wstring_view text)
{
    return std::wstring(text.substr(text.size() - std::min(text.size(), kSectionLength)));
}

std::wstring LastLine(std::wstring_view text)
{
    const std::size_t end = text.rfind(L'\r');
    if (end == text.npos)
        return std::wstring(text);
    return std::wstring(text.substr(std::min(end + 2, text.size())));
}

int LineCount(std::wstring_view text)
{
    if (text.empty())
        return 0;
    return static_cast<int>(std::count(text.begin(), text.end(), L'\r')) + 1;
}

namespace {

/// The next line of a text, without its CR and LF; the text is cut by it and its end.
std::wstring takeLine(std::wstring_view& text)
{
    const std::size_t end = std::min(text.find(L'\r'), text.size());
    std::wstring line(text.substr(0, end));
    std::erase(line, L'\n');
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

} // namespace

std::wstring LineFromString(std::wstring_view text, int index)
{
    const int count = LineCount(text);
    if (index < 1 || index > count)
        return {};
    if (count == 1)
        return std::wstring(text);
    for (int i = 1; i < index; ++i)
        text.remove_prefix(text.find(L'\r') + 1);
    return takeLine(text);
}

std::wstring AolChatLineSN(std::wstring_view line)
{
    const std::size_t colon = line.find(L':');
    return colon == line.npos ? std::wstring() : std::wstring(line.substr(0, colon));
}

std::wstring AolChatLineMsg(std::wstring_view line)
{
    const std::size_t tab = line.find(L'\t');
    return tab == line.npos ? std::wstring() : std::wstring(line.substr(tab + 1));
}

std::optional<std::size_t> endOfSection(std::wstring_view text, std::wstring_view section)
{
    if (section.empty())
        return std::nullopt;
    const std::size_t at = text.rfind(section);
    if (at == text.npos)
        return std::nullopt;
    return at + section.size();
}

std::size_t endOfRemainder(std::wstring_view text, std::wstring_view section)
{
    if (section.size() > text.size())
        return 0;
    // AOL may have cut amid a line: then what is left of the section begins with the text's second.
    const std::size_t second = text.find(L"\r\n", 1);
    for (const std::size_t start : {std::size_t{0}, second}) {
        if (start == text.npos)
            break;
        const std::wstring_view rest = text.substr(start);
        for (std::size_t line = section.find(L"\r\n"); line != section.npos;
             line = section.find(L"\r\n", line + 2))
            if (rest.starts_with(section.substr(line)))
                return start + section.size() - line;
    }
    return 0;
}

void clsChat::Init(std::unique_ptr<ChatDisplay> display)
{
    trap(kModule, [&] {
        Release();
        state_ = std::make_shared<State>();
        state_->display = std::move(display);
        firstLook();
    });
}

void clsChat::firstLook()
{
    const auto seen = readEnd(*state_->display, 0);
    missed_ = !seen;
    if (!seen)
        return;
    state_->previous = state_->current = LastSection(seen->text);
    state_->started = true;
}

int clsChat::CheckChat()
{
    return trap(
        kModule,
        [&] {
            if (!active() || state_->handling)
                return 1;
            if (!state_->started) {
                firstLook();
                return 1;
            }
            return look() && state_->current != state_->previous ? 0 : 1;
        },
        1);
}

bool clsChat::look()
{
    State& state = *state_;
    auto seen = readEnd(*state.display, state.behind);
    auto end = seen ? endOfSection(seen->text, state.previous) : std::nullopt;
    if (seen && !end && !seen->whole) {
        // One answer must serve both, the comparison and the new lines: between two of them AOL may
        // have added a line.
        seen = readWhole(*state.display);
        end = seen ? endOfSection(seen->text, state.previous) : std::nullopt;
    }
    missed_ = !seen;
    if (!seen)
        return false;
    state.current = LastSection(seen->text);
    state.fresh = seen->text.substr(end ? *end : endOfRemainder(seen->text, state.previous));
    state.behind = state.fresh.size();
    return true;
}

void clsChat::HandleChat()
{
    // Handlers may release or destroy the reader: all that the loop needs is held here.
    const std::shared_ptr<State> state = state_;
    if (!state || !state->active || state->handling)
        return;
    const auto reattach = Reattach;
    state->handling = true;
    const bool finished = trap(
        kModule, [&] { return raiseLines(*state, ChatMsg); }, true);
    state->handling = false;
    if (finished && state->active && reattach)
        trap(kModule, reattach);
}

bool clsChat::raiseLines(State& state, const decltype(ChatMsg)& handler)
{
    const std::wstring last = LastLine(state.current);
    if (isShort(AolChatLineSN(last), AolChatLineMsg(last)) || last.size() >= kUnsettledLine)
        return true;
    const auto raise = handler;
    const std::wstring fresh = std::move(state.fresh);
    std::wstring_view rest = fresh;
    while (!rest.empty()) {
        const std::wstring line = takeLine(rest);
        std::wstring screenName = AolChatLineSN(line), message = AolChatLineMsg(line);
        if (!state.active)
            return false;
        if (raise && !isShort(screenName, message))
            trap(
                kModule, [&] { raise(screenName, message); }, "ChatMsg");
    }
    state.fresh.clear();
    state.behind = 0;
    state.previous = state.current;
    return true;
}

void clsChat::Release()
{
    if (state_)
        state_->active = false;
    state_.reset();
    missed_ = false;
}

} // namespace velora
