#pragma once
// Text with colours and fonts: logs, previews of fades, the display and reply of an IM.
#include "ui/Control.h"
#include "ui/Fonts.h"

#include <functional>

namespace velora {

class RichEdit : public Control {
public:
    struct Options {
        bool readOnly = false;
        bool multiline = true;
        bool wantsReturn = false;
    };
    struct Format {
        COLORREF colour = 0;
        bool bold = false, italic = false, underline = false;
    };
    /// Its text is its content: a label before it names it.
    void create(Form& form, const Options& options);

    /// At the end, and scrolled to when the end was in view before.
    void append(std::wstring_view text, const Format& format);
    void setBackground(COLORREF colour);
    void select(int from, int to);
    std::pair<int, int> selection() const;
    void replaceSelection(std::wstring_view text);
    int length() const;
    void scrollToEnd();
    std::function<void()> onChange;
    /// A key before the control sees it; true = swallowed.
    std::function<bool(UINT virtualKey)> onKey;

protected:
    Size naturalSize() const override { return {240, 80}; }
    void onCommand(int code) override;
    std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
};

} // namespace velora
