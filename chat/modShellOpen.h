#pragma once
// What is opened outside the program: the help file, web addresses, AOL's own program.
#include <functional>
#include <string>
#include <string_view>

namespace velora {

// --- Pure ---------------------------------------------------------------------------------------

/// The address to give to the browser; "www." gets "http://" in front. Empty for what is no
/// address of http or https, or holds blanks, quotes or control characters.
std::wstring browserAddress(std::wstring_view target);

/// The argument that hands a keyword to AOL's program: one word whatever the keyword holds.
std::wstring aolKeywordArgument(std::wstring_view keyword);

/// "file:///C:/..." of a local path, with a place in the page behind "#".
std::wstring fileAddress(std::wstring_view path, std::wstring_view place);

// The places in the help page.
inline constexpr wchar_t kHelpContents[] = L"contents";
inline constexpr wchar_t kHelpSupport[] = L"support";
inline constexpr wchar_t kHelpKeywords[] = L"keywords";

// --- Windows ------------------------------------------------------------------------------------

/// Opens a file or address with the program that the user has for it. False when there is none. A
/// test puts its own in its place.
extern std::function<bool(const std::wstring& file, const std::wstring& arguments)> shellOpen;

/// Opens the help file at a place; the user is told when it is missing.
bool openHelp(std::wstring_view place);
bool openInBrowser(const std::wstring& address);
/// Hands a keyword to AOL's program.
bool openAolKeyword(const std::wstring& keyword);

} // namespace velora
