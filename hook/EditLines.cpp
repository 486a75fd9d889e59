#include "hook/EditLines.h"

#include "base/text.h"
#include "hook/wire.h"

#include <cstring>

namespace velora {

std::optional<std::vector<EditLine>> parseLines(std::string_view bytes, std::size_t count)
{
    std::vector<EditLine> lines;
    while (lines.size() < count) {
        wire::LineHead head;
        if (bytes.size() < sizeof head)
            return std::nullopt;
        std::memcpy(&head, bytes.data(), sizeof head);
        bytes.remove_prefix(sizeof head);
        const std::size_t length = std::size_t{2} * head.units;
        if (bytes.size() < length)
            return std::nullopt;
        lines.push_back({fromUtf16le(bytes.substr(0, length)), head.softWrapped != 0});
        bytes.remove_prefix(length);
    }
    return lines;
}

std::wstring withCrLf(std::wstring_view text)
{
    std::wstring result;
    result.reserve(text.size() + text.size() / 16);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'\r' && text[i] != L'\n') {
            result += text[i];
            continue;
        }
        if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n')
            ++i;
        result += L"\r\n";
    }
    return result;
}

} // namespace velora
