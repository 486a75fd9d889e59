#pragma once
#include <string>
#include <string_view>

namespace velora {

/// A name that came from outside (screen name, room, scheme, message title) as one file or folder
/// name.
///
/// Path separators, the characters that Windows forbids, control characters, a leading or trailing
/// blank or dot, and "%" itself are written as "%XX" (code in hexadecimal), and a device name (CON,
/// COM1, ... with or without an extension) gets its first letter written so. Different names thus
/// stay different, and an ordinary name stays as it is. At most 120 characters come back; a longer
/// name is cut and ends in "%~" and eight hexadecimal digits of its hash. An empty name gives "%".
std::wstring safeFileName(std::wstring_view name);

/// True when the name can be a file name as it stands: not empty, at most 200 characters, no
/// separator, colon or other forbidden or control character, not only dots and blanks, no trailing
/// dot or blank, no device name. A sound name from chat that is none opens nothing.
bool isPlainFileName(std::wstring_view name);

} // namespace velora
