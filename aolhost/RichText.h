#pragma once
// "RICHCNTL" and "RICHCNTLREADONLY": AOL's rich text boxes, made from the system's rich edit.
#include "aolhost/Markup.h"
#include "aolhost/Options.h"
#include "aolhost/Window.h"

#include <functional>
#include <utility>

namespace aolhost {

/// AOL's notice to a chat display that its text has changed.
constexpr UINT kTextChanged = 5143;
/// The commands of AOL's Edit menu, which its text boxes also take by themselves.
enum EditCommand { kCut = 20001, kCopy = 20002, kPaste = 20003, kSelectAll = 20005 };

class RichText final : public Window {
public:
    enum class Use { input, display };
    /// Registers both classes, from the ANSI or the wide rich edit. False while boxes of the other
    /// kind are open.
    static bool registerClasses(bool wide);

    RichText(HWND parent, Use use, bool readOnlyClass = false);

    /// Pressed Enter, when set; the box then never takes a line end from the key.
    std::function<void()> onEnter;
    /// Pressed Ctrl+Enter, when set.
    std::function<void()> onSendKey;
    std::function<void()> onFocus;
    EnterOn enterOn = EnterOn::charMessage;

    /// Adds at the end and scrolls there; a selection of the user's stays.
    void append(const std::vector<Run>& runs);
    void setRuns(const std::vector<Run>& runs);
    /// Cuts whole paragraphs off the start until at most `length` characters stay.
    void trimTo(long length);
    void clear();
    long length() const;
    void notifyChanged(Notice notice);
    /// How many notices have come through to the box itself.
    long notices() const { return notices_; }
    void setBackground(COLORREF color);

protected:
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool handleEnter(UINT message);
    void command(int id);
    void insert(const Run& run);
    bool enterKeyDown_ = false;
    long notices_ = 0;
};

} // namespace aolhost
