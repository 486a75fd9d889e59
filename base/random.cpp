#include "base/random.h"

#include "base/clock.h"

namespace velora {

double SystemRandom::rnd()
{
    state_ ^= state_ >> 12;
    state_ ^= state_ << 25;
    state_ ^= state_ >> 27;
    // The 53 upper bits fill a double's fraction.
    return static_cast<double>((state_ * 0x2545F4914F6CDD1Dull) >> 11) * 0x1.0p-53;
}

void SystemRandom::randomize()
{
    // Two calls within one tick must still differ, so the old state stays in the mix.
    state_ ^= (static_cast<std::uint64_t>(tickCount()) + 1) * 0x9E3779B97F4A7C15ull;
    if (state_ == 0)
        state_ = 1;
}

} // namespace velora
