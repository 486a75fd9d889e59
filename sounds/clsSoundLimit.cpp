#include "sounds/clsSoundLimit.h"

namespace velora {
namespace {

constexpr std::uint32_t kMinute = 60000;

} // namespace

bool clsSoundLimit::full(std::uint32_t now, long perMinute)
{
    // Differences survive the counter's wrap after 49 days.
    while (!played_.empty() && now - played_.front() >= kMinute)
        played_.pop_front();
    return perMinute <= 0 || played_.size() >= static_cast<std::size_t>(perMinute);
}

void clsSoundLimit::note(std::uint32_t now)
{
    played_.push_back(now);
}

} // namespace velora
