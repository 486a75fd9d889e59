#include "support/tempdir.h"

#include "base/files.h"
#include "base/random.h"
#include "base/text.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace {

#ifdef _WIN32
constexpr wchar_t kSeparator[] = L"\\";
fs::path nativePath(const std::wstring& path)
{
    return fs::path(path);
}
#else
constexpr wchar_t kSeparator[] = L"/";
fs::path nativePath(const std::wstring& path)
{
    return fs::path(velora::toUtf8(path));
}
#endif

} // namespace

TempDir::TempDir()
{
    velora::SystemRandom random;
    const fs::path base = fs::temp_directory_path();
    do {
        const auto number = static_cast<unsigned long long>(random.rnd() * 1e15);
        const fs::path made = base / ("velora-test-" + std::to_string(number));
        if (fs::create_directory(made)) {
#ifdef _WIN32
            path_ = made.wstring();
#else
            path_ = velora::fromUtf8(made.string());
#endif
        }
    } while (path_.empty());
}

TempDir::~TempDir()
{
    std::error_code ignored;
    fs::remove_all(nativePath(path_), ignored);
}

std::wstring TempDir::file(std::wstring_view name) const
{
    return path_ + kSeparator + std::wstring(name);
}

std::wstring TempDir::folder(std::wstring_view name) const
{
    velora::makeFolder(file(name));
    return file(name);
}
