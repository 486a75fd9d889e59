// A line of chat through keyword, log and fader.
#include "base/text.h"
#include "chat/modChatLog.h"
#include "chat/modFade.h"
#include "chat/modKeyword.h"
#include "fuzz/fuzz.h"

#include <algorithm>

using namespace velora;
using fuzz::require;

namespace {

bool isOneLine(const std::wstring& record)
{
    return record.ends_with(L"\r\n") && std::count_if(record.begin(), record.end(), [](wchar_t c) {
                                            return c == L'\r' || c == L'\n' || c == 0;
                                        }) == 2;
}

void checkLog(const std::wstring& name, const std::wstring& message)
{
    constexpr DateTime when{2001, 2, 3, 4, 5, 6};
    require(isOneLine(lineRecord(name, message)));
    require(isOneLine(noteRecord(message)));
    require(!lineRecord(name, message).starts_with(L"Log Entry:"));
    clsChatLog log(L"L", name);
    for (const LogWrite& write : log.line(name, message, true, when)) {
        require(write.path.starts_with(L"L\\") && write.path.ends_with(L"\\02-03-01.log"));
        require(std::count(write.path.begin(), write.path.end(), L'\\') == 3);
    }
}

void checkFade(const std::string& text, std::uint8_t style)
{
    Fade fade;
    fade.FadeNumber = style % 11;
    fade.colours = {0xFF, 0xFF00, 0xFF0000, 0xFFFFFF};
    fade.Wavy = style & 0x10;
    fade.Bold = style & 0x20;
    std::string narrow = text;
    std::wstring wide = from1252(text);
    const int phase = wavePhase();
    FadeEngine(narrow, fade, style & 0x40, style & 0x80);
    setWavePhase(phase);
    FadeEngine(wide, fade, style & 0x40, style & 0x80);
    require(to1252(wide) == narrow);
    require(narrow.size()
            >= text.size() - static_cast<std::size_t>(std::count(text.begin(), text.end(), '\r')));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::wstring text = from1252(bytes);
    const std::size_t colon = text.find(L':');
    const std::wstring name = text.substr(0, colon);
    const std::wstring message = colon == text.npos ? text : text.substr(colon + 1);

    if (isKeywordText(text))
        require(parseKeyword(std::wstring_view(text).substr(1)).argument.size() <= text.size());
    checkLog(name, message);
    checkFade(bytes, data[0]);
    return 0;
}
