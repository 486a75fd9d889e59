#include "sounds/modWavList.h"

#include "base/text.h"

#include <algorithm>

namespace velora {
namespace {

constexpr std::size_t kExtensionLength = 4;
constexpr std::wstring_view kExtensions[] = {L".wav", L".mid", L".mp3"};
constexpr std::wstring_view kAolSystemSounds[] = {L"welcome",  L"IM",     L"goodbye", L"filedone",
                                                  L"gotmail",  L"drop",   L"buddyin", L"buddyout",
                                                  L"inactive", L"gotpics"};

} // namespace

std::wstring_view extensionOf(SoundKind kind)
{
    return kExtensions[static_cast<int>(kind)];
}

std::optional<SoundKind> kindOfFile(std::wstring_view fileName)
{
    if (fileName.size() < kExtensionLength)
        return std::nullopt;
    const std::wstring end = lower(fileName.substr(fileName.size() - kExtensionLength));
    for (const SoundKind kind : {SoundKind::wav, SoundKind::mid, SoundKind::mp3})
        if (end == extensionOf(kind))
            return kind;
    return std::nullopt;
}

std::wstring wavName(std::wstring_view fileName, bool preserveCase)
{
    const std::size_t length =
        fileName.size() > kExtensionLength ? fileName.size() - kExtensionLength : 0;
    const std::wstring_view name = fileName.substr(0, length);
    return preserveCase ? std::wstring(name) : lower(name);
}

bool isAolSystemSound(std::wstring_view name)
{
    return std::find(std::begin(kAolSystemSounds), std::end(kAolSystemSounds), name)
           != std::end(kAolSystemSounds);
}

bool isAolSource(std::wstring_view sourceName)
{
    return equalNoCase(sourceName, L"aol directory") || equalNoCase(sourceName, L"aol sounds");
}

} // namespace velora
