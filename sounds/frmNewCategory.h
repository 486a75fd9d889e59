#pragma once
// Asks what a new category is to be.
#include "ui/Controls.h"
#include "ui/Form.h"

namespace velora {

class frmNewCategory final : public Form {
public:
    enum class Choice { none, folder, group };
    frmNewCategory() : Form("frmNewCategory") {}
    /// Pumps messages.
    Choice ask();

private:
    FormOptions options() const override;
    void onCreate() override;

    Choice choice_ = Choice::none;
    Label lblWhat;
    RadioButton optFolder, optGroup;
    Button cmdOK, cmdCancel;
};

} // namespace velora
