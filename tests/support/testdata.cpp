#include "support/testdata.h"

std::wstring testData(const std::wstring& name)
{
    const std::string folder = VELORA_TEST_DATA;
    return std::wstring(folder.begin(), folder.end()) + L"/" + name;
}
