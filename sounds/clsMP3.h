#pragma once
// The tag at the end of a sound file (ID3v1: 128 bytes, last of the file) and the lyrics block that
// may stand in front of it. Fields are single bytes of Windows-1252 and keep what they held: a
// field that nobody changed is written back byte for byte.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velora {

class BinaryFile;

class clsMP3 {
public:
    static constexpr std::size_t kTagBytes = 128;
    static constexpr std::size_t kLyricsWidth = 4953;
    static constexpr std::uint8_t kNoTag = 255;

    /// The names of all genres, joined by "|"; the spellings are the program's own.
    static std::wstring_view GenreMatrix();
    /// The number of a genre's name, exactly as the table spells it; 12 ("Other") for a blank name,
    /// 0 for one that is not in the table.
    static std::uint8_t GetGenreByte(std::wstring_view name);
    /// The name of a genre; empty for 148 and above.
    static std::wstring GetGenreString(std::uint8_t number);

    /// Loads the tag. A file without one leaves blank fields and the genre 255; a file that cannot
    /// be read, or has fewer than 128 bytes, blank fields and the genre 0.
    void GetTag(const std::wstring& path);
    /// Writes the tag. An untagged file whose name ends in "wav" or "mid" (lower case) grows by it;
    /// in any other untagged file it replaces the last 128 bytes. What was there goes to the undo
    /// file first, where one is set.
    void SaveTag(const std::wstring& path);
    /// Loads and writes the lyrics block, 5,101 bytes from the file's end, tag included.
    void GetLyrics(const std::wstring& path);
    void SaveLyrics(const std::wstring& path);

    /// Fields are exactly their width: 30 characters, 4 for the year; shorter values are padded
    /// with blanks, longer ones cut.
    std::wstring Title() const { return text(title_); }
    std::wstring Artist() const { return text(artist_); }
    std::wstring Album() const { return text(album_); }
    std::wstring Year() const { return text(year_); }
    std::wstring Comments() const { return text(comments_); }
    std::uint8_t Genre() const { return genre_; }
    std::wstring Lyrics() const { return text(lyrics_); }
    void SetTitle(std::wstring_view value) { set(title_, 30, value); }
    void SetArtist(std::wstring_view value) { set(artist_, 30, value); }
    void SetAlbum(std::wstring_view value) { set(album_, 30, value); }
    void SetYear(std::wstring_view value) { set(year_, 4, value); }
    void SetComments(std::wstring_view value) { set(comments_, 30, value); }
    void SetGenre(std::uint8_t number) { genre_ = number; }
    void SetLyrics(std::wstring_view value) { set(lyrics_, kLyricsWidth, value); }

    /// The file that keeps what the last save replaced; none by default.
    void setUndoFile(std::wstring path) { undoFile_ = std::move(path); }
    /// Puts back what the last save replaced, when the file has not changed its length since then.
    /// True when it did.
    bool undo();
    /// The sound file that undo() would restore; absent when there is nothing to undo.
    std::optional<std::wstring> undoTarget() const;

    clsMP3();

private:
    static std::wstring text(const std::string& field);
    static void set(std::string& field, std::size_t width, std::wstring_view value);
    void clearFields();
    /// The 125 bytes behind "TAG", both ways.
    std::string render() const;
    void parse(std::string_view record);
    void keepForUndo(const std::wstring& path, const BinaryFile& file, std::size_t bytes) const;

    std::string title_, artist_, album_, year_, comments_, lyrics_;
    std::uint8_t genre_ = 0;
    std::wstring undoFile_;
};

} // namespace velora
