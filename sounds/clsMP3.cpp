#include "sounds/clsMP3.h"

#include "base/binaryfile.h"
#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"

#include <algorithm>
#include <array>

namespace velora {
namespace {

constexpr char kModule[] = "clsMP3";
constexpr std::string_view kTag = "TAG", kLyricsBegin = "LYRICSBEGIN", kLyricsEnd = "LYRICSEND";
constexpr std::size_t kRecordBytes = clsMP3::kTagBytes - kTag.size();
constexpr std::size_t kLyricsBlock =
    kLyricsBegin.size() + clsMP3::kLyricsWidth + kLyricsEnd.size() + clsMP3::kTagBytes;
static_assert(kLyricsBlock == 5101);

constexpr std::wstring_view kGenres =
    L"Blues|Classic Rock|Country|Dance|Disco|Funk|Grunge|Hip-Hop|Jazz|Metal|New "
    L"Age|Oldies|Other|Pop|"
    L"R&B|Rap|Reggae|Rock|Techno|Industrial|Alternative|Ska|Death Metal|Pranks|Soundtrack|"
    L"Euro-Techno|Ambient|Trip Hop|Vocal|Jazz+Funk|Fusion|Trance|Classical|Instrumental|Acid|House|"
    L"Game|Sound Clip|Gospel|Noise|Alt. Rock|Bass|Soul|Punk|Space|Meditative|Instrumental Pop|"
    L"Instrumental "
    L"Rock|Ethnic|Gothic|Darkwave|Techno-Industrial|Electronic|Pop-Folk|Eurodance|Dream|"
    L"Southern Rock|Comedy|Cult|Gangsta Rap|Top 40|Christian Rap|Pop/Punk|Jungle|Native American|"
    L"Cabaret|New Wave|Phychedelic|Rave|Showtunes|Trailer|Lo-Fi|Tribal|Acid Punk|Acid Jazz|Polka|"
    L"Retro|Musical|Rock & Roll|Hard Rock|Folk|Folk/Rock|National "
    L"Folk|Swing|Fast-Fusion|Bebob|Latin|"
    L"Revival|Celtic|Blue Grass|Avantegarde|Gothic Rock|Progressive Rock|Psychedelic Rock|"
    L"Symphonic Rock|Slow Rock|Big Band|Chorus|Easy Listening|Acoustic|Humour|Speech|Chanson|Opera|"
    L"Chamber Music|Sonata|Symphony|Booty Bass|Primus|Porn Groove|Satire|Slow Jam|Club|Tango|Samba|"
    L"Folklore|Ballad|Power Ballad|Rhythmic Soul|Freestyle|Duet|Punk Rock|Drum Solo|A Cappella|"
    L"Euro-House|Dance Hall|Goa|Drum & Bass|Club-House|Hardcore|Terror|Indie|Brit Pop|Negerpunk|"
    L"Polsk Punk|Beat|Christian Gangsta Rap|Heavy Metal|Black Metal|Crossover|"
    L"Contemporary Christian|Christian Rock|Merengue|Salsa|Trash Metal|Anime|JPop|Synth Pop";

const std::vector<std::wstring>& genreNames()
{
    static const std::vector<std::wstring> names = split(kGenres, L'|');
    return names;
}

/// A sound whose player passes over what follows its data: a tag may simply be appended. The case
/// of the name counts.
bool growsByTag(const std::wstring& path)
{
    return path.ends_with(L"wav") || path.ends_with(L"mid");
}

std::string hexOf(std::string_view bytes)
{
    std::string hex;
    for (const char c : bytes) {
        hex += "0123456789ABCDEF"[static_cast<unsigned char>(c) >> 4];
        hex += "0123456789ABCDEF"[static_cast<unsigned char>(c) & 15];
    }
    return hex;
}

std::optional<std::string> bytesOf(std::wstring_view hex)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
        int value = 0;
        for (const wchar_t c : hex.substr(i, 2)) {
            const int digit = c >= L'0' && c <= L'9'   ? c - L'0'
                              : c >= L'A' && c <= L'F' ? c - L'A' + 10
                                                       : -1;
            if (digit < 0)
                return std::nullopt;
            value = value * 16 + digit;
        }
        bytes += static_cast<char>(value);
    }
    return hex.size() % 2 == 0 ? std::optional(bytes) : std::nullopt;
}

/// What one save replaced: the file, its length before, and the last bytes that it then had.
struct UndoRecord {
    std::wstring path;
    std::uint64_t size;
    std::string tail;
};

std::optional<UndoRecord> readUndo(const std::wstring& undoFile)
{
    const auto lines = splitLines(decodeFileText(readFile(undoFile).value_or("")));
    if (lines.size() != 3)
        return std::nullopt;
    const auto size = parseLong(lines[1]);
    const auto tail = bytesOf(lines[2]);
    if (!size || *size < 0 || !tail || tail->size() > static_cast<std::uint64_t>(*size))
        return std::nullopt;
    return UndoRecord{lines[0], static_cast<std::uint64_t>(*size), *tail};
}

} // namespace

clsMP3::clsMP3()
{
    clearFields();
    SetLyrics({});
}

std::wstring_view clsMP3::GenreMatrix()
{
    return kGenres;
}

