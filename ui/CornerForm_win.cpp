#include "ui/CornerForm.h"

#include "base/handles.h"
#include "ui/Placement.h"
#include "ui/WinGeometry.h"

namespace velora {

FormOptions CornerForm::options() const
{
    FormOptions options;
    options.title = look_.title;
    options.kind = FormKind::panel;
    options.topmost = true;
    options.activates = false;
    options.client = look_.size;
    const std::vector<Rect> areas = monitorAreas();
    if (!areas.empty())
        options.place = corner(areas[0], look_.size);
    return options;
}

Rect CornerForm::corner(const Rect& screen, Size size) const
{
    return rectOf({screen.right - size.width - kMargin, screen.bottom - size.height - kMargin},
                  size);
}

void CornerForm::createClose(const std::function<void()>& pressed)
{
    constexpr Size kCross{22, 20};
    cmdClose.create(*this, L"\u00D7", pressed);
    cmdClose.setPreferredSize(kCross);
}

void CornerForm::setPaper(COLORREF paper)
{
    paper_ = paper;
    InvalidateRect(hwnd(), nullptr, TRUE);
}

void CornerForm::onPaint(HDC dc, const Rect& client)
{
    const RECT all = toRECT(client);
    const Brush paper(CreateSolidBrush(paper_)), edge(CreateSolidBrush(look_.edge));
    FillRect(dc, &all, paper.get());
    const RECT stripe{all.left, all.top, all.left + look_.edgeWidth, all.bottom};
    FillRect(dc, &stripe, edge.get());
    FrameRect(dc, &all, edge.get());
}

} // namespace velora
