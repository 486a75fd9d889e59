#pragma once
// IM logs: their paths and records, and what of a conversation is not on the disk yet. Pure.
//
// A log file holds one block after the other: a line "Begin IM - date time", the conversation as
// AOL shows it, and a line "End IM - date TAB time". The conversation may hold any text, also such
// a line; a block's true end is the one that is followed by the next block's beginning or the end
// of the file.
#include "base/clock.h"

#include <string>
#include <string_view>

namespace velora {

/// "im logs\<mm-dd-yy>\<name>.log" with `byDate`, else "im logs\<name>\<mm-dd-yy>.log"; `folder` is
/// the "im logs" folder, the name is made safe.
std::wstring imLogPath(std::wstring_view folder, std::wstring_view screenName, bool byDate,
                       const DateTime& when);

inline constexpr std::wstring_view kBeginImLabel = L"Begin IM - ";

/// The line that goes in front of a conversation which does not hold one yet.
std::wstring beginRecord(const DateTime& when);
/// What ends the block of a conversation: a line break, "End IM - ", date, TAB, time, line break.
std::wstring endRecord(const DateTime& when);
/// The whole entry of an answered IM; runs of two blanks in the conversation are halved 16 times.
std::wstring answeredEntry(std::wstring_view conversation, const DateTime& when);

/// Follows one conversation so that each of its words is written once, soon after it was said: what
/// a kill can lose is only what came since the last call.
class clsIMLogWriter {
public:
    /// What has to be appended now that the conversation reads so. AOL trims long conversations at
    /// their head; the part that was written before is then found by its last words.
    std::wstring update(std::wstring_view conversation);
    /// The rest and the end record. Later calls begin a new block.
    std::wstring finish(std::wstring_view conversation, const DateTime& when);
    bool begun() const { return !tail_.empty(); }
    /// A log that holds the beginning of this conversation, from a former run of the program: what
    /// is there is not written again. An end record after it becomes a part of the block. False,
    /// and nothing changed, when the log's last block is another conversation.
    bool resume(std::wstring_view log, std::wstring_view conversation);

private:
    static constexpr std::size_t kTail = 2000;
    std::wstring tail_;       ///< the last characters that were written
    std::size_t written_ = 0; ///< how long the conversation was then
};

} // namespace velora
