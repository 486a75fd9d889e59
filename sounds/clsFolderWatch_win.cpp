#include "base/trap.h"
#include "sounds/clsFolderWatch.h"

namespace velora {
namespace {

constexpr char kModule[] = "clsFolderWatch";
constexpr DWORD kChanges =
    FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE;
/// A copy of many files changes the folder for as long as it lasts.
constexpr UINT kSettleMs = 400;

} // namespace

void clsFolderWatch::watch(const std::wstring& folder, std::function<void()> changed)
{
    trap(kModule, [&] {
        changed_ = std::move(changed);
        if (folder == folder_ && handle_)
            return;
        stop();
        handle_.reset(FindFirstChangeNotificationW(folder.c_str(), FALSE, kChanges));
        if (!handle_)
            return;
        folder_ = folder;
        wait_ = addWaitHandle(
            handle_.get(), [this] { signalled(); }, true);
    });
}

void clsFolderWatch::stop()
{
    settle_.stop();
    wait_ = {};
    handle_.reset();
    folder_.clear();
}

void clsFolderWatch::signalled()
{
    // A folder that is gone, or a drive that was pulled, would signal for ever.
    if (!FindNextChangeNotification(handle_.get()))
        stop();
    settle_.startOnce(kSettleMs, [this] {
        // What is told may watch another folder, with another listener.
        if (const auto changed = changed_)
            changed();
    });
}

} // namespace velora
