#pragma once
#include "ui/CornerForm.h"
#include "ui/Timer.h"

namespace velora {

/// Says that a hot word was said, in the lower right corner of the screen. Takes no focus, goes by
/// itself; a click brings AOL to the front.
class frmHotAlert final : public CornerForm {
public:
    frmHotAlert(std::wstring word, std::wstring screenName, std::wstring message);
    /// Shows an alert in place of one that is still there; at most one every ten seconds.
    static void alert(const std::wstring& word, const std::wstring& screenName,
                      const std::wstring& message);

protected:
    void onCreate() override;

private:
    void toAol();

    std::wstring word_, screenName_, message_;
    Timer tmrClose;
    Label lblWord, lblName, lblMessage;
};

} // namespace velora
