// Scheme files: whatever is read can be written, and comes back the same.
#include "base/text.h"
#include "chat/modScheme.h"
#include "fuzz/fuzz.h"

#include <cstdlib>

using namespace velora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text = decodeFileText(fuzz::bytesOf(data, size));
    const auto scheme = parseScheme(text);
    if (!scheme)
        return 0;
    if (scheme->fade.FadeNumber < 1 || scheme->fade.FadeNumber > kMostColours)
        std::abort();
    for (const Colour colour : scheme->fade.colours)
        if (colour < 0 || colour > 0xFFFFFF)
            std::abort();
    if (parseScheme(renderScheme(*scheme)) != scheme)
        std::abort();
    return 0;
}
