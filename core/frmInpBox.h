#pragma once
// The input box. InputBoxEx shows it.
#include "core/MarkupLabel.h"
#include "core/MsgBoxEx.h"
#include "ui/Controls.h"
#include "ui/Form.h"

#include <optional>
#include <string>

namespace velora {

class frmInpBox final : public Form {
public:
    frmInpBox(std::wstring_view prompt, std::wstring_view caption, std::wstring_view initial,
              const InputBoxOptions& options);

    /// Shows the box and pumps until it is answered; empty when cancelled.
    std::wstring ask();
    /// The same, but tells Cancel (absent) from OK with nothing entered.
    std::optional<std::wstring> answer();

private:
    FormOptions options() const override;
    void onCreate() override;
    void accept();

    std::wstring prompt_, caption_, initial_, entered_;
    InputBoxOptions input_;

    MarkupLabel lblPrompt;
    Edit txtInput;
    CheckBox chkShow;
    Button cmdOK, cmdCancel;
};

} // namespace velora
