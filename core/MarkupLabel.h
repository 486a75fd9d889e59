#pragma once
// The drawing surface of marked-up text. It sizes itself to its text; its window text is the plain
// text, so that a screen reader says what the eye sees.
#include "core/modMarkup.h"
#include "ui/Controls.h"

#include <string_view>

namespace velora {

class MarkupLabel : public Label {
public:
    /// Lays the text out for the monitor of `form`: a long one gets a wider surface; what fits on
    /// no screen ends in "...". `icon` (may be null, stays the caller's) stands left of the text.
    void create(Form& form, std::wstring_view markup, int leftMargin, HICON icon = nullptr);

protected:
    Size naturalSize() const override;

private:
    void plan(std::wstring_view markup, const Rect& area);
    void cutTo(int lines);
    void draw(HDC dc, const Rect& surface) const;

    MarkupSurface surface_;
    MarkupPlan plan_;
    HICON icon_ = nullptr;
};

} // namespace velora
