#pragma once
// A toolbar over an AOL of the test's own: options in memory, sounds of the test in AOL's folder.
#include "base/trap.h"
#include "chat/frmToolbar.h"
#include "support/aolhost_win.h"

#include <memory>
#include <string>
#include <vector>

namespace velora::test {

class ToolbarBench {
public:
    explicit ToolbarBench(const AolHost::Options& options = {});
    /// Unloads every form and forgets AOL.
    ~ToolbarBench();
    ToolbarBench(const ToolbarBench&) = delete;
    ToolbarBench& operator=(const ToolbarBench&) = delete;

    AolHost host;
    /// What reached the wav detector, as "name|message", with "|own" for the user's own lines.
    std::vector<std::wstring> heard;
    int lines = 0; ///< lines of rooms that were raised
    /// The names of the files that began to play, in order.
    std::vector<std::wstring> played;
    int ended = 0;

    /// Puts a wav into AOL's sounds folder.
    void addSound(const std::wstring& name, int milliseconds);
    /// Loads the toolbar; fails the test when it does not come up.
    frmToolbar& load();
    /// Enters a room and waits until the toolbar reads it.
    void enterRoom(const std::wstring& name);
    bool hears(const std::wstring& line);

private:
    ErrorSink formerSink_ = nullptr;
};

} // namespace velora::test
