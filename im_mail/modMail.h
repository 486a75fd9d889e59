#pragma once
// The envelope that carries encrypted text in a mail: hexadecimal digits between two marker lines.
// All functions are pure; texts are wide, and a character counts as its UTF-16LE bytes.
#include <optional>
#include <string>
#include <string_view>

namespace velora {

/// A mail body holds less than this many characters, markup included.
inline constexpr std::size_t kMostMailCharacters = 30000;

/// Where a reader without the program is sent.
inline constexpr wchar_t kDownloadPage[] = L"https://velora.example/download";

/// The envelope of a text, both marker lines included; empty when text or password is.
std::wstring EncryptMailText(std::wstring_view text, std::wstring_view password);

/// The text of an envelope, "&nbsp;" in it as blanks. Empty when an argument is, when the digits
/// are no whole blocks or no digits, or when the password is wrong. AOL's mail view breaks the run
/// of digits with line ends, blanks and "<BR>"; all of these may stand anywhere in it.
std::wstring DecryptMailText(std::wstring_view envelope, std::wstring_view password);

/// The part of a mail's text from the first start marker to the end marker behind it; absent when
/// there is none.
std::optional<std::wstring_view> FindEnvelope(std::wstring_view mailText);

/// What replaces the selection: the envelope behind tags that close open styles.
std::wstring envelopeForMail(std::wstring_view envelope);

/// The notice for readers without the program, and whether a mail holds it already.
std::wstring decryptNotice();
bool holdsNotice(std::wstring_view mailText);

} // namespace velora
