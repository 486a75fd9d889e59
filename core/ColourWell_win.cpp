#include "core/ColourWell.h"

#include "base/handles.h"
#include "ui/WinGeometry.h"

#include <commdlg.h>

namespace velora {

COLORREF systemColour(long value)
{
    const auto bits = static_cast<unsigned long>(value);
    return bits & 0x80000000u ? GetSysColor(static_cast<int>(bits & 0xFFu)) : bits & 0xFFFFFFu;
}

std::optional<COLORREF> pickColour(HWND owner, COLORREF present)
{
    constexpr COLORREF kWhite = RGB(255, 255, 255);
    static COLORREF own[16] = {kWhite, kWhite, kWhite, kWhite, kWhite, kWhite, kWhite, kWhite,
                               kWhite, kWhite, kWhite, kWhite, kWhite, kWhite, kWhite, kWhite};
    CHOOSECOLORW choose{};
    choose.lStructSize = sizeof choose;
    choose.hwndOwner = owner;
    choose.rgbResult = present;
    choose.lpCustColors = own;
    choose.Flags = CC_FULLOPEN | CC_RGBINIT;
    return ChooseColorW(&choose) ? std::optional(choose.rgbResult) : std::nullopt;
}

void drawColourWell(HDC dc, const Rect& where, std::optional<COLORREF> colour)
{
    RECT well = toRECT(where);
    const Brush brush(CreateSolidBrush(colour.value_or(GetSysColor(COLOR_BTNFACE))));
    FillRect(dc, &well, brush.get());
    DrawEdge(dc, &well, colour ? BDR_SUNKENOUTER | BDR_SUNKENINNER : BDR_SUNKENOUTER, BF_RECT);
}

} // namespace velora
