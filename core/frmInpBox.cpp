#include "core/frmInpBox.h"

#include "base/trap.h"
#include "core/modMsgStyle.h"

namespace velora {
namespace {
constexpr char kModule[] = "frmInpBox";
constexpr int kLeastWidth = 320;
} // namespace

frmInpBox::frmInpBox(std::wstring_view prompt, std::wstring_view caption, std::wstring_view initial,
                     const InputBoxOptions& options)
    : Form(kModule), prompt_(prompt), caption_(caption), initial_(initial), input_(options)
{
}

std::wstring frmInpBox::ask()
{
    return answer().value_or(std::wstring());
}

std::optional<std::wstring> frmInpBox::answer()
{
    if (runModal() != IDOK)
        return std::nullopt;
    return entered_;
}

FormOptions frmInpBox::options() const
{
    FormOptions options;
    options.title = caption_;
    return options;
}

void frmInpBox::onCreate()
{
    lblPrompt.create(*this, prompt_, 0);
    Edit::Options how;
    how.masked = input_.masked;
    how.maxLength = input_.maxLength;
    txtInput.create(*this, initial_, how);
    if (input_.masked) {
        chkShow.create(*this, L"&Show what I type");
        chkShow.onChange = [this] { txtInput.setMasked(!chkShow.checked()); };
    } else {
        chkShow.show(false);
    }
    cmdOK.create(*this, L"OK", [this] { accept(); });
    cmdCancel.create(*this, L"Cancel", [this] { endModal(IDCANCEL); });
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    setFirstFocus(txtInput);
    setLayout(
        rows({rows({grow(lblPrompt), txtInput, chkShow}), buttonRowCentred({cmdOK, cmdCancel})},
             kMargin)
            .margins()
            .atLeast({kLeastWidth, 0}));
}

void frmInpBox::accept()
{
    entered_ = txtInput.text();
    if (input_.masked) // nothing of a password stays in the control's memory
        txtInput.setText(std::wstring(entered_.size(), L' '));
    endModal(IDOK);
}

std::wstring InputBoxEx(std::wstring_view prompt, std::wstring_view title,
                        std::wstring_view initial, const InputBoxOptions& options)
{
    return trap(
        kModule, [&] { return frmInpBox(prompt, captionOf(title), initial, options).ask(); },
        std::wstring());
}

} // namespace velora
