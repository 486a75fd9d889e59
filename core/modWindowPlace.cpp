#include "core/modWindowPlace.h"

#include "base/text.h"
#include "base/trap.h"
#include "settings/Options.h"

#include <array>

namespace velora {
namespace {
constexpr char kModule[] = "modWindowPlace";
}

std::optional<Rect> rememberedPlace(std::wstring_view section, std::wstring_view key)
{
    return trap(
        kModule,
        [&]() -> std::optional<Rect> {
            const auto parts = split(readSetting(section, std::wstring(key), L""), L',');
            std::array<int, 4> edges{};
            if (parts.size() != edges.size())
                return std::nullopt;
            for (std::size_t i = 0; i < edges.size(); ++i) {
                const auto number = parseLong(parts[i]);
                if (!number)
                    return std::nullopt;
                edges[i] = static_cast<int>(*number);
            }
            return Rect{edges[0], edges[1], edges[2], edges[3]};
        },
        std::optional<Rect>());
}

void rememberPlace(std::wstring_view section, const Rect& place, std::wstring_view key)
{
    trap(kModule, [&] {
        std::wstring text = std::to_wstring(place.left);
        for (const int edge : {place.top, place.right, place.bottom})
            text += L"," + std::to_wstring(edge);
        writeSetting(section, key, text);
    });
}

} // namespace velora
