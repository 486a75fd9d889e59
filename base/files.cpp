#include "base/files.h"

namespace velora {

void replaceFileKeepingCopies(const std::wstring& path, std::string_view bytes)
{
    const auto former = readFile(path);
    if (former && *former == bytes)
        return;
    if (former) {
        const auto shift = [&](const wchar_t* from, const wchar_t* to) {
            if (const auto copy = readFile(path + from))
                replaceFile(path + to, *copy);
        };
        shift(L".2", L".3");
        shift(L".1", L".2");
        replaceFile(path + L".1", *former);
    }
    replaceFile(path, bytes);
}

} // namespace velora
