#pragma once
// The stand-in's own text helpers. Text in memory is UTF-16; scripts, the pipe and the transcript
// are UTF-8, one record a line, with the escapes \n \r \t and \\.
#include <string>
#include <string_view>
#include <vector>

namespace aolhost {

std::wstring fromUtf8(std::string_view bytes);
std::string toUtf8(std::wstring_view text);
/// Windows-1252 bytes, as AOL's own files and its ANSI edits hold text.
std::string toAnsi(std::wstring_view text);
std::wstring fromAnsi(std::string_view bytes);

std::wstring escaped(std::wstring_view text);
std::wstring unescaped(std::wstring_view text);

std::wstring trimmed(std::wstring_view text);
std::wstring lowered(std::wstring_view text);
bool sameNoCase(std::wstring_view a, std::wstring_view b);
bool startsNoCase(std::wstring_view text, std::wstring_view prefix);
std::vector<std::wstring> splitAt(std::wstring_view text, wchar_t separator);

/// A whole decimal number, or `fallback` when the text is none.
long numberOr(std::wstring_view text, long fallback);
/// "Yes": 1, on, yes or true, whatever the case.
bool isOn(std::wstring_view text);

} // namespace aolhost
