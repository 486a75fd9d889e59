#include "core/modChatDisplay.h"

#include "core/modAOL.h"
#include "core/modFindChild.h"
#include "hook/AgentLink.h"

#include <algorithm>

namespace velora {

namespace {

/// More than this of a display is never read: AOL cuts its displays long before.
constexpr int kMostText = 500000;

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
        // A control counts a line end as one or two characters, here it is always two: a cut tail
        // is never shorter than what was asked for.
        const bool whole = text->size() < characters;
        return Tail{std::move(*text), whole};
    }

    std::optional<std::wstring> whole() override
    {
        const HWND display = find();
        if (!display)
            return std::nullopt;
        return aolLink().connected() ? aolLink().readTail(display, kMostText) : aolText(display);
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
