#include "aolhost/Art.h"

namespace aolhost {

void drawPicture(HDC dc, const RECT& area, Picture)
{
    const HBRUSH brush = CreateSolidBrush(palette::kBlue);
    RECT box = area;
    InflateRect(&box, -2, -2);
    FillRect(dc, &box, brush);
    DeleteObject(brush);
}

void drawIcon(HDC dc, const RECT& area, const std::wstring& caption, Picture picture, IconLook look,
              const IconState& state)
{
    RECT box = area;
    if (look == IconLook::push)
        fillGradient(dc, box, RGB(250, 251, 255), palette::kSilver);
    if (look != IconLook::link && (look == IconLook::push || state.hot || state.down))
        DrawEdge(dc, &box, state.down ? BDR_SUNKENOUTER : BDR_RAISEDINNER, BF_RECT);
    RECT label = area;
    if (look == IconLook::toolbar || look == IconLook::action || look == IconLook::small) {
        RECT image = area;
        if (look != IconLook::small) {
            label.top = label.bottom - 15;
            image.bottom = label.top;
        }
        drawPicture(dc, image, picture);
    }
    if (look != IconLook::small)
        drawText(dc, label, caption, look == IconLook::push ? Face::bold : Face::small,
                 state.enabled ? palette::kText : palette::kLine,
                 DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

} // namespace aolhost
