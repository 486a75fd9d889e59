#pragma once
// A small window in which a text is faded and put into AOL's mail or instant message that is in
// front.
#include "chat/modFadeRuns.h"
#include "settings/Options.h"
#include "ui/Controls.h"
#include "ui/Form.h"

namespace velora {

class frmFadeInsert final : public Form {
public:
    frmFadeInsert();
    /// Shows the window, made at need.
    static void showWindow();

protected:
    FormOptions options() const override;
    void onCreate() override;
    bool onClose(CloseReason reason) override;

private:
    std::wstring faded() const;
    void refresh();
    void insert();
    void copy();

    std::vector<FadeRun> runs_;
    OptionSubscription changes_;

    Label lblText, lblPreview;
    Edit txtText;
    Label lblFaded;
    Button cmdInsert, cmdCopy, cmdClose;
};

/// The box of AOL's front window that takes the user's text: a mail's body, or the reply box of an
/// instant message. 0 when the front window has none.
HWND frontTextBox();

} // namespace velora
