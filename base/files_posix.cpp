#include "base/files.h"

#include "base/text.h"
#include "base/trap.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace velora {
namespace fs = std::filesystem;
namespace {

fs::path native(const std::wstring& path)
{
    return fs::path(toUtf8(path));
}

void write(const std::wstring& path, std::string_view bytes, std::ios::openmode mode)
{
    std::ofstream file(native(path), std::ios::binary | mode);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.flush();
    if (!file)
        throw Error("cannot write the file");
}

} // namespace

std::wstring joinPath(const std::wstring& folder, std::wstring_view name)
{
    return folder + L'/' + std::wstring(name);
}

std::optional<std::string> readFile(const std::wstring& path, std::uint64_t limit)
{
    std::error_code failed;
    if (!fs::is_regular_file(native(path), failed) || fs::file_size(native(path), failed) > limit)
        return std::nullopt;
    std::ifstream file(native(path), std::ios::binary);
    if (!file)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void replaceFile(const std::wstring& path, std::string_view bytes)
{
    write(path + L".tmp", bytes, std::ios::trunc);
    std::error_code failed;
    fs::rename(native(path + L".tmp"), native(path), failed);
    if (failed) {
        fs::remove(native(path + L".tmp"), failed);
        throw Error("cannot replace the file");
    }
}

void appendToFile(const std::wstring& path, std::string_view record)
{
    write(path, record, std::ios::app);
}

bool fileExists(const std::wstring& path)
{
    std::error_code failed;
    return fs::is_regular_file(native(path), failed);
}

bool folderExists(const std::wstring& path)
{
    std::error_code failed;
    return fs::is_directory(native(path), failed);
}

void makeFolder(const std::wstring& path)
{
    std::error_code failed;
    fs::create_directories(native(path), failed);
    if (failed)
        throw Error("cannot make the folder");
}

std::vector<FileEntry> listFolder(const std::wstring& folder, std::wstring_view pattern)
{
    std::vector<FileEntry> entries;
    const std::wstring_view suffix = pattern.substr(pattern.starts_with(L'*') ? 1 : 0);
    std::error_code failed;
    for (const auto& entry : fs::directory_iterator(native(folder), failed)) {
        const std::wstring name = fromUtf8(entry.path().filename().string());
        if (name.size() < suffix.size()
            || !equalNoCase(std::wstring_view(name).substr(name.size() - suffix.size()), suffix))
            continue;
        const bool isFolder = entry.is_directory(failed);
        entries.push_back({name, isFolder ? 0 : entry.file_size(failed), isFolder});
    }
    return entries;
}

void deleteFile(const std::wstring& path)
{
    std::error_code failed;
    fs::remove(native(path), failed);
    if (failed)
        throw Error("cannot delete the file");
}

void copyFile(const std::wstring& from, const std::wstring& to, bool overwrite)
{
    std::error_code failed;
    fs::copy_file(native(from), native(to),
                  overwrite ? fs::copy_options::overwrite_existing : fs::copy_options::none,
                  failed);
    if (failed)
        throw Error("cannot copy the file");
}

void moveFile(const std::wstring& from, const std::wstring& to)
{
    std::error_code failed;
    fs::rename(native(from), native(to), failed);
    if (failed)
        throw Error("cannot rename the file");
}

} // namespace velora
