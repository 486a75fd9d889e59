#pragma once
#include <string>

/// The path of a file below tests/data, as the present build opens it.
std::wstring testData(const std::wstring& name);
