#include "core/modChatDisplay.h"

#include "core/modAOL.h"
#include "core/modFindChild.h"
#include "hook/AgentLink.h"

#include <algorithm>

namespace velora {

namespace {

/// How many characters the control holds, its line ends counted as one each: that is how it counts
/// what it is asked for.
std::size_t controlLength(const std::wstring& text)
{
    std::size_t pairs = 0;
    for (std::size_t at = text.find(L"\r\n"); at != text.npos; at = text.find(L"\r\n", at + 2))
        ++pairs;
    return text.size() - pairs;
}

class RoomDisplay final : public ChatDisplay {
public:
    explicit RoomDisplay(HWND display) : display_(display), room_(GetParent(display)) {}

    std::optional<Tail> tail(std::size_t characters) override
    {
        const HWND display = find();
        if (!display)
            return std::nullopt;
        if (!aolLink().connected()) {
            auto text = aolText(display, kAolTimerTimeout);
            if (!text)
                return std::nullopt;
            return Tail{std::move(*text), true};
        }
        auto text = aolLink().readTail(display, static_cast<int>(characters), kAolTimerTimeout);
        if (!text)
            return std::nullopt;
        const bool whole = controlLength(*text) < characters;
        return Tail{std::move(*text), whole};
    }

    std::optional<std::wstring> whole() override
    {
        const HWND display = find();
        if (!display)
            return std::nullopt;
        return aolLink().connected() ? aolLink().readText(display) : aolText(display);
    }

private:
    HWND find()
    {
        if (IsWindow(display_) && GetParent(display_) == room_)
            return display_;
        display_ = IsWindow(room_) ? chatDisplay(room_) : nullptr;
        return isAolWindow(display_) ? display_ : nullptr;
    }

    HWND display_;
    HWND room_;
};

} // namespace

std::unique_ptr<ChatDisplay> chatDisplayReader(HWND display)
{
    return std::make_unique<RoomDisplay>(display);
}

} // namespace velora
