#pragma once
// The IM manager over an AOL of the test's own, with logs in a folder of the test's own.
#include "im_mail/IMEvents.h"
#include "im_mail/clsIMSession.h"
#include "im_mail/frmTabIM.h"
#include "im_mail/modIM_Manager.h"
#include "support/tempdir.h"
#include "support/toolbar_win.h"

#include <string>
#include <vector>

namespace velora::test {

class IMBench {
public:
    explicit IMBench(const AolHost::Options& options = {});
    /// Ends the manager as the program does.
    ~IMBench();
    IMBench(const IMBench&) = delete;
    IMBench& operator=(const IMBench&) = delete;

private:
    TempDir temp_;

public:
    ToolbarBench bench;
    AolHost& host = bench.host;
    std::wstring folder; ///< of the program
    /// "new NAME", "text NAME: what", "closed NAME", "current NAME" in the order of the events.
    std::vector<std::wstring> events;

    /// A message comes; answers its window when the manager holds it (or only knows it, with tabs
    /// off), null when that does not happen.
    HWND arrive(const std::wstring& name, const std::wstring& text);
    /// The IM of that name; null when the manager does not know it.
    static clsIMSession* session(const std::wstring& name);
    static bool taken(const std::wstring& name);
    /// The text of the one log file of a name and today; empty when there is none.
    std::wstring log(const std::wstring& name) const;
    /// Waits until the log holds the text.
    bool logged(const std::wstring& name, const std::wstring& text) const;
    bool happened(const std::wstring& event) const;
    /// Selects the IM, opens its reply part and puts text there.
    void type(const std::wstring& name, const std::wstring& text);
    /// True when AOL sent that, "NAME: TEXT".
    bool sent(const std::wstring& what);
    /// How often the text holds the part.
    static std::size_t count(const std::wstring& text, std::wstring_view part);

private:
    std::wstring formerFolder_;
    IMSubscription subscription_;
};

} // namespace velora::test
