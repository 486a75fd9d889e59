#pragma once
// What can be decided about an AOL installation and its windows from names, texts and files alone.
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velora {

/// The edition (AOLEdition) that the marker files in AOL's folder tell. `exists` gets the markers'
/// plain file names.
int DetectEdition(const std::function<bool(std::wstring_view)>& exists);

/// The major version in the answer of launch32.dll: the first character of the trimmed text when it
/// is a digit, else 0 (no answer).
int majorVersion(std::wstring_view answer);
bool isSupportedVersion(int version);

/// The folder of "...\waol.exe": without the last nine characters. Empty for any other path.
std::wstring folderOfAol(std::wstring_view executablePath);

/// A control of a window, as far as finding the chat room asks for it.
struct ControlInfo {
    std::wstring className;
    std::wstring text;
};
/// A text that is a number, as the head count of a chat room.
bool isHeadCount(std::wstring_view text);
/// How many of a window's "_AOL_Static" children are looked at for the head count.
inline constexpr int kMostStatics = 20;
/// True when the MDI child is a chat room: it holds a people list and a combo box, and is of the
/// chat form's class or shows a head count.
bool isChatRoom(std::wstring_view className, const std::vector<ControlInfo>& children);

/// How AOL's push buttons are pressed.
enum class IconPress { click, enter };
IconPress iconPress(int version);

/// The chat display's class.
std::wstring_view chatDisplayClass(int version);

} // namespace velora
