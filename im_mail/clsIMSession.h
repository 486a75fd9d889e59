#pragma once
// One open IM window of AOL: its parts, its conversation as it was last seen, and its log, which
// follows the conversation so closely that a kill of Velora or AOL loses no words.
#include "hook/WindowHook.h"
#include "im_mail/IMEvents.h"
#include "im_mail/modIMLog.h"

#include <functional>
#include <optional>
#include <string>

namespace velora {

/// The controls of an IM window; 0 for what it does not have (yet).
struct IMParts {
    HWND conversation = nullptr;
    HWND reply = nullptr;
    HWND respond = nullptr; ///< the button that opens the reply box; 0 once it is pressed
    bool operator==(const IMParts&) const = default;
};
/// Absent for a window that is not built yet, and for one that has the caption of an IM but not its
/// parts (a mail with such a subject). Sends no message.
std::optional<IMParts> findIMParts(HWND window);

/// Where "im logs" and "data" are: the program's folder. A test may put its own.
std::wstring& imProgramFolder();

class clsIMSession {
public:
    clsIMSession(HWND window, std::wstring screenName);
    clsIMSession(const clsIMSession&) = delete;
    clsIMSession& operator=(const clsIMSession&) = delete;

    HWND window() const { return window_; }
    WindowId id() const { return reinterpret_cast<WindowId>(window_); }
    const std::wstring& screenName() const { return screenName_; }
    const IMParts& parts() const { return parts_; }
    /// The conversation as it was last seen.
    const std::wstring& text() const { return text_; }
    IMInfo info() const;
    /// The file that it is logged in.
    std::wstring logPath() const;

    /// Looks for the parts again; true when they changed.
    bool findParts();
    /// Puts the header line in front of the conversation where there is none, and reads it for the
    /// first time. False when AOL did not answer: to be tried again.
    bool begin();
    bool begun() const { return begun_; }
    /// Reads what is new and logs it; calls onFresh. Cheap when nothing is.
    void refresh();
    /// Reads and logs the rest, and the end record. Nothing is logged after that.
    void finish();

    /// Hooks the conversation, so that changes are seen at once; without it only refresh() sees
    /// them. The program has few hooks: the manager gives them to the IMs that are busy.
    void watch(bool on);
    bool watched() const { return sbcConversation.window() != nullptr; }

    /// Adds a note at the conversation's end. False when AOL does not take it.
    bool addNote(std::wstring_view note);

    /// The conversation has got this text. May be called while AOL waits: only note it.
    std::function<void(clsIMSession&, const std::wstring& fresh)> onFresh;

    DWORD closing = 0;      ///< tick count (never 0) since it was asked to close
    bool taken = false;     ///< it is in the tabbed window
    DWORD lastChange = 0;   ///< tick count
    RECT placedAt = {};     ///< where its holder was put last, and
    int placedVisible = -1; ///< whether it was shown; -1: not placed yet

private:
    std::optional<std::wstring> readNew(LRESULT length);
    void take(std::wstring whole);
    void log(std::wstring_view record);
    void flush();
    void resumeLog(const std::wstring& conversation);

    HWND window_;
    std::wstring screenName_;
    IMParts parts_;
    WindowHook sbcConversation;
    clsIMLogWriter writer_;
    std::wstring text_;
    LRESULT length_ = -1; ///< of the text in AOL when it was read
    DateTime started_;
    std::wstring path_;      ///< of the log, from its first record on
    std::wstring unwritten_; ///< log text that could not be written yet
    bool begun_ = false, reading_ = false, finished_ = false, logFailed_ = false;
    bool resumed_ = false, internet_ = false;
};

} // namespace velora
