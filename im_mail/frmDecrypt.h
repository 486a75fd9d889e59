#pragma once
// The text of a decrypted mail, to be read, searched, copied, saved and printed.
#include "ui/Controls.h"
#include "ui/Form.h"

#include <string>
#include <string_view>

namespace velora {

class frmDecrypt final : public Form {
public:
    explicit frmDecrypt(std::wstring_view text);
    ~frmDecrypt() override;

    /// Shows a text in a window of its own. Nothing of it is kept once the window has closed.
    static frmDecrypt& DisplayMessage(std::wstring_view text);

protected:
    FormOptions options() const override;
    void onCreate() override;
    bool onClose(CloseReason reason) override;
    void onDestroy() override;

private:
    void copy();
    void save();
    void print();
    void findNext();
    std::wstring shownText() const;

    std::wstring text_; // until the box has it
    Label lblText, lblFind;
    RichEdit rtfText;
    Edit txtFind;
    Button cmdFind, cmdCopy, cmdSave, cmdPrint, cmdExit;
};

} // namespace velora
