#include "chat/modChatLog.h"

#include "base/safename.h"
#include "base/text.h"

#include <algorithm>

namespace velora {
namespace {

constexpr std::wstring_view kHost = L"OnlineHost";
constexpr std::wstring_view kInRoom = L"*** You are in \"";
constexpr std::wstring_view kInRoomEnd = L"\". ***";
constexpr wchar_t kUnnamedRoom[] = L"Chat";
constexpr wchar_t kEntryLabel[] = L"Log Entry";
constexpr wchar_t kNoteLabel[] = L"Log Note";

/// A record is one line whatever was said.
std::wstring oneLine(std::wstring_view text)
{
    std::wstring line(text);
    std::replace_if(
        line.begin(), line.end(), [](wchar_t c) { return c == L'\r' || c == L'\n' || !c; }, L' ');
    return line;
}

std::wstring stamp(const DateTime& when)
{
    return L" on " + shortDate(when) + L" at " + mediumTime(when) + L"\r\n";
}

} // namespace

std::optional<std::wstring> roomFromHostLine(std::wstring_view screenName,
                                             std::wstring_view message)
{
    if (screenName != kHost || !message.starts_with(kInRoom))
        return std::nullopt;
    message.remove_prefix(kInRoom.size());
    message = trimView(message);
    if (!message.ends_with(kInRoomEnd) || message.size() == kInRoomEnd.size())
        return std::nullopt;
    return std::wstring(message.substr(0, message.size() - kInRoomEnd.size()));
}

std::wstring SplitRoomName(std::wstring_view caption)
{
    // AOL marks some captions with what it knows of the room: `Room (23 members)`.
    const std::size_t bracket = caption.rfind(L" (");
    if (bracket != caption.npos && bracket > 0 && caption.ends_with(L')'))
        caption = caption.substr(0, bracket);
    return trim(caption);
}

std::wstring chatLogPath(std::wstring_view folder, std::wstring_view screenName,
                         std::wstring_view room, bool byDate, const DateTime& when)
{
    std::wstring path =
        std::wstring(folder) + L"\\" + safeFileName(screenName) + L"\\" + safeFileName(room);
    if (byDate)
        path += L"\\" + fileDate(when);
    return path + L".log";
}

std::wstring entryRecord(std::wstring_view room, const DateTime& when)
{
    return std::wstring(kEntryLabel) + L":\tEntered \"" + oneLine(room) + L"\"" + stamp(when);
}

std::wstring exitRecord(const DateTime& when)
{
    return std::wstring(kEntryLabel) + L":\tExited room" + stamp(when);
}

std::wstring noteRecord(std::wstring_view note)
{
    return std::wstring(kNoteLabel) + L":\t" + oneLine(note) + L"\r\n";
}

std::wstring lineRecord(std::wstring_view screenName, std::wstring_view message)
{
    const std::wstring name = oneLine(screenName);
    const bool label =
        equalNoCase(trimView(name), kEntryLabel) || equalNoCase(trimView(name), kNoteLabel);
    return (label ? L" " : L"") + name + L":\t" + oneLine(message) + L"\r\n";
}

const std::wstring& clsChatLog::room() const
{
    static const std::wstring none;
    return room_ ? *room_ : none;
}

std::wstring clsChatLog::path(const DateTime& when) const
{
    return chatLogPath(folder_, screenName_, *room_, byDate_, when);
}

std::vector<LogWrite> clsChatLog::enter(std::wstring_view room, bool byDate, const DateTime& when)
{
    std::vector<LogWrite> writes = leave(when);
    room_ = std::wstring(room);
    byDate_ = byDate;
    writes.push_back({path(when), entryRecord(room, when)});
    return writes;
}

std::vector<LogWrite> clsChatLog::leave(const DateTime& when)
{
    if (!room_)
        return {};
    std::vector<LogWrite> writes = {{path(when), exitRecord(when)}};
    room_.reset();
    return writes;
}

void clsChatLog::ensureRoom(std::vector<LogWrite>& writes, bool byDate, const DateTime& when)
{
    if (!room_)
        writes = enter(kUnnamedRoom, byDate, when);
    byDate_ = byDate;
}

std::vector<LogWrite> clsChatLog::line(std::wstring_view screenName, std::wstring_view message,
                                       bool byDate, const DateTime& when)
{
    std::vector<LogWrite> writes;
    // The host greets the user in a room that was entered already when its window came up.
    const auto room = roomFromHostLine(screenName, message);
    if (room && !(room_ && equalNoCase(*room, *room_)))
        writes = enter(*room, byDate, when);
    else
        ensureRoom(writes, byDate, when);
    writes.push_back({path(when), lineRecord(screenName, message)});
    return writes;
}

std::vector<LogWrite> clsChatLog::note(std::wstring_view note, bool byDate, const DateTime& when)
{
    std::vector<LogWrite> writes;
    ensureRoom(writes, byDate, when);
    writes.push_back({path(when), noteRecord(note)});
    return writes;
}

} // namespace velora
