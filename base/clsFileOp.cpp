#include "base/clsFileOp.h"

#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"

namespace velora {
namespace {
constexpr char kModule[] = "clsFileOp";
}

std::wstring clsFileOp::ReadTextFromFile(const std::wstring& path)
{
    return trap(
        kModule, [&] { return decodeFileText(readFile(path).value_or("")); }, std::wstring());
}

bool clsFileOp::WriteTextToFile(const std::wstring& path, std::wstring_view text)
{
    return trap(
        kModule,
        [&] {
            replaceFile(path, encodeFileText(text));
            return true;
        },
        false);
}

bool clsFileOp::AppendTextToFile(const std::wstring& path, std::wstring_view text)
{
    return trap(
        kModule,
        [&] {
            appendToFile(path, to1252(text));
            return true;
        },
        false);
}

} // namespace velora
