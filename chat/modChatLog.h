#pragma once
// The chat log: which file a record belongs to, and how it reads. Pure; the caller appends each
// record with one write.
//
// A file holds lines "name:" TAB "text" as they were said, and the program's own lines, whose label
// "Log Entry" or "Log Note" takes the name's place. A member who took such a label for a name is
// written with a blank in front of it, so that only the program's own lines begin with a label.
#include "base/clock.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// The room that AOL's host line says the user is in; absent for every other line, and for a line
/// that somebody else sent in the host's words.
std::optional<std::wstring> roomFromHostLine(std::wstring_view screenName,
                                             std::wstring_view message);

/// The room's name in its window's caption.
std::wstring SplitRoomName(std::wstring_view caption);

/// "chat logs\<screen name>\<room>\<mm-dd-yy>.log" with `byDate`, else
/// "chat logs\<screen name>\<room>.log"; both names made safe. `folder` is the "chat logs" folder.
std::wstring chatLogPath(std::wstring_view folder, std::wstring_view screenName,
                         std::wstring_view room, bool byDate, const DateTime& when);

std::wstring entryRecord(std::wstring_view room, const DateTime& when);
std::wstring exitRecord(const DateTime& when);
std::wstring noteRecord(std::wstring_view note);
std::wstring lineRecord(std::wstring_view screenName, std::wstring_view message);

/// One text to append to one file.
struct LogWrite {
    std::wstring path;
    std::wstring text;
    bool operator==(const LogWrite&) const = default;
};

/// Follows the user from room to room. Each call answers what has to be written, in order.
class clsChatLog {
public:
    clsChatLog(std::wstring folder, std::wstring screenName)
        : folder_(std::move(folder)), screenName_(std::move(screenName))
    {
    }

    /// The user is in a room: the former one's exit first, when there was one.
    std::vector<LogWrite> enter(std::wstring_view room, bool byDate, const DateTime& when);
    /// The room's window is gone, or logging ends.
    std::vector<LogWrite> leave(const DateTime& when);
    /// A line of the room. The host's line about another room counts as entering it. A line that
    /// comes while no room is known is kept under the room name "Chat".
    std::vector<LogWrite> line(std::wstring_view screenName, std::wstring_view message, bool byDate,
                               const DateTime& when);
    std::vector<LogWrite> note(std::wstring_view note, bool byDate, const DateTime& when);

    bool inRoom() const { return room_.has_value(); }
    const std::wstring& room() const;

private:
    std::wstring path(const DateTime& when) const;
    /// Enters the unnamed room when none is known.
    void ensureRoom(std::vector<LogWrite>& writes, bool byDate, const DateTime& when);

    std::wstring folder_, screenName_;
    std::optional<std::wstring> room_;
    bool byDate_ = false;
};

} // namespace velora
