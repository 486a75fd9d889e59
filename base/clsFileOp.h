#pragma once
#include <string>
#include <string_view>

namespace velora {

/// The text files of the program: message, list and log files.
class clsFileOp {
public:
    /// The text of a file, decoded as files of ours are (decodeFileText); empty when it cannot be
    /// read.
    static std::wstring ReadTextFromFile(const std::wstring& path);
    /// Replaces the file's text. False, and the former text kept, when it cannot be written.
    static bool WriteTextToFile(const std::wstring& path, std::wstring_view text);
    /// Appends to the file's end with one write; makes the file when missing. A log stays
    /// Windows-1252 from end to end: what the code page lacks is written as "?".
    static bool AppendTextToFile(const std::wstring& path, std::wstring_view text);
};

} // namespace velora
