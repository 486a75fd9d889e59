#pragma once
#include <string>

namespace velora {

/// Where "data" and "im logs" of the ignore lists, answers and their logs are: the program's
/// folder. A test may put its own.
std::wstring& imServicesFolder();

} // namespace velora
