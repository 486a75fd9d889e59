#include "im_mail/modIMLog.h"

#include "base/safename.h"
#include "base/text.h"

#include <algorithm>

namespace velora {
namespace {
constexpr std::wstring_view kEndMark = L"\r\nEnd IM - ";
}

std::wstring imLogPath(std::wstring_view folder, std::wstring_view screenName, bool byDate,
                       const DateTime& when)
{
    const std::wstring name = safeFileName(screenName), date = fileDate(when);
    return std::wstring(folder) + L"\\" + (byDate ? date + L"\\" + name : name + L"\\" + date)
           + L".log";
}

std::wstring beginRecord(const DateTime& when)
{
    return std::wstring(kBeginImLabel) + shortDate(when) + L" " + mediumTime(when) + L"\r\n";
}

std::wstring endRecord(const DateTime& when)
{
    return std::wstring(kEndMark) + shortDate(when) + L"\t" + mediumTime(when) + L"\r\n";
}

std::wstring answeredEntry(std::wstring_view conversation, const DateTime& when)
{
    std::wstring text(conversation);
    for (int pass = 0; pass < 16; ++pass)
        text = replaceAll(text, L"  ", L" ");
    return L"Answered IM - " + shortDate(when) + L"\t" + mediumTime(when) + L"\r\n" + text
           + endRecord(when);
}

std::wstring clsIMLogWriter::update(std::wstring_view conversation)
{
    std::size_t from = 0;
    if (!tail_.empty()) {
        const bool grown = conversation.size() >= written_
                           && conversation.substr(written_ - tail_.size(), tail_.size()) == tail_;
        if (grown) {
            from = written_;
        } else if (const std::size_t at = conversation.rfind(tail_); at != conversation.npos) {
            from = at + tail_.size();
        } else {
            // The head was cut into what is remembered: the longest end of it that the text begins
            // with.
            std::size_t keep = std::min(tail_.size(), conversation.size());
            while (keep > 0 && !std::wstring_view(tail_).ends_with(conversation.substr(0, keep)))
                --keep;
            from = keep;
        }
    }
    const std::wstring fresh(conversation.substr(from));
    written_ = conversation.size();
    if (!conversation.empty())
        tail_ = conversation.substr(conversation.size() - std::min(kTail, conversation.size()));
    return fresh;
}

bool clsIMLogWriter::resume(std::wstring_view log, std::wstring_view conversation)
{
    const std::size_t begin = log.rfind(kBeginImLabel);
    if (begin == log.npos)
        return false;
    std::wstring_view block = log.substr(begin);
    if (const std::size_t end = block.rfind(kEndMark); end != block.npos)
        block = block.substr(0, end);
    // The log holds the conversation's characters as far as its code page has them.
    const std::wstring logged = from1252(to1252(conversation));
    if (logged.size() != conversation.size() || block.size() <= kBeginImLabel.size())
        return false;
    const std::wstring_view last = block.substr(block.size() - std::min(kTail, block.size()));
    const std::size_t at = logged.rfind(last);
    if (at == logged.npos)
        return false;
    written_ = at + last.size();
    tail_ = conversation.substr(at, last.size());
    return true;
}

std::wstring clsIMLogWriter::finish(std::wstring_view conversation, const DateTime& when)
{
    std::wstring rest = update(conversation) + endRecord(when);
    tail_.clear();
    written_ = 0;
    return rest;
}

} // namespace velora
