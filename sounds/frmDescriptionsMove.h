#pragma once
// Small questions of the descriptions' window: which category, which folder.
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ToolTip.h"

#include <optional>

namespace velora {

/// Which category descriptions are to be moved to.
class frmDescriptionsMove final : public Form {
public:
    frmDescriptionsMove(std::vector<std::wstring> categories, std::wstring present);
    /// Absent when cancelled. Pumps messages.
    std::optional<std::wstring> ask();

protected:
    FormOptions options() const override;
    void onCreate() override;

private:
    void cmdOK_Click();

    std::vector<std::wstring> categories_;
    std::wstring present_;
    std::optional<std::wstring> chosen_;
    Label lblCategories;
    ListBox lstCategories;
    Button cmdOK, cmdCancel;
};

/// Which folder a category is to be filled from.
class frmDescriptionsFill final : public Form {
public:
    frmDescriptionsFill(std::wstring category, std::wstring folder);
    /// A folder that exists; absent when cancelled. Pumps messages.
    std::optional<std::wstring> ask();

protected:
    FormOptions options() const override;
    void onCreate() override;

private:
    void cmdBrowse_Click();
    void cmdOK_Click();

    std::wstring category_, folder_;
    std::optional<std::wstring> chosen_;
    Label lblFolder;
    Edit txtFolder;
    Button cmdBrowse, cmdOK, cmdCancel;
    ToolTip tips_;
};

} // namespace velora
