#include "base/win.h"
#include "sounds/clsMultiMedia.h"

#include <mmsystem.h>

namespace velora {
namespace {

constexpr DWORD kAnswerChars = 128;

/// Text in the system's code page; absent when a character is lost in it.
std::optional<std::string> ansi(const std::wstring& text)
{
    if (text.empty())
        return std::string();
    BOOL lost = FALSE;
    const int length =
        WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.c_str(),
                            static_cast<int>(text.size()), nullptr, 0, nullptr, &lost);
    if (length <= 0 || lost)
        return std::nullopt;
    std::string bytes(length, '\0');
    WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.c_str(), static_cast<int>(text.size()),
                        bytes.data(), length, nullptr, nullptr);
    return bytes;
}

std::wstring fromAnsi(const char* bytes)
{
    const int length = MultiByteToWideChar(CP_ACP, 0, bytes, -1, nullptr, 0);
    std::wstring text(length > 0 ? length : 1, L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes, -1, text.data(), length);
    text.resize(text.size() - 1);
    return text;
}

std::wstring shortPath(const std::wstring& path)
{
    std::wstring text(MAX_PATH, L'\0');
    const DWORD length = GetShortPathNameW(path.c_str(), text.data(), MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return path;
    text.resize(length);
    return text;
}

class SystemMci final : public MciPort {
public:
    std::optional<std::wstring> send(const std::wstring& command) override
    {
        const std::optional<std::string> bytes = ansi(command);
        if (!bytes)
            return sendWide(command);
        char answer[kAnswerChars] = {};
        if (mciSendStringA(bytes->c_str(), answer, kAnswerChars, nullptr) != 0)
            return std::nullopt;
        answer[kAnswerChars - 1] = '\0';
        return fromAnsi(answer);
    }

    std::wstring sendable(const std::wstring& path) override
    {
        return ansi(path) ? path : shortPath(path);
    }

private:
    /// For a path that has no form in the code page because the volume makes no short names.
    static std::optional<std::wstring> sendWide(const std::wstring& command)
    {
        wchar_t answer[kAnswerChars] = {};
        if (mciSendStringW(command.c_str(), answer, kAnswerChars, nullptr) != 0)
            return std::nullopt;
        answer[kAnswerChars - 1] = L'\0';
        return std::wstring(answer);
    }
};

} // namespace

MciPort& systemMci()
{
    static SystemMci port;
    return port;
}

} // namespace velora
