#include "base/binaryfile.h"

#include "base/text.h"
#include "base/trap.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velora {

struct BinaryFile::Handle {
    int file = -1;
    ~Handle()
    {
        if (file >= 0)
            close(file);
    }
};

BinaryFile::BinaryFile(const std::wstring& path, Access access) : handle_(new Handle)
{
    handle_->file = open(toUtf8(path).c_str(), access == Access::Read ? O_RDONLY : O_RDWR);
    if (handle_->file < 0)
        throw Error("cannot open the file");
}

BinaryFile::~BinaryFile() = default;

std::uint64_t BinaryFile::size() const
{
    struct stat status;
    if (fstat(handle_->file, &status) != 0)
        throw Error("cannot ask for the file's size");
    return static_cast<std::uint64_t>(status.st_size);
}

std::string BinaryFile::readAt(std::uint64_t offset, std::size_t count) const
{
    std::string bytes(count, '\0');
    if (pread(handle_->file, bytes.data(), count, static_cast<off_t>(offset))
        != static_cast<ssize_t>(count))
        throw Error("the file ends before the place to read");
    return bytes;
}

void BinaryFile::writeAt(std::uint64_t offset, std::string_view bytes)
{
    if (pwrite(handle_->file, bytes.data(), bytes.size(), static_cast<off_t>(offset))
        != static_cast<ssize_t>(bytes.size()))
        throw Error("cannot write the file");
}

void BinaryFile::truncate(std::uint64_t size)
{
    if (ftruncate(handle_->file, static_cast<off_t>(size)) != 0)
        throw Error("cannot cut the file");
}

} // namespace velora
