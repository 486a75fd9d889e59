#include "im_mail/IMEvents.h"

#include "base/trap.h"

#include <vector>

namespace velora {
namespace {

std::vector<std::weak_ptr<IMEvents>>& subscribers()
{
    static std::vector<std::weak_ptr<IMEvents>> all;
    return all;
}

} // namespace

IMSubscription::IMSubscription(IMEvents events)
    : events_(std::make_shared<IMEvents>(std::move(events)))
{
    subscribers().push_back(events_);
}

void raiseIMEvent(const std::function<void(const IMEvents&)>& raise)
{
    std::erase_if(subscribers(), [](const auto& entry) { return entry.expired(); });
    // A copy: a handler may subscribe or let go of a subscription.
    const auto present = subscribers();
    for (const auto& entry : present)
        if (const auto events = entry.lock())
            trap("IMEvents", [&] { raise(*events); });
}

IMRoutes& imRoutes()
{
    static IMRoutes routes;
    return routes;
}

} // namespace velora
