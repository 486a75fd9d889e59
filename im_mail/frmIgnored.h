#pragma once
// The names whose instant messages are shut out: to see, to add, to take off.
#include "im_mail/modIgnoreFiles.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ToolTip.h"

#include <string>

namespace velora {

class frmIgnored final : public Form {
public:
    frmIgnored() : Form("frmIgnored") {}
    /// Opens the window, or brings the open one to the front.
    static void openList();
    /// Reads the lists anew.
    void refresh();

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onDestroy() override;

private:
    void add();
    void remove();
    std::wstring cell(int row, int column) const;

    std::vector<IgnoredName> names_;
    Label lblNames;
    ListView lstNames;
    Button cmdAdd, cmdRemove, cmdClose;
    ToolTip tips;
};

/// Asks for how many days a sender's IMs are to be shut out, and does it; nothing or 0 is for good.
/// A name that is shut out already is refused. Pumps messages.
void AddToIgnore(const std::wstring& screenName);

} // namespace velora
