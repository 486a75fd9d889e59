#include "base/binaryfile.h"

#include "base/handles.h"
#include "base/win_error.h"

namespace velora {

struct BinaryFile::Handle {
    FileHandle file;

    void seek(std::uint64_t offset) const
    {
        LARGE_INTEGER place;
        place.QuadPart = static_cast<LONGLONG>(offset);
        if (!SetFilePointerEx(file.get(), place, nullptr, FILE_BEGIN))
            throwLastError("cannot go to the place in the file");
    }
};

BinaryFile::BinaryFile(const std::wstring& path, Access access) : handle_(new Handle)
{
    const DWORD rights = access == Access::Read ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
    const DWORD share =
        access == Access::Read ? FILE_SHARE_READ | FILE_SHARE_WRITE : FILE_SHARE_READ;
    handle_->file.reset(CreateFileW(path.c_str(), rights, share, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle_->file)
        throwLastError("cannot open the file");
    if (GetFileType(handle_->file.get()) != FILE_TYPE_DISK)
        throw Error("is no file on a disk");
}

BinaryFile::~BinaryFile() = default;

std::uint64_t BinaryFile::size() const
{
    LARGE_INTEGER size;
    if (!GetFileSizeEx(handle_->file.get(), &size))
        throwLastError("cannot ask for the file's size");
    return static_cast<std::uint64_t>(size.QuadPart);
}

std::string BinaryFile::readAt(std::uint64_t offset, std::size_t count) const
{
    handle_->seek(offset);
    std::string bytes(count, '\0');
    DWORD got = 0;
    if (!ReadFile(handle_->file.get(), bytes.data(), static_cast<DWORD>(count), &got, nullptr))
        throwLastError("cannot read the file");
    if (got != count)
        throw Error("the file ends before the place to read");
    return bytes;
}

void BinaryFile::writeAt(std::uint64_t offset, std::string_view bytes)
{
    handle_->seek(offset);
    DWORD written = 0;
    if (!WriteFile(handle_->file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                   nullptr)
        || written != bytes.size())
        throwLastError("cannot write the file");
}

void BinaryFile::truncate(std::uint64_t size)
{
    handle_->seek(size);
    if (!SetEndOfFile(handle_->file.get()))
        throwLastError("cannot cut the file");
}

} // namespace velora
