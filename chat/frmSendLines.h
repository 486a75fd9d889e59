#pragma once
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Timer.h"

namespace velora {

/// Sends lines to the room one after the other, "MultilineBurst" seconds apart, faded while the
/// fader is on, and shows how far it is. Cancel stops it; what has not gone out comes back into the
/// room's input box.
class frmSendLines final : public Form {
public:
    explicit frmSendLines(std::vector<std::wstring> lines);
    /// The first line goes out at once. Lines that are on their way already go first.
    static void sendLines(std::vector<std::wstring> lines);

protected:
    FormOptions options() const override;
    void onCreate() override;
    bool onClose(CloseReason reason) override;

private:
    void sendNext();
    void refresh();

    std::vector<std::wstring> lines_;
    std::size_t next_ = 0;
    Timer tmrBurst;
    Label lblText;
    ProgressBar barProgress;
    Button cmdCancel;
};

} // namespace velora
