#pragma once
// The editor of an answer message: its HTML, or how it will look; links, the sender's name, and its
// length against AOL's limit.
#include "im_mail/modAnswerLook.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ToolTip.h"

#include <optional>
#include <string>

namespace velora {

class frmAnswerEdit final : public Form {
public:
    /// `heading` names the message in the window.
    frmAnswerEdit(std::wstring heading, std::wstring text);
    /// The text, when the user chose OK. Pumps messages.
    std::optional<std::wstring> ask();

protected:
    FormOptions options() const override;
    void onCreate() override;

private:
    void showFormat();
    void showCount();
    void editHyperlink();
    void insertName();
    void tellCount();
    void accept();

    std::wstring heading_, text_;
    Label lblHeading, lblCount;
    Edit txtMessage;
    RichEdit rchLook;
    CheckBox chkHtml;
    Button cmdLink, cmdName, cmdCount, cmdOK, cmdCancel;
    ToolTip tips;
};

} // namespace velora
