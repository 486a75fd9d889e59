#pragma once
#include <string>
#include <string_view>

/// A folder of a test's own, deleted with all that is in it at the test's end.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::wstring& path() const { return path_; }
    /// The path of a file in it.
    std::wstring file(std::wstring_view name) const;
    /// Makes a folder in it; answers its path.
    std::wstring folder(std::wstring_view name) const;

private:
    std::wstring path_;
};
