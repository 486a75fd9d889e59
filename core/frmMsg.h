#pragma once
// The message box. MsgBoxEx shows it.
#include "core/MarkupLabel.h"
#include "core/modMsgStyle.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/Timer.h"

#include <array>
#include <optional>
#include <string>

namespace velora {

class frmMsg final : public Form {
public:
    struct Content {
        std::wstring prompt; // markup
        std::wstring caption;
        MsgStyle style;
        /// Seconds until the default button is taken; absent = never.
        std::optional<int> autoClose;
        bool operator==(const Content& other) const;
    };
    explicit frmMsg(Content content);

    /// Shows the box and pumps until it is answered.
    int ask();
    const Content& content() const { return content_; }

private:
    FormOptions options() const override;
    void onCreate() override;
    bool onClose(CloseReason reason) override;
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    void createButtons();
    void answer(int button);
    void copy() const;
    void startCountdown();
    void countDown();

    Content content_;
    std::optional<int> answer_;
    DWORD passed_ = 0, lastTick_ = 0; // ms

    MarkupLabel lblText;
    std::array<Button, 3> cmdAnswer;
    ProgressBar prgClose;
    Timer tmrClose;
};

} // namespace velora
