#include "chat/modIcons_win.h"

#include <map>

namespace velora {
namespace {

Bitmap colourBitmap(const std::vector<std::uint32_t>& pixels, int size)
{
    BITMAPV5HEADER header{};
    header.bV5Size = sizeof header;
    header.bV5Width = size;
    header.bV5Height = -size; // top row first
    header.bV5Planes = 1;
    header.bV5BitCount = 32;
    header.bV5Compression = BI_BITFIELDS;
    header.bV5RedMask = 0x00FF0000;
    header.bV5GreenMask = 0x0000FF00;
    header.bV5BlueMask = 0x000000FF;
    header.bV5AlphaMask = 0xFF000000;
    void* bits = nullptr;
    Bitmap bitmap(CreateDIBSection(nullptr, reinterpret_cast<BITMAPINFO*>(&header), DIB_RGB_COLORS,
                                   &bits, nullptr, 0));
    if (bitmap)
        std::copy(pixels.begin(), pixels.end(), static_cast<std::uint32_t*>(bits));
    return bitmap;
}

/// The mask that screens of few colours use: set where the icon is see-through.
Bitmap maskBitmap(const std::vector<std::uint32_t>& pixels, int size)
{
    const int stride = (size + 15) / 16 * 2;
    std::vector<std::uint8_t> bits(static_cast<std::size_t>(stride) * size);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            if ((pixels[static_cast<std::size_t>(y) * size + x] >> 24) < 0x80)
                bits[static_cast<std::size_t>(y) * stride + x / 8] |= 0x80 >> x % 8;
    return Bitmap(CreateBitmap(size, size, 1, 1, bits.data()));
}

} // namespace

Icon makeIcon(IconId id, int size)
{
    const std::vector<std::uint32_t> pixels = drawIcon(id, size);
    const Bitmap colour = colourBitmap(pixels, size);
    const Bitmap mask = maskBitmap(pixels, size);
    if (!colour || !mask)
        return Icon();
    ICONINFO info{TRUE, 0, 0, mask.get(), colour.get()};
    return Icon(CreateIconIndirect(&info));
}

HICON sharedIcon(IconId id, int size)
{
    static std::map<std::pair<IconId, int>, Icon> icons;
    Icon& icon = icons[{id, size}];
    if (!icon)
        icon = makeIcon(id, size);
    return icon.get();
}

} // namespace velora
