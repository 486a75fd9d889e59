#include "aolhost/AolFolder.h"

#include "aolhost/Sounds.h"
#include "aolhost/Text.h"
#include "aolhost/Words.h"
#include "base/win.h"

#include <cstdio>
#include <stdexcept>

namespace aolhost {
namespace {

bool exists(const std::wstring& path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string readBytes(const std::wstring& path)
{
    std::string out;
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return out;
    out.resize(GetFileSize(file, nullptr));
    DWORD got = 0;
    ReadFile(file, out.data(), static_cast<DWORD>(out.size()), &got, nullptr);
    out.resize(got);
    CloseHandle(file);
    return out;
}

void writeBytes(const std::wstring& path, const std::string& bytes)
{
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD put = 0;
    const bool done =
        file != INVALID_HANDLE_VALUE
        && WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &put, nullptr)
        && put == bytes.size();
    if (file != INVALID_HANDLE_VALUE)
        CloseHandle(file);
    if (!done)
        throw std::runtime_error("cannot write " + toUtf8(path));
}

void makeFolders(const std::wstring& path)
{
    if (exists(path))
        return;
    const std::size_t cut = path.rfind(L'\\');
    if (cut != std::wstring::npos && cut > 2)
        makeFolders(path.substr(0, cut));
    if (!CreateDirectoryW(path.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS)
        throw std::runtime_error("cannot make " + toUtf8(path));
}

/// Where the fixed part of the version resource stands in a program file; its signature is put
/// together here so that the code does not hold it too.
std::size_t fixedVersionAt(const std::string& program)
{
    std::string signature = "\xBD\x04\xEF";
    signature += '\xFE';
    signature += std::string("\x00\x00\x01\x00", 4);
    return program.find(signature);
}

/// The program says "N.0..." in its version resource: the major numbers in the fixed part and the
/// first digit of the two version texts.
std::string withVersion(std::string program, int version)
{
    const std::size_t fixed = fixedVersionAt(program);
    if (fixed == std::string::npos)
        throw std::runtime_error("no version resource in waol.exe");
    for (const std::size_t field : {fixed + 8 + 2, fixed + 16 + 2})
        program[field] = static_cast<char>(version);
    for (const wchar_t* key : {L"FileVersion", L"ProductVersion"}) {
        const std::string name(reinterpret_cast<const char*>(key), (std::wcslen(key) + 1) * 2);
        const std::size_t at = program.find(name, fixed);
        const std::size_t digit =
            at == std::string::npos ? at : program.find_first_not_of('\0', at + name.size());
        if (digit != std::string::npos)
            program[digit] = static_cast<char>('0' + version);
    }
    return program;
}

Edition editionOf(const std::wstring& folder)
{
    const auto has = [&](const wchar_t* file) { return exists(folder + L"\\" + file); };
    if (has(L"aolau.dat"))
        return Edition::australia;
    if (has(L"aolger.dat"))
        return Edition::germany;
    if (has(L"aolfr.dat"))
        return has(L"aoluk.dat") ? Edition::canada : Edition::france;
    return has(L"aoluk.dat") ? Edition::unitedKingdom : Edition::unitedStates;
}

std::vector<const wchar_t*> markersOf(Edition edition)
{
    switch (edition) {
    case Edition::australia: return {L"aolau.dat"};
    case Edition::germany: return {L"aolger.dat"};
    case Edition::canada: return {L"aolfr.dat", L"aoluk.dat"};
    case Edition::france: return {L"aolfr.dat"};
    case Edition::unitedKingdom: return {L"aoluk.dat"};
    default: return {};
    }
}

/// Names as the stand-in itself wrote them: each has a record of its own with this mark before it.
constexpr char kRecord[] = "\x01\x9E\x00";
constexpr std::size_t kRecordSize = 3;

std::vector<std::wstring> namesOf(const std::string& index, const std::wstring& guest)
{
    std::vector<std::wstring> names;
    const std::string mark(kRecord, kRecordSize);
    for (std::size_t at = index.find(mark); at != std::string::npos;
         at = index.find(mark, at + 1)) {
        const std::size_t from = at + kRecordSize;
        const std::wstring name = fromAnsi(index.substr(from, index.find('\0', from) - from));
        if (name != guest && name != L"New User")
            names.push_back(name);
    }
    return names;
}

} // namespace

std::wstring programPath()
{
    wchar_t path[MAX_PATH * 2];
    return {path, GetModuleFileNameW(nullptr, path, MAX_PATH * 2)};
}

Options optionsOfFolder(const std::wstring& program)
{
    Options options;
    options.folder = program.substr(0, program.rfind(L'\\'));
    options.edition = editionOf(options.folder);
    const std::string bytes = readBytes(program);
    const std::size_t fixed = fixedVersionAt(bytes);
    if (fixed != std::string::npos)
        options.version = bytes[fixed + 8 + 2];
    options.names = namesOf(readBytes(options.folder + L"\\idb\\main.idx"),
                            Words(options.edition, options.version).guest());
    return options;
}

void applyFolderFile(Options& options)
{
    for (const std::wstring& raw :
         splitAt(fromUtf8(readBytes(options.folder + L"\\aol.ini")), L'\n')) {
        const std::wstring line = trimmed(raw);
        const std::size_t equals = line.find(L'=');
        if (equals != std::wstring::npos
            && !setOption(options, line.substr(0, equals), line.substr(equals + 1)))
            std::fprintf(stderr, "waol: aol.ini: %s\n", toUtf8(line).c_str());
    }
}

std::string mainIndex(const std::vector<std::wstring>& names, const std::wstring& guest)
{
    // A head and fillers of bytes that are no letters, so that only names read as names.
    std::string out("\x9F\x00\x02\x01\x00\x00\xF0\x80\x00\x00", 10);
    out.resize(128, '\xFF');
    std::vector<std::wstring> all = names;
    if (all.empty())
        all.push_back(L"New User");
    all.push_back(guest);
    for (const std::wstring& name : all) {
        out += '\0';
        out.append(kRecord, kRecordSize);
        out += toAnsi(name);
        out += '\0';
        out.resize((out.size() + 63) / 64 * 64, '\xFF');
    }
    return out;
}

bool makeAolFolder(const std::wstring& folder, const Options& options)
{
    try {
        makeFolders(folder + L"\\idb");
        makeFolders(folder + L"\\sounds");
        const std::string program = withVersion(readBytes(programPath()), options.version);
        writeBytes(folder + L"\\waol.exe", program);
        writeBytes(folder + L"\\aol.exe", program);
        writeBytes(folder + L"\\idb\\main.idx",
                   mainIndex(options.names, Words(options.edition, options.version).guest()));
        for (const wchar_t* marker : markersOf(options.edition))
            writeBytes(folder + L"\\" + marker, "AOL\r\n");
        for (const SoundFile& sound : allSounds())
            writeBytes(folder + L"\\sounds\\" + sound.name, sound.bytes);
        return true;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "waol: %s\n", error.what());
        return false;
    }
}

} // namespace aolhost
