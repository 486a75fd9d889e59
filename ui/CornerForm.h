#pragma once
// A note in a corner of the screen: it lies above everything, takes no focus, and goes by itself or
// with its close button. The form on top of it says what stands there.
#include "ui/Controls.h"
#include "ui/Form.h"

namespace velora {

class CornerForm : public Form {
public:
    struct Look {
        const wchar_t* title; ///< for the system and screen readers; it is not shown
        Size size;
        COLORREF paper, edge;
        int edgeWidth; ///< of the coloured stripe at its left
    };
    CornerForm(const char* name, const Look& look) : Form(name), look_(look), paper_(look.paper) {}

protected:
    FormOptions options() const override;
    void onPaint(HDC dc, const Rect& client) override;
    /// Where it comes up on a screen (less its task bar); the lower right corner.
    virtual Rect corner(const Rect& screen, Size size) const;
    void createClose(const std::function<void()>& pressed);

    const Look& look() const { return look_; }
    COLORREF paper() const { return paper_; }
    void setPaper(COLORREF paper);

    Button cmdClose;

private:
    Look look_;
    COLORREF paper_;
};

} // namespace velora
