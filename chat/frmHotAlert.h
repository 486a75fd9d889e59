#pragma once
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Timer.h"

namespace velora {

/// Says that a hot word was said, in the lower right corner of the screen. Takes no focus, goes by
/// itself; a click brings AOL to the front.
class frmHotAlert final : public Form {
public:
    frmHotAlert(std::wstring word, std::wstring screenName, std::wstring message);
    /// Shows an alert in place of one that is still there; at most one every ten seconds.
    static void alert(const std::wstring& word, const std::wstring& screenName,
                      const std::wstring& message);

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onPaint(HDC dc, const Rect& client) override;

private:
    void toAol();

    std::wstring word_, screenName_, message_;
    Timer tmrClose;
    Label lblWord, lblName, lblMessage;
    Button cmdClose;
};

} // namespace velora
