// The chat reader against the whole-text reading, on displays that the fuzzer makes up.
#include "support/chatScript.h"

#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // The first call of the runner has no bytes and no address.
    const std::string fault = chatscript::Run()(size ? std::span<const std::uint8_t>(data, size)
                                                     : std::span<const std::uint8_t>());
    if (!fault.empty()) {
        std::fprintf(stderr, "%s\n", fault.c_str());
        std::abort();
    }
    return 0;
}
