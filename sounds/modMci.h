#pragma once
// The command strings of the Media Control Interface, as clsMultiMedia sends them.
#include <optional>
#include <string>
#include <string_view>

namespace velora {

/// The device type for a path's last three characters, in any case: "Waveaudio" for wav,
/// "Sequencer" for mid; absent for everything else.
std::optional<std::wstring> mciDevice(std::wstring_view path);

/// The name under which a file is opened: the path's last three characters as written, then minute,
/// second and a number from 1 to 1000. Two files opened in a row thus get different names.
std::wstring mciAlias(std::wstring_view path, int minute, int second, int number);

/// The command that opens a file. A path with a blank is put between quotes. Absent for a path that
/// MCI would read as more than a path (a quote or a control character in it) and for a file that no
/// device plays.
std::optional<std::wstring> mciOpen(std::wstring_view path, std::wstring_view alias);

/// The same file in the form device!file. MCI reads a "!" in a path as the end of a device's name
/// and finds no such device; with the device before the path it does not look further. Absent for a
/// path without "!", and as above.
std::optional<std::wstring> mciOpenElement(std::wstring_view path, std::wstring_view alias);

std::wstring mciClose(std::wstring_view alias);
std::wstring mciPause(std::wstring_view alias);
std::wstring mciPlay(std::wstring_view alias, bool wait);
std::wstring mciStop(std::wstring_view alias);
std::wstring mciSeek(std::wstring_view alias, long position);

/// What can be asked of an open device.
enum class MciQuery { length, position, mode, samplingRate, bits, channels, formatTag };
std::wstring mciStatus(std::wstring_view alias, MciQuery query);

} // namespace velora
