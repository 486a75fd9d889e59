#pragma once
// velora.log: one line for each trapped error.
#include "base/clock.h"
#include "base/trap.h"

#include <string>

namespace velora {

/// The line, with its CR LF: time, module, procedure, code and reason, separated by tabs. What
/// would break the line is replaced; a reason of any length is cut.
std::string errorLogLine(const DateTime& when, const ErrorRecord& record);

/// How much a log file holds before it is put aside, and how many files there are with the present
/// one: velora.log, velora.log.1, velora.log.2.
inline constexpr unsigned long kErrorLogSize = 1ul << 20;
inline constexpr int kErrorLogFiles = 3;

/// Writes every reported error from now on to velora.log in the program folder, or in
/// %APPDATA%\Velora when that one cannot be written. Never fails.
void openErrorLog(const std::wstring& programFolder) noexcept;
/// Errors are dropped again.
void closeErrorLog() noexcept;
/// The folder in use, empty when there is none.
const std::wstring& errorLogFolder() noexcept;

} // namespace velora
