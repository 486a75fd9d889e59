#pragma once
// Text: conversions at the border to AOL and to files, and the small string rules that many rooms
// share.
//
// Text in memory is std::wstring: UTF-16 on Windows; in native builds one code point a unit. AOL's
// windows, list files, logs, message and scheme files and tags hold Windows-1252 bytes.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// Windows-1252 bytes as text. Every byte has a meaning: the five that the code page leaves
/// undefined (81 8D 8F 90 9D) become the control characters of the same number, and come back as
/// those bytes.
std::wstring from1252(std::string_view bytes);

/// Text as Windows-1252 bytes; a character that the code page lacks becomes "?".
std::string to1252(std::wstring_view text);

/// True when to1252 would lose nothing.
bool fits1252(std::wstring_view text);

/// UTF-8 both ways. Malformed input gives U+FFFD, one for each byte that cannot be read.
std::wstring fromUtf8(std::string_view bytes);
std::string toUtf8(std::wstring_view text);

/// UTF-16LE bytes both ways, without a terminator; an odd last byte is dropped. Units that are no
/// pair of surrogates pass through unchanged.
std::wstring fromUtf16le(std::string_view bytes);
std::string toUtf16le(std::wstring_view text);

/// What a text file of ours holds: UTF-8 when it begins with the byte-order mark EF BB BF,
/// Windows-1252 otherwise.
std::wstring decodeFileText(std::string_view bytes);
/// The reverse: Windows-1252 when nothing is lost, else UTF-8 with the byte-order mark.
std::string encodeFileText(std::wstring_view text);

/// Lower and upper case for the letters of Windows-1252 (a "ß" stays). Locale-independent, so that
/// a key made on a Turkish system is the key made anywhere.
wchar_t lowerChar(wchar_t c);
std::wstring lower(std::wstring_view text);
std::wstring upper(std::wstring_view text);
bool equalNoCase(std::wstring_view a, std::wstring_view b);
bool startsWithNoCase(std::wstring_view text, std::wstring_view prefix);

/// Without the blanks (U+0020 only) at both ends.
std::wstring trim(std::wstring_view text);
std::wstring_view trimView(std::wstring_view text);

std::wstring replaceAll(std::wstring_view text, std::wstring_view what, std::wstring_view with);
std::wstring without(std::wstring_view text, wchar_t c);
std::vector<std::wstring> split(std::wstring_view text, wchar_t separator);

/// The lines of a text file: ends are CR LF, LF or CR; an empty last line is none.
std::vector<std::wstring> splitLines(std::wstring_view text);

/// A whole number in decimal, with an optional sign; nothing else may stand in the text. Absent
/// when it is no number or does not fit.
std::optional<long> parseLong(std::wstring_view text);

/// The key by which screen names are compared: all blanks removed, lower-cased.
std::wstring screenNameKey(std::wstring_view screenName);

/// The text as it has to stand in HTML to be read as it is.
std::wstring escapeHtml(std::wstring_view text);

} // namespace velora
