#include "jet/JetFile.h"

#include "base/handles.h"
#include "jet/JetError.h"

namespace velora {
namespace {

/// A path of more than 259 characters opens only in its extended form.
std::wstring extended(const std::wstring& path)
{
    if (path.size() < MAX_PATH - 12 || path.starts_with(L"\\\\"))
        return path;
    return L"\\\\?\\" + path;
}

[[noreturn]] void openError(DWORD code)
{
    switch (code) {
    case ERROR_FILE_NOT_FOUND: throw JetError(jeterr::kFileMissing, "the file is missing");
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_PATHNAME: throw JetError(jeterr::kBadPath, "the folder is missing");
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION: throw JetError(jeterr::kInUse, "the file is in use");
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS: throw JetError(jeterr::kDatabaseExists, "the file exists");
    default: throw JetError(jeterr::kCannotOpen, "cannot open the file");
    }
}

[[noreturn]] void diskError(const char* reason)
{
    throw JetError(jeterr::kDiskError, reason);
}

class DiskFile final : public JetFile {
public:
    explicit DiskFile(FileHandle file) : file_(std::move(file)) {}

    std::uint64_t size() override
    {
        LARGE_INTEGER found{};
        if (!GetFileSizeEx(file_.get(), &found))
            diskError("cannot read the file's size");
        return static_cast<std::uint64_t>(found.QuadPart);
    }
    std::size_t read(std::uint64_t at, void* into, std::size_t count) override
    {
        seek(at);
        DWORD got = 0;
        if (!ReadFile(file_.get(), into, static_cast<DWORD>(count), &got, nullptr))
            diskError("cannot read the file");
        return got;
    }
    void write(std::uint64_t at, const void* from, std::size_t count) override
    {
        seek(at);
        DWORD put = 0;
        if (!WriteFile(file_.get(), from, static_cast<DWORD>(count), &put, nullptr) || put != count)
            diskError("cannot write the file");
    }
    void flush() override
    {
        if (!FlushFileBuffers(file_.get()))
            diskError("cannot flush the file");
    }
    void resize(std::uint64_t size) override
    {
        seek(size);
        if (!SetEndOfFile(file_.get()))
            diskError("cannot change the file's size");
    }

private:
    void seek(std::uint64_t at)
    {
        LARGE_INTEGER place;
        place.QuadPart = static_cast<LONGLONG>(at);
        if (!SetFilePointerEx(file_.get(), place, nullptr, FILE_BEGIN))
            diskError("cannot move in the file");
    }
    FileHandle file_;
};

class Disk final : public JetFiles {
public:
    std::unique_ptr<JetFile> open(const std::wstring& path, Mode mode) override
    {
        const DWORD disposition = mode == Mode::existing    ? OPEN_EXISTING
                                  : mode == Mode::createNew ? CREATE_NEW
                                                            : CREATE_ALWAYS;
        // Share mode 0: the real engine, too, answers "in use" as long as the file is open here.
        FileHandle file(CreateFileW(extended(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                    nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file)
            openError(GetLastError());
        if (GetFileType(file.get()) != FILE_TYPE_DISK)
            throw JetError(jeterr::kCannotOpen, "not a file");
        return std::make_unique<DiskFile>(std::move(file));
    }
    bool exists(const std::wstring& path) override
    {
        return GetFileAttributesW(extended(path).c_str()) != INVALID_FILE_ATTRIBUTES;
    }
    void remove(const std::wstring& path) override
    {
        if (!DeleteFileW(extended(path).c_str()) && exists(path))
            diskError("cannot delete the file");
    }
    void rename(const std::wstring& from, const std::wstring& to) override
    {
        if (!MoveFileExW(extended(from).c_str(), extended(to).c_str(),
                         MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
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
