#pragma once
// The answer window: which IMs the auto-answer has answered. Comes up by itself with option
// ShowAnswerWin, and never takes the focus.
#include "ui/Controls.h"
#include "ui/Form.h"

#include <string>

namespace velora {

class frmAnswered final : public Form {
public:
    frmAnswered() : Form("frmAnswered") {}
    /// Adds a line for an answer of now; opens the window at need.
    static void add(const std::wstring& screenName);

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onDestroy() override;

private:
    Label lblNames;
    ListBox lstNames;
    Button cmdClose;
};

} // namespace velora
