#pragma once
// A chat display driven by a string of bytes, and two readers of it: the program's own and one that
// takes the rules word by word over the whole text at each look. What the bytes mean is arbitrary;
// every string of bytes is a run. The two must agree at every look.
#include "core/clsChat.h"

#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace chatscript {

using Raised = std::vector<std::pair<std::wstring, std::wstring>>;

/// The display: its text as the control holds it, and whether AOL answers.
struct Display {
    std::wstring text;
    int silentFor = 0; ///< that many messages from now on get no answer
    int asked = 0;     ///< messages since the last look
    bool refused = false;
};

class DisplayReader final : public velora::ChatDisplay {
public:
    explicit DisplayReader(Display& display) : display_(display) {}
    std::optional<Tail> tail(std::size_t characters) override
    {
        if (!answers())
            return std::nullopt;
        const std::size_t size = display_.text.size();
        const std::size_t cut = size - std::min(size, characters);
        return Tail{display_.text.substr(cut), cut == 0};
    }
    std::optional<std::wstring> whole() override
    {
        if (!answers())
            return std::nullopt;
        return display_.text;
    }

private:
    bool answers()
    {
        ++display_.asked;
        if (display_.silentFor == 0)
            return true;
        --display_.silentFor;
        display_.refused = true;
        return false;
    }
    Display& display_;
};

/// The rules as they are written down, over the whole text.
class WholeReader {
public:
    void init(const std::wstring& display) { previous_ = current_ = tailOf(chat(display)); }
    bool check(const std::wstring& display)
    {
        full_ = chat(display);
        current_ = tailOf(full_);
        return current_ != previous_;
    }
    /// Raises into `raised`; stops as if released after `most` lines. False when it stopped.
    bool handle(Raised& raised, std::size_t most)
    {
        const std::wstring last = current_.substr(startOfLastLine(current_));
        const auto [name, message] = parts(last);
        if (name.size() < 3 || message.empty() || last.size() >= 251)
            return true;
        const std::wstring fresh = full_.substr(startOfNew());
        std::size_t count = 0;
        for (std::size_t at = 0; at <= fresh.size();) {
            const std::size_t end = std::min(fresh.find(L'\r', at), fresh.size());
            std::wstring line;
            for (std::size_t i = at; i < end; ++i)
                if (fresh[i] != L'\n')
                    line += fresh[i];
            at = end + 1;
            const auto [who, what] = parts(line);
            if (count == most)
                return false;
            if (who.size() >= 3 && !what.empty()) {
                raised.emplace_back(who, what);
                ++count;
            }
        }
        previous_ = current_;
        return true;
    }

private:
    static std::wstring chat(const std::wstring& display)
    {
        std::vector<std::wstring> lines(1);
        for (std::size_t i = 0; i < display.size(); ++i) {
            if (display[i] == L'\n' && i > 0 && display[i - 1] == L'\r')
                continue;
            if (display[i] == L'\r' || display[i] == L'\n' || display[i] == L'\v')
                lines.emplace_back();
            else if (display[i] != L'\0')
                lines.back() += display[i];
        }
        while (!lines.empty() && lines.back().empty())
            lines.pop_back();
        std::wstring text;
        for (const std::wstring& line : lines)
            text += (line.find(L':') != line.npos ? L"\r\n" : L" ") + line;
        return text;
    }
    static std::wstring tailOf(const std::wstring& text)
    {
        return text.size() >= 1001 ? text.substr(text.size() - 1000) : text;
    }
    static std::size_t startOfLastLine(const std::wstring& text)
    {
        const std::size_t cr = text.find_last_of(L'\r');
        return cr == text.npos ? 0 : std::min(cr + 2, text.size());
    }
    static std::pair<std::wstring, std::wstring> parts(const std::wstring& line)
    {
        std::pair<std::wstring, std::wstring> result;
        if (const auto colon = line.find(L':'); colon != line.npos)
            result.first = line.substr(0, colon);
        if (const auto tab = line.find(L'\t'); tab != line.npos)
            result.second = line.substr(tab + 1);
        return result;
    }
    std::size_t startOfNew() const
    {
        if (previous_.size() > full_.size() || previous_.empty())
            return 0;
        for (std::size_t at = full_.size() - previous_.size() + 1; at-- > 0;)
            if (full_[at] == previous_[0] && full_.compare(at, previous_.size(), previous_) == 0)
                return at + previous_.size();
        // Cut at its head: the longest end of the section, from a line's start on, with which the
        // text begins, or begins after its first line.
        std::size_t second = full_.find(L"\r\n", 1);
        for (const std::size_t start : {std::size_t{0}, second}) {
            if (start == full_.npos)
                continue;
            for (std::size_t from = 0; from < previous_.size(); ++from)
                if (previous_[from] == L'\r' && previous_.compare(from, 2, L"\r\n") == 0
                    && full_.compare(start, previous_.size() - from, previous_, from) == 0)
                    return start + previous_.size() - from;
        }
        return 0;
    }

    std::wstring full_, previous_, current_;
};

class Run {
public:
    /// Empty when the readers agreed from start to end, else what they differed in.
    std::string operator()(std::span<const std::uint8_t> script)
    {
        script_ = script;
        trailing_ = byte() & 1;
        for (int n = byte() % 64; n > 0; --n)
            say();
        start();
        while (at_ < script_.size() && fault_.empty())
            step();
        display_.silentFor = 0;
        if (fault_.empty())
            look();
        return fault_;
    }
    /// Lines raised in all: a test of many runs checks that they were not idle.
    std::size_t raisedLines() const { return total_; }
    int wholeReads() const { return wholeReads_; }
    int looks() const { return looks_; }

private:
    std::uint8_t byte() { return at_ < script_.size() ? script_[at_++] : 0; }

