// Settings files: whatever is read can be written, and comes back the same.
#include "core/modSettingsFile.h"
#include "fuzz/fuzz.h"

#include <cstdlib>

using namespace velora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ReadSettings read = readSettingsFile(fuzz::bytesOf(data, size));
    if (read.badLine)
        return 0;
    const ReadSettings again = readSettingsFile(settingsFile(read.settings));
    if (again.badLine || again.settings != read.settings)
        std::abort();
    return 0;
}
