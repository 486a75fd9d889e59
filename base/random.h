#pragma once
#include <cstdint>

namespace velora {

/// A source of random numbers. Rules that draw take one as an argument, so that tests can fix it.
class RandomSource {
public:
    virtual ~RandomSource() = default;
    /// A number in [0, 1).
    virtual double rnd() = 0;
    /// Starts the sequence anew from the clock, where the source has one.
    virtual void randomize() {}
};

/// The program's own source: a 64-bit xorshift generator. Not for secrets.
class SystemRandom final : public RandomSource {
public:
    SystemRandom() { randomize(); }
    explicit SystemRandom(std::uint64_t seed) : state_(seed ? seed : 1) {}
    double rnd() override;
    void randomize() override;

private:
    std::uint64_t state_ = 1;
};

} // namespace velora