    void start()
    {
        reader_.ChatMsg = [this](std::wstring& name, std::wstring& message) {
            got_.emplace_back(name, message);
            if (got_.size() == releaseAfter_)
                reader_.Release();
        };
        reader_.Reattach = [this] { ++attached_; };
        display_.refused = false;
        reader_.Init(std::make_unique<DisplayReader>(display_));
        started_ = !display_.refused;
        if (started_)
            oracle_.init(display_.text);
    }

    void put(std::wstring_view line)
    {
        const wchar_t* const end = ends_[endKind_];
        if (!trailing_)
            display_.text += end;
        display_.text += line;
        if (trailing_)
            display_.text += end;
    }

    void say()
    {
        static constexpr const wchar_t* kNames[] = {
            L"AB", L"ABC", L"Joe Smith", L"", L"OnlineHost", L"x:y", L"Averyvery LongNm", L"Guest"};
        static constexpr int kLengths[] = {0,   1,   2,   5,   20,   60,   120,  244,
                                           245, 246, 250, 251, 1000, 3000, 3600, 4500};
        const std::uint8_t kind = byte();
        std::wstring line = kNames[kind & 7];
        line += (kind & 0x08) ? L":" : L":\t";
        std::wstring message;
        const std::size_t length = kLengths[byte() & 15];
        // Few different characters, so that lines and sections repeat by themselves.
        while (message.size() < length)
            message += L"ab b:c"[(message.size() * (kind >> 5) + kind) % 6];
        if (kind & 0x10)
            message += std::to_wstring(++number_);
        lastLine_ = line + message;
        put(lastLine_);
    }

    void trim()
    {
        // AOL cuts whole lines or just characters at the head.
        std::wstring& text = display_.text;
        const bool lines = byte() & 1;
        for (int n = byte(); n > 0 && !text.empty(); --n) {
            const std::size_t end = lines ? text.find_first_of(L"\r\n\v", 1) : std::size_t{7};
            text.erase(0, std::min(end, text.size()));
        }
    }

    void step()
    {
        switch (byte() & 15) {
        case 0:
        case 1:
        case 2:
        case 3: say(); break;
        case 4: put(lastLine_); break;
        case 5:
            for (int n = byte(); n > 0; --n)
                put(L"ABC:\tburst " + std::to_wstring(++number_));
            break;
        case 6:
            for (int n = byte(); n > 0 && display_.text.size() < kLongText; --n)
                put(lastLine_);
            break;
        case 7: put(L"goes on and on"); break;
        case 8: trim(); break;
        case 9: display_.text.clear(); break;
        case 10: display_.text += std::wstring(byte() & 7, L"x \t:\r\0\v\n"[byte() & 7]); break;
        case 11: endKind_ = byte() % 4; break;
        case 12: display_.silentFor = byte() % 4; break;
        case 13: releaseAfter_ = byte(); break;
        default: look(); break;
        }
        // Longer texts would only take time; AOL cuts, too.
        if (display_.text.size() > kLongText)
            display_.text.erase(0, kLongText / 4 * 3);
    }

    void look()
    {
        display_.asked = 0;
        display_.refused = false;
        const int answer = reader_.CheckChat();
        ++looks_;
        wholeReads_ += display_.asked == 2;
        if (display_.asked > 2)
            fault_ = "more than two messages for one look";
        if (reader_.missed() != display_.refused)
            fault_ = "an unanswered look isn't told";
        if (display_.refused) {
            if (answer != 1)
                fault_ = "changed without an answer";
            return;
        }
        if (!started_) {
            started_ = true;
            oracle_.init(display_.text);
            if (answer != 1)
                fault_ = "the first look counts as a change";
            return;
        }
        const bool changed = oracle_.check(display_.text);
        if (changed != (answer == 0)) {
            fault_ = "one sees a change, the other doesn't";
            return;
        }
        if (changed)
            handle();
    }

    void handle()
    {
        Raised expected;
        got_.clear();
        attached_ = 0;
        const std::size_t most = releaseAfter_ ? releaseAfter_ : ~std::size_t{0};
        oracle_.handle(expected, most);
        reader_.HandleChat();
        total_ += got_.size();
        if (got_ != expected)
            fault_ = "the lines differ";
        if (attached_ != (reader_.active() ? 1 : 0))
            fault_ = "attached again more or less than once";
        if (!reader_.active()) {
            releaseAfter_ = 0;
            start();
        }
    }

    static constexpr std::size_t kLongText = 12000;
    static constexpr const wchar_t* ends_[] = {L"\r", L"\r\n", L"\n", L"\v"};
    std::span<const std::uint8_t> script_;
    std::size_t at_ = 0;
    bool trailing_ = false; ///< each line ends in a line end, rather than beginning with one
    int endKind_ = 0;
    Display display_;
    std::wstring lastLine_ = L"ABC:\tfirst";
    int number_ = 0;
    velora::clsChat reader_;
    WholeReader oracle_;
    bool started_ = false;
    std::size_t releaseAfter_ = 0;
    Raised got_;
    int attached_ = 0;
    std::size_t total_ = 0;
    int wholeReads_ = 0, looks_ = 0;
    std::string fault_;
};

} // namespace chatscript
