#include "base/files.h"

namespace velora {

namespace {

constexpr std::uint64_t kMostKept = 256u << 20;

void keepContent(const std::wstring& path, std::string_view content)
{
    if (fileExists(path + L".2"))
        moveFile(path + L".2", path + L".3");
    if (fileExists(path + L".1"))
        moveFile(path + L".1", path + L".2");
    replaceFile(path + L".1", content);
}

} // namespace

void replaceFileKeepingCopies(const std::wstring& path, std::string_view bytes)
{
    const auto former = readFile(path);
    if (former && *former == bytes)
        return;
    if (former)
        keepContent(path, *former);
    replaceFile(path, bytes);
}

void keepCopies(const std::wstring& path)
{
    const auto content = readFile(path, kMostKept);
    if (content && readFile(path + L".1", kMostKept) != content)
        keepContent(path, *content);
}

} // namespace velora
