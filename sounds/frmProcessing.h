#pragma once
// Shows how far a long operation is, with Cancel.
#include "sounds/clsDatabase.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Timer.h"

namespace velora {

class frmProcessing final : public Form {
public:
    using Work = std::function<void(const DatabaseProgress&)>;
    /// Runs the work behind the window; false when the user has cancelled it. Pumps messages each
    /// time that the work tells how far it is.
    static bool run(Work work);

protected:
    FormOptions options() const override;
    void onCreate() override;

private:
    explicit frmProcessing(Work work) : Form("frmProcessing"), work_(std::move(work)) {}
    void start();
    bool step(std::size_t done, std::size_t all);

    Work work_;
    bool cancelled_ = false;
    unsigned long shownAt_ = 0;
    Label lblWorking;
    ProgressBar pbarProgress;
    Button cmdCancel;
    Timer tmrStart;
};

} // namespace velora
