#pragma once
// Passwords and keys are overwritten as soon as they have served.
#include <cstddef>
#include <string>

namespace velora {

/// Overwrites memory in a way that the compiler may not leave out.
inline void wipe(void* memory, std::size_t bytes) noexcept
{
    auto* p = static_cast<volatile unsigned char*>(memory);
    while (bytes--)
        *p++ = 0;
}

/// Overwrites and empties a string or vector of plain elements, its spare capacity included.
template <class Container>
void wipe(Container& secret) noexcept
{
    secret.resize(secret.capacity());
    wipe(secret.data(), secret.size() * sizeof secret[0]);
    secret.clear();
}

/// Wipes what it refers to when it leaves its scope.
template <class Container>
class WipeOnExit {
public:
    explicit WipeOnExit(Container& secret) noexcept : secret_(secret) {}
    ~WipeOnExit() { wipe(secret_); }
    WipeOnExit(const WipeOnExit&) = delete;
    WipeOnExit& operator=(const WipeOnExit&) = delete;

private:
    Container& secret_;
};

} // namespace velora
