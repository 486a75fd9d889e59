#include "chat/clsChatLogger.h"

#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/modAOL.h"
#include "core/modMain.h"
#include "settings/Options.h"

namespace velora {
namespace {

constexpr char kModule[] = "clsChatLogger";

std::wstring nameForLog()
{
    const std::wstring signedOn = signedOnScreenName();
    if (!signedOn.empty())
        return signedOn;
    return aol().masterScreenName.empty() ? L"Unknown" : aol().masterScreenName;
}

} // namespace

clsChatLogger& clsChatLogger::instance()
{
    static clsChatLogger logger(AppPath() + L"\\chat logs", nameForLog);
    return logger;
}

clsChatLogger::clsChatLogger(std::wstring folder, std::function<std::wstring()> screenName)
    : folder_(std::move(folder)), screenName_(std::move(screenName))
{
}

clsChatLog& clsChatLogger::log()
{
    if (!log_)
        log_.emplace(folder_, screenName_());
    return *log_;
}

void clsChatLogger::write(const std::vector<LogWrite>& writes)
{
    for (const LogWrite& record : writes) {
        try {
            makeFolder(record.path.substr(0, record.path.find_last_of(L'\\')));
            appendToFile(record.path, to1252(record.text));
            failed_ = false;
        } catch (const std::exception&) {
            // One report tells as much as one for every line of the evening.
            if (!std::exchange(failed_, true))
                throw;
        }
    }
}

void clsChatLogger::enterRoom(std::wstring_view caption)
{
    trap(kModule, [&] {
        caption_ = SplitRoomName(caption);
        if (!opt::General::ChatLog.get() || caption_.empty())
            return;
        // Another name may have signed on since the last room.
        if (log_ && !log_->inRoom())
            log_.reset();
        write(log().enter(caption_, opt::General::LogChatsByDate.get(), now()));
    });
}

void clsChatLogger::leaveRoom()
{
    trap(kModule, [&] {
        caption_.clear();
        if (log_)
            write(log_->leave(now()));
    });
}

void clsChatLogger::AppendChatLog(const std::wstring& screenName, const std::wstring& message)
{
    trap(kModule, [&] {
        // Logging was switched on in the middle of a room.
        if (!log().inRoom() && !caption_.empty())
            enterRoom(caption_);
        write(log().line(screenName, message, opt::General::LogChatsByDate.get(), now()));
    });
}

bool clsChatLogger::note(std::wstring_view text)
{
    return trap(
        kModule,
        [&] {
            if (!opt::General::ChatLog.get())
                return false;
            if (!log().inRoom() && !caption_.empty())
                enterRoom(caption_);
            write(log().note(text, opt::General::LogChatsByDate.get(), now()));
            return true;
        },
        false);
}

} // namespace velora
