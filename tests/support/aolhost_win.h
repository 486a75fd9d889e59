#pragma once
// Drives the AOL stand-in for tests: makes an AOL folder of its own for an edition and version,
// starts waol.exe from it, talks to it through its pipe, and ends it when it goes out of scope.
// The commands are described in docs/stand-in.md.
#include "base/handles.h"
#include "base/win.h"
#include "support/process_win.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace velora::test {

/// Waits until the condition holds, serving this thread's window messages meanwhile; false when
/// that takes longer than `ms`. The time is a bound for failure, never a pause. Keys reach windows
/// as plain messages: those that a form of ours is to understand (Enter, Esc, Tab, mnemonics) need
/// drive::until.
bool waitFor(const std::function<bool()>& condition, unsigned ms = 20000);

/// A direct child by its class (case ignored), the `which`-th of them; null when there is none.
HWND childOfClass(HWND parent, std::wstring_view className, int which = 1);
/// The first direct child whose text is this.
HWND childOfText(HWND parent, std::wstring_view text);
/// All direct children, in order.
std::vector<HWND> childrenOf(HWND parent);
std::wstring classOf(HWND window);
/// WM_GETTEXT with a time limit; empty when the window does not answer.
std::wstring textOf(HWND window);

class AolHost {
public:
    struct Options {
        int edition = 0; ///< 0 United States, 1 UK, 2 Canada, 3 Australia, 4 Germany, 5 France
        int version = 5; ///< 3 to 7
        std::wstring names = L"Orv Tester,SecondName"; ///< of the installation, with commas
        std::wstring signOn = L"Orv Tester";           ///< signed on at start; empty: not
        int lateMs = 0;                                ///< controls built that long after
        bool unicodeEdits = false;
        std::wstring mdiCreation = L"create"; ///< create, ex or plain
        std::vector<std::wstring> more = {};  ///< further arguments, "--enter=keydown"
        bool run = true;                      ///< false: only the folder is made
    };

    AolHost() : AolHost(Options{}) {}
    /// Throws std::runtime_error when AOL does not come up.
    explicit AolHost(const Options& options);
    /// Ends AOL at once, whatever state it is in, and removes the folder.
    ~AolHost();
    AolHost(const AolHost&) = delete;
    AolHost& operator=(const AolHost&) = delete;

    /// Sends one command line and gives the answer without its "ok" ("ok x" gives "x"). Throws
    /// std::runtime_error on "error ..." and when AOL is gone.
    std::wstring command(std::wstring_view line);
    /// The values of `status`, by name: edition, version, online, name, room, built, frame, mdi,
    /// roomwindow, display, input, documents, sent, ims, mails.
    std::map<std::wstring, std::wstring> status();
    /// What the user sent to rooms, as typed, in order.
    std::vector<std::wstring> sent();
    /// The room display's text.
    std::wstring display();

    HWND frame() const { return frame_; }
    HWND mdi();
    /// Enters a room and waits until its window is built.
    HWND enterRoom(const std::wstring& name = L"Town Square");
    HWND roomWindow();
    HWND displayWindow();
    HWND inputWindow();
    /// The first document whose caption holds this text; null when there is none.
    HWND document(std::wstring_view captionPart);

    /// AOL's open dialog ("_AOL_Modal"); null when there is none.
    HWND dialog() const;

    HANDLE process() const { return process_.handle(); }
    DWORD processId() const { return process_.id(); }
    /// True when AOL's process has ended within that time.
    bool ended(unsigned ms = 20000);
    const std::wstring& folder() const { return folder_; }
    const std::wstring& transcriptPath() const { return transcript_; }

    /// Starts AOL again from the same folder after it has ended.
    void start();
    /// Ends the process as a crash would.
    void kill();

    static std::vector<std::wstring> listOf(const std::wstring& answer);
    static std::wstring unescaped(std::wstring_view text);

private:
    void connect();
    HWND handleOf(const wchar_t* name);
    Options options_;
    std::wstring folder_, pipeName_, transcript_;
    Process process_;
    FileHandle pipe_;
    HWND frame_ = nullptr;
    std::string pending_;
};

} // namespace velora::test
