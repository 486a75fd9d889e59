#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace velora {

/// An open file read and written at given places. Every operation throws Error when it cannot be
/// done whole; offsets count from the file's beginning.
class BinaryFile {
public:
    enum class Access { Read, ReadWrite };

    /// Opens a file that exists; others may read it meanwhile.
    BinaryFile(const std::wstring& path, Access access);
    ~BinaryFile();
    BinaryFile(const BinaryFile&) = delete;
    BinaryFile& operator=(const BinaryFile&) = delete;

    std::uint64_t size() const;
    /// Exactly `count` bytes.
    std::string readAt(std::uint64_t offset, std::size_t count) const;
    /// Writes over what is there; past the end the file grows.
    void writeAt(std::uint64_t offset, std::string_view bytes);
    void truncate(std::uint64_t size);

private:
    struct Handle;
    std::unique_ptr<Handle> handle_;
};

} // namespace velora