std::uint8_t clsMP3::GetGenreByte(std::wstring_view name)
{
    if (trimView(name).empty())
        return 12;
    const auto& names = genreNames();
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? 0 : static_cast<std::uint8_t>(found - names.begin());
}

std::wstring clsMP3::GetGenreString(std::uint8_t number)
{
    return number < genreNames().size() ? genreNames()[number] : std::wstring();
}

std::wstring clsMP3::text(const std::string& field)
{
    return from1252(field);
}

void clsMP3::set(std::string& field, std::size_t width, std::wstring_view value)
{
    field = to1252(value.substr(0, width));
    field.resize(width, ' ');
}

void clsMP3::clearFields()
{
    SetTitle({});
    SetArtist({});
    SetAlbum({});
    SetYear({});
    SetComments({});
    genre_ = 0;
}

std::string clsMP3::render() const
{
    return title_ + artist_ + album_ + year_ + comments_ + static_cast<char>(genre_);
}

void clsMP3::parse(std::string_view record)
{
    const auto take = [&](std::string& field, std::size_t width) {
        field = record.substr(0, width);
        record.remove_prefix(width);
    };
    take(title_, 30);
    take(artist_, 30);
    take(album_, 30);
    take(year_, 4);
    take(comments_, 30);
    genre_ = static_cast<std::uint8_t>(record[0]);
}

void clsMP3::GetTag(const std::wstring& path)
{
    trap(kModule, [&] {
        clearFields();
        const BinaryFile file(path, BinaryFile::Access::Read);
        const std::uint64_t size = file.size();
        if (size < kTagBytes)
            return;
        // One read serves for both the mark and the record: a list of thousands of files waits on
        // it.
        const std::string tail = file.readAt(size - kTagBytes, kTagBytes);
        if (!tail.starts_with(kTag))
            genre_ = kNoTag;
        else
            parse(std::string_view(tail).substr(kTag.size()));
    });
}

void clsMP3::keepForUndo(const std::wstring& path, const BinaryFile& file, std::size_t bytes) const
{
    if (undoFile_.empty())
        return;
    const std::uint64_t size = file.size();
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(size, bytes));
    const std::string tail = file.readAt(size - count, count);
    replaceFile(undoFile_, encodeFileText(path + L"\r\n" + std::to_wstring(size) + L"\r\n"
                                          + from1252(hexOf(tail)) + L"\r\n"));
}

void clsMP3::SaveTag(const std::wstring& path)
{
    trap(kModule, [&] {
        BinaryFile file(path, BinaryFile::Access::ReadWrite);
        std::uint64_t size = file.size();
        if (size < kTagBytes)
            throw Error("the file is too short for a tag");
        keepForUndo(path, file, kTagBytes);
        const bool tagged = file.readAt(size - kTagBytes, kTag.size()) == kTag;
        if (!tagged && growsByTag(path))
            size += kTagBytes;
        file.writeAt(size - kTagBytes, std::string(kTag) + render());
    });
}

void clsMP3::GetLyrics(const std::wstring& path)
{
    trap(kModule, [&] {
        SetLyrics({});
        const BinaryFile file(path, BinaryFile::Access::Read);
        const std::uint64_t size = file.size();
        if (size < kLyricsBlock)
            return;
        const std::uint64_t start = size - kLyricsBlock;
        if (file.readAt(start, kLyricsBegin.size()) == kLyricsBegin)
            lyrics_ = file.readAt(start + kLyricsBegin.size(), kLyricsWidth);
    });
}

void clsMP3::SaveLyrics(const std::wstring& path)
{
    trap(kModule, [&] {
        GetTag(path);
        BinaryFile file(path, BinaryFile::Access::ReadWrite);
        const std::uint64_t size = file.size();
        if (size < kLyricsBlock)
            throw Error("the file is too short for lyrics");
        keepForUndo(path, file, kLyricsBlock);
        const bool present = file.readAt(size - kLyricsBlock, kLyricsBegin.size()) == kLyricsBegin;
        const std::string lyrics = lyrics_ + std::string(kLyricsEnd) + std::string(kTag);
        if (!present && growsByTag(path)) {
            // The appended block ends with a whole tag, so that it stands where it is looked for,
            // and the tag carries what the file's own tag said.
            file.writeAt(size, std::string(kLyricsBegin) + lyrics + render());
            return;
        }
        file.writeAt(size - kLyricsBlock, std::string(kLyricsBegin) + lyrics);
    });
}

std::optional<std::wstring> clsMP3::undoTarget() const
{
    return trap(
        kModule,
        [&] {
            const auto record = readUndo(undoFile_);
            return record ? std::optional(record->path) : std::nullopt;
        },
        std::optional<std::wstring>());
}

bool clsMP3::undo()
{
    return trap(
        kModule,
        [&] {
            const auto record = readUndo(undoFile_);
            if (!record)
                return false;
            BinaryFile file(record->path, BinaryFile::Access::ReadWrite);
            const std::uint64_t grown = file.size() - record->size;
            if (file.size() < record->size
                || (grown != 0 && grown != kTagBytes && grown != kLyricsBlock))
                return false;
            file.writeAt(record->size - record->tail.size(), record->tail);
            file.truncate(record->size);
            deleteFile(undoFile_);
            return true;
        },
        false);
}

} // namespace velora
