// Tag and lyrics block of any file: reading changes nothing, saving what was read keeps the bytes.
#include "base/files.h"
#include "base/text.h"
#include "sounds/clsMP3.h"
#include "support/tempdir.h"

#include <cstdint>
#include <cstdlib>

using namespace velora;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const TempDir dir;
    static const std::wstring path = dir.file(L"x.mp3");
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    replaceFile(path, bytes);
    clsMP3 tag;
    tag.GetTag(path);
    tag.GetLyrics(path);
    if (readFile(path) != bytes)
        std::abort();
    const bool tagged = tag.Genre() != clsMP3::kNoTag && size >= clsMP3::kTagBytes;
    tag.SaveTag(path);
    const auto after = readFile(path);
    if (!after || after->size() != bytes.size() || (tagged && *after != bytes))
        std::abort();
    tag.SaveLyrics(path);
    if (readFile(path)->size() != bytes.size())
        std::abort();
    return 0;
}
