#include "base/files.h"

#include "base/handles.h"
#include "base/text.h"
#include "base/win_error.h"

namespace velora {
namespace {

/// A path of more than 259 characters opens only in its extended form.
std::wstring extended(const std::wstring& path)
{
    if (path.size() < MAX_PATH - 12 || path.starts_with(L"\\\\"))
        return path;
    return L"\\\\?\\" + path;
}

FileHandle openFile(const std::wstring& path, DWORD access, DWORD share, DWORD disposition)
{
    return FileHandle(CreateFileW(extended(path).c_str(), access, share, nullptr, disposition,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
}

void writeAll(HANDLE file, std::string_view bytes, const char* reason)
{
    while (!bytes.empty()) {
        DWORD written = 0;
        const DWORD part = bytes.size() > 0x1000000 ? 0x1000000 : static_cast<DWORD>(bytes.size());
        if (!WriteFile(file, bytes.data(), part, &written, nullptr) || written == 0)
            throwLastError(reason);
        bytes.remove_prefix(written);
    }
}

DWORD attributes(const std::wstring& path)
{
    return path.empty() ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(extended(path).c_str());
}

} // namespace

std::wstring joinPath(const std::wstring& folder, std::wstring_view name)
{
    return folder + L'\\' + std::wstring(name);
}

std::optional<std::string> readFile(const std::wstring& path, std::uint64_t limit)
{
    const FileHandle file = openFile(
        path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING);
    LARGE_INTEGER size{};
    if (!file || GetFileType(file.get()) != FILE_TYPE_DISK || !GetFileSizeEx(file.get(), &size)
        || static_cast<std::uint64_t>(size.QuadPart) > limit)
        return std::nullopt;
    std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
    std::size_t have = 0;
    while (have < bytes.size()) {
        DWORD got = 0;
        if (!ReadFile(file.get(), bytes.data() + have, static_cast<DWORD>(bytes.size() - have),
                      &got, nullptr))
            return std::nullopt;
        if (got == 0)
            break;
        have += got;
    }
    bytes.resize(have);
    return bytes;
}

void replaceFile(const std::wstring& path, std::string_view bytes)
{
    // A folder, a read-only file or a file in use must not lose the new text half-way: the
    // temporary file is complete and on the disk before the old one is touched.
    const std::wstring temporary = path + L".tmp";
    {
        const FileHandle file = openFile(temporary, GENERIC_WRITE, 0, CREATE_ALWAYS);
        if (!file)
            throwLastError("cannot make the temporary file");
        try {
            writeAll(file.get(), bytes, "cannot write the temporary file");
            if (!FlushFileBuffers(file.get()))
                throwLastError("cannot flush the temporary file");
        } catch (...) {
            const_cast<FileHandle&>(file).reset();
            DeleteFileW(extended(temporary).c_str());
            throw;
        }
    }
    if (!MoveFileExW(extended(temporary).c_str(), extended(path).c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        const DWORD code = GetLastError();
        DeleteFileW(extended(temporary).c_str());
        throw Error("cannot replace the file", code);
    }
}

void appendToFile(const std::wstring& path, std::string_view record)
{
    const FileHandle file =
        openFile(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_ALWAYS);
    if (!file)
        throwLastError("cannot open the file to append");
    writeAll(file.get(), record, "cannot append to the file");
}

bool fileExists(const std::wstring& path)
{
    const DWORD found = attributes(path);
    return found != INVALID_FILE_ATTRIBUTES && !(found & FILE_ATTRIBUTE_DIRECTORY);
}

bool folderExists(const std::wstring& path)
{
    const DWORD found = attributes(path);
    return found != INVALID_FILE_ATTRIBUTES && (found & FILE_ATTRIBUTE_DIRECTORY);
}

void makeFolder(const std::wstring& path)
{
    if (path.empty() || folderExists(path))
        return;
    const auto slash = path.find_last_of(L'\\');
    if (slash != std::wstring::npos && slash > 2)
        makeFolder(path.substr(0, slash));
    if (!CreateDirectoryW(extended(path).c_str(), nullptr)
        && GetLastError() != ERROR_ALREADY_EXISTS)
        throwLastError("cannot make the folder");
}

std::vector<FileEntry> listFolder(const std::wstring& folder, std::wstring_view pattern)
{
    std::vector<FileEntry> entries;
    const std::wstring_view suffix = pattern.substr(pattern.starts_with(L'*') ? 1 : 0);
    WIN32_FIND_DATAW found;
    // The pattern is tested here, not by the system: "*.wav" would also match "x.wave" by its 8.3
    // name.
    const FindHandle search(FindFirstFileW(extended(folder + L"\\*").c_str(), &found));
    if (!search)
        return entries;
    do {
        const std::wstring_view name = found.cFileName;
        if (name == L"." || name == L".." || name.size() < suffix.size()
            || !equalNoCase(name.substr(name.size() - suffix.size()), suffix))
            continue;
        entries.push_back(
            {std::wstring(name),
             static_cast<std::uint64_t>(found.nFileSizeHigh) << 32 | found.nFileSizeLow,
             (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
    } while (FindNextFileW(search.get(), &found));
    return entries;
}

void deleteFile(const std::wstring& path)
{
    if (!DeleteFileW(extended(path).c_str()) && fileExists(path))
        throwLastError("cannot delete the file");
}

void copyFile(const std::wstring& from, const std::wstring& to, bool overwrite)
{
    if (!CopyFileW(extended(from).c_str(), extended(to).c_str(), !overwrite))
        throwLastError("cannot copy the file");
}

void moveFile(const std::wstring& from, const std::wstring& to)
{
    if (!MoveFileExW(extended(from).c_str(), extended(to).c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        throwLastError("cannot rename the file");
}

} // namespace velora
