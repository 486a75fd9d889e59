#pragma once
// Scan Hard Drive for Sounds: searches the disk, in the background of the window, and makes
// categories of what it finds.
#include "sounds/clsSoundScan.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Timer.h"

#include <memory>

namespace velora {

/// The roots of the hard drives ("C:\").
std::vector<std::wstring> hardDrives();

class frmScan final : public Form {
public:
    frmScan() : Form("frmScan") {}
    /// Opens the window, or brings the open one to the front.
    static void openScan();
    /// Offers one more directory to look in, and chooses it.
    void addRoot(const std::wstring& folder);

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onDestroy() override;

private:
    void chooseRoot();
    void cmdScan_Click();
    void tick();
    void finish(const std::wstring& status);
    void cmdCancel_Click();
    void makeCategories();
    void groupMenu();
    void addToGroup(const std::wstring& group);
    void newGroup();
    void selectionChanged();

    Label lblWhere, lblFound, lblStatus;
    ComboBox cboWhere;
    ListView lstFound;
    ProgressBar pbarProgress;
    Button cmdFolder, cmdScan, cmdCategory, cmdGroup, cmdCancel;
    Timer tmrScan;
    std::vector<std::wstring> roots_;
    std::unique_ptr<clsSoundScan> scan_;
};

} // namespace velora
