#pragma once
// Several lines for the chat room, written at leisure and sent one after the other.
#include "settings/Options.h"
#include "ui/Controls.h"
#include "ui/Form.h"

#include <string>
#include <vector>

namespace velora {

class frmMultiLine final : public Form {
public:
    frmMultiLine();
    /// Shows the window, made at need.
    static void showWindow();

protected:
    FormOptions options() const override;
    void onCreate() override;
    bool onClose(CloseReason reason) override;

private:
    std::vector<std::wstring> lines() const;
    void refresh();
    void sendAll();

    OptionSubscription changes_;
    Label lblText, lblCount;
    Edit txtText;
    CheckBox chkFade;
    Button cmdSend, cmdClose;
};

} // namespace velora
