#pragma once
// The body of a mail in AOL's own window, and finding that window.
#include "base/win.h"
#include "im_mail/modMailCommands.h"

#include <vector>

namespace velora {

/// Works through the code inside AOL, which reads the selection with all its characters and leaves
/// the clipboard alone. Where that is not possible (a window of another thread of AOL) the box is
/// asked from outside: it copies its selection by AOL's own command, and the user's clipboard is
/// put back.
class AolMailBody final : public MailBody {
public:
    explicit AolMailBody(HWND body) : body_(body) {}
    std::optional<std::wstring> text() override;
    std::optional<TextRange> selection() override;
    std::optional<std::wstring> selectedText() override;
    bool select(TextRange range) override;
    bool selectAll() override;
    bool replaceSelection(std::wstring_view text) override;
    bool undo() override;

private:
    HWND body_;
};

/// The selection of a text box of AOL, copied by AOL's own command; empty when nothing is selected,
/// absent when AOL or the clipboard cannot be used. The clipboard is as before then, unless
/// somebody else has copied something meanwhile.
std::optional<std::wstring> copiedSelection(HWND box);

/// The window in which a mail, a reply or a forward is written: the one in front, else the next
/// behind it; 0 when there is none.
HWND composeWindow();
/// AOL's open documents from the front to the back.
std::vector<HWND> documentsByOrder();
/// The text box of a document: a mail's body, or what a read mail shows.
HWND documentText(HWND document);

} // namespace velora
