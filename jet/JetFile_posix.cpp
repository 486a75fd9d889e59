#include "jet/JetFile.h"

#include "base/text.h"
#include "jet/JetError.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velora {
namespace {

[[noreturn]] void diskError(const char* reason)
{
    throw JetError(jeterr::kDiskError, reason);
}

class DiskFile final : public JetFile {
public:
    explicit DiskFile(int file) : file_(file) {}
    ~DiskFile() override { close(file_); }
    DiskFile(const DiskFile&) = delete;
    DiskFile& operator=(const DiskFile&) = delete;

    std::uint64_t size() override
    {
        struct stat found;
        if (fstat(file_, &found) != 0)
            diskError("cannot read the file's size");
        return static_cast<std::uint64_t>(found.st_size);
    }
    std::size_t read(std::uint64_t at, void* into, std::size_t count) override
    {
        std::size_t have = 0;
        while (have < count) {
            const ssize_t got = pread(file_, static_cast<char*>(into) + have, count - have,
                                      static_cast<off_t>(at + have));
            if (got < 0 && errno != EINTR)
                diskError("cannot read the file");
            if (got == 0)
                break;
            have += got > 0 ? static_cast<std::size_t>(got) : 0;
        }
        return have;
    }
    void write(std::uint64_t at, const void* from, std::size_t count) override
    {
        std::size_t done = 0;
        while (done < count) {
            const ssize_t put = pwrite(file_, static_cast<const char*>(from) + done, count - done,
                                       static_cast<off_t>(at + done));
            if (put < 0 && errno != EINTR)
                diskError("cannot write the file");
            done += put > 0 ? static_cast<std::size_t>(put) : 0;
        }
    }
    void flush() override
    {
        if (fdatasync(file_) != 0)
            diskError("cannot flush the file");
    }
    void resize(std::uint64_t size) override
    {
        if (ftruncate(file_, static_cast<off_t>(size)) != 0)
            diskError("cannot change the file's size");
    }

private:
    int file_;
};

class Disk final : public JetFiles {
public:
    std::unique_ptr<JetFile> open(const std::wstring& path, Mode mode) override
    {
        int flags = O_RDWR | O_CLOEXEC;
        if (mode == Mode::createNew)
            flags |= O_CREAT | O_EXCL;
        else if (mode == Mode::replace)
            flags |= O_CREAT;
        const int file = ::open(toUtf8(path).c_str(), flags, 0666);
        if (file < 0) {
            switch (errno) {
            case EEXIST: throw JetError(jeterr::kDatabaseExists, "the file exists");
            case ENOENT:
                if (mode == Mode::existing)
                    throw JetError(jeterr::kFileMissing, "the file is missing");
                [[fallthrough]];
            case ENOTDIR: throw JetError(jeterr::kBadPath, "the folder is missing");
            default: throw JetError(jeterr::kCannotOpen, "cannot open the file");
            }
        }
        auto opened = std::make_unique<DiskFile>(file);
        if (flock(file, LOCK_EX | LOCK_NB) != 0)
            throw JetError(jeterr::kInUse, "the file is in use");
        struct stat found;
        if (fstat(file, &found) != 0 || !S_ISREG(found.st_mode))
            throw JetError(jeterr::kCannotOpen, "not a file");
        if (mode == Mode::replace)
            opened->resize(0);
        return opened;
    }
    bool exists(const std::wstring& path) override
    {
        struct stat found;
        return stat(toUtf8(path).c_str(), &found) == 0;
    }
    void remove(const std::wstring& path) override
    {
        if (unlink(toUtf8(path).c_str()) != 0 && errno != ENOENT)
            diskError("cannot delete the file");
    }
    void rename(const std::wstring& from, const std::wstring& to) override
    {
        if (::rename(toUtf8(from).c_str(), toUtf8(to).c_str()) != 0)
            diskError("cannot rename the file");
    }
};

} // namespace

JetFiles& systemJetFiles()
{
    static Disk disk;
    return disk;
}

} // namespace velora
