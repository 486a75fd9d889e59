#pragma once
// The list of keywords: the program's own and the user's. Choosing one puts it into the room's
// input box as if it were typed there.
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Timer.h"

#include <string>
#include <vector>

namespace velora {

class frmCommandPopup final : public Form {
public:
    /// `typing`: the user has begun a keyword in the input box and goes on there; the list shows
    /// what fits so far, and goes when nothing is left of it.
    explicit frmCommandPopup(bool typing);

    /// Shows the list, made at need; does nothing without a room (the user is told unless typing).
    static void showList(bool typing);
    static void hideList();

protected:
    FormOptions options() const override;
    void onCreate() override;
    bool onClose(CloseReason reason) override;

private:
    void fill(std::wstring_view begun);
    void choose();
    void follow();

    bool typing_;
    std::wstring begun_;
    std::vector<std::wstring> shown_;
    Label lblList;
    ListBox lstCommands;
    Button cmdChoose, cmdClose;
    Timer tmrFollow;
};

/// The keywords in the order of the list: the program's own, then the user's, that begin like
/// `begun` (case and blanks do not count).
std::vector<std::wstring> keywordList(std::wstring_view begun);

} // namespace velora
