#pragma once
// Tells when what lies in a folder has changed.
#include "base/handles.h"
#include "ui/MessageLoop.h"
#include "ui/Timer.h"

#include <functional>
#include <string>

namespace velora {

struct ChangeHandleTraits {
    using Type = HANDLE;
    static Type invalid() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(Type h) noexcept { FindCloseChangeNotification(h); }
};

class clsFolderWatch {
public:
    /// Calls `changed` from the message loop a moment after files of the folder (not of those below
    /// it) have come, gone or changed; once for many changes in a row. A folder that is not there
    /// is not watched.
    void watch(const std::wstring& folder, std::function<void()> changed);
    void stop();

private:
    void signalled();

    std::wstring folder_;
    std::function<void()> changed_;
    UniqueHandle<ChangeHandleTraits> handle_;
    WaitHandle wait_; // goes before the handle that it waits for
    Timer settle_;
};

} // namespace velora
