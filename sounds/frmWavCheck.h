#pragma once
// WavCheck: is a sound that was said in the user's library?
#include "sounds/clsSoundScan.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Timer.h"

#include <memory>

namespace velora {

class frmWavCheck final : public Form {
public:
    frmWavCheck() : Form("frmWavCheck") {}
    /// Looks for a sound by its name and shows the answer. `asked`: the user has asked; a message
    /// then says what is not found, unless the option NoPrompt is on (pumps). Otherwise a member
    /// said it: the open window shows it, and with the option Notify one is opened for an unknown
    /// sound, quietly; nothing pumps.
    static void check(const std::wstring& name, bool asked);

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onDestroy() override;

private:
    void showAnswer(const std::wstring& name);
    void showMarkup(const std::wstring& markup);
    void cmdSearch_Click();
    void tick();
    void stopSearch();
    void cmdCancel_Click();
    void toFavourites();

    Label lblName, lblAnswer;
    Edit txtName;
    RichEdit rtfAnswer;
    ProgressBar pbarProgress;
    Button cmdCheck, cmdPreview, cmdSearch, cmdFav, cmdCancel;
    Timer tmrSearch;
    std::unique_ptr<clsSoundScan> scan_;
    std::wstring name_, path_;
    bool inLibrary_ = false;
};

} // namespace velora
