#pragma once
// The start-up window: a status line and a progress bar.
#include "ui/Controls.h"
#include "ui/Form.h"

#include <string_view>

namespace velora {

class frmMain final : public Form {
public:
    frmMain() : Form("frmMain") {}

    /// The status line, and the progress in percent. Pumps what is waiting, so that it is seen.
    void MoveStatusBar(std::wstring_view text, int percent);
    /// The user closed the window: the start is to end.
    bool cancelled() const { return cancelled_; }

protected:
    FormOptions options() const override;
    void onCreate() override;
    bool onClose(CloseReason reason) override;

private:
    Label lblTitle, lblStatus;
    ProgressBar pgbLoading;
    bool cancelled_ = false;
};

} // namespace velora
