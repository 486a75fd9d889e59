#pragma once
// Writes the chat log: each record with one write to the file that it belongs to, so that a kill
// loses nothing that was said. A folder that cannot be written is reported once and chat goes on.
#include "chat/modChatLog.h"

#include <functional>
#include <optional>
#include <string>

namespace velora {

class clsChatLogger {
public:
    /// The program's logger, below AppPath().
    static clsChatLogger& instance();

    /// `folder`: the "chat logs" folder; `screenName` tells the signed-on name when a log begins.
    clsChatLogger(std::wstring folder, std::function<std::wstring()> screenName);

    /// The user is in a room (its window's caption), or in none. Does nothing while "ChatLog" is
    /// off, but for the exit record of a room whose entry was written.
    void enterRoom(std::wstring_view caption);
    void leaveRoom();
    /// One line of the room.
    void AppendChatLog(const std::wstring& screenName, const std::wstring& message);
    /// A note of the user's; false, and nothing written, while "ChatLog" is off.
    bool note(std::wstring_view text);

private:
    clsChatLog& log();
    void write(const std::vector<LogWrite>& writes);

    std::wstring folder_;
    std::function<std::wstring()> screenName_;
    std::optional<clsChatLog> log_;
    std::wstring caption_; ///< of the room that the user is in, for a log that is switched on later
    bool failed_ = false;
};

} // namespace velora
