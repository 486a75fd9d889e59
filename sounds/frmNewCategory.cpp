#include "sounds/frmNewCategory.h"

namespace velora {

frmNewCategory::Choice frmNewCategory::ask()
{
    runModal();
    return choice_;
}

FormOptions frmNewCategory::options() const
{
    FormOptions options;
    options.title = L"Velora - New Category";
    return options;
}

void frmNewCategory::onCreate()
{
    lblWhat.create(*this, L"What is the new Category?");
    optFolder.create(
        *this, L"I want to select an &existing directory and list the sound files in it.", true);
    optGroup.create(*this, L"I want to create a &new custom group that I can add sound files to.");
    optFolder.setChecked(true);
    cmdOK.create(*this, L"OK", [this] {
        choice_ = optGroup.checked() ? Choice::group : Choice::folder;
        endModal(IDOK);
    });
    cmdCancel.create(*this, L"Cancel", [this] { endModal(IDCANCEL); });
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    setFirstFocus(optFolder);
    setLayout(rows({lblWhat, rows({optFolder, optGroup}, kNear), buttonRow({cmdOK, cmdCancel})})
                  .margins());
}

} // namespace velora
