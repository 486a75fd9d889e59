#include "sounds/modMci.h"

#include "base/text.h"

#include <algorithm>

namespace velora {
namespace {

std::wstring_view lastThree(std::wstring_view path)
{
    return path.size() < 3 ? std::wstring_view() : path.substr(path.size() - 3);
}

std::wstring command(std::wstring_view verb, std::wstring_view alias, std::wstring_view rest = {})
{
    return std::wstring(verb).append(L" ").append(alias).append(rest);
}

bool isOnePath(std::wstring_view path)
{
    return std::none_of(path.begin(), path.end(), [](wchar_t c) { return c < L' ' || c == L'"'; });
}

std::wstring open(std::wstring_view what, std::wstring_view alias, std::wstring_view type)
{
    const bool quoted = what.find(L' ') != std::wstring_view::npos;
    const std::wstring_view quote = quoted ? L"\"" : L"";
    std::wstring result = L"Open ";
    result.append(quote).append(what).append(quote);
    return result.append(L" ALIAS ").append(alias).append(type).append(L" wait");
}

} // namespace

std::optional<std::wstring> mciDevice(std::wstring_view path)
{
    const std::wstring end = upper(lastThree(path));
    if (end == L"WAV")
        return L"Waveaudio";
    if (end == L"MID")
        return L"Sequencer";
    return std::nullopt;
}

std::wstring mciAlias(std::wstring_view path, int minute, int second, int number)
{
    return std::wstring(lastThree(path)) + std::to_wstring(minute) + std::to_wstring(second)
           + std::to_wstring(number);
}

std::optional<std::wstring> mciOpen(std::wstring_view path, std::wstring_view alias)
{
    const std::optional<std::wstring> device = mciDevice(path);
    if (!device || !isOnePath(path))
        return std::nullopt;
    return open(path, alias, L" TYPE " + *device);
}

std::optional<std::wstring> mciOpenElement(std::wstring_view path, std::wstring_view alias)
{
    const std::optional<std::wstring> device = mciDevice(path);
    if (!device || !isOnePath(path) || path.find(L'!') == std::wstring_view::npos)
        return std::nullopt;
    return open(*device + L"!" + std::wstring(path), alias, L"");
}

std::wstring mciClose(std::wstring_view alias)
{
    return command(L"Close", alias);
}
std::wstring mciPause(std::wstring_view alias)
{
    return command(L"Pause", alias);
}
std::wstring mciPlay(std::wstring_view alias, bool wait)
{
    return command(L"Play", alias, wait ? L" wait" : L"");
}
std::wstring mciStop(std::wstring_view alias)
{
    return command(L"Stop", alias);
}
std::wstring mciSeek(std::wstring_view alias, long position)
{
    return command(L"seek", alias, L" to " + std::to_wstring(position));
}

std::wstring mciStatus(std::wstring_view alias, MciQuery query)
{
    switch (query) {
    case MciQuery::length: return command(L"Status", alias, L" length");
    case MciQuery::position: return command(L"Status", alias, L" position");
    case MciQuery::mode: return command(L"Status", alias, L" mode");
    case MciQuery::samplingRate: return command(L"status", alias, L" samplespersec wait");
    case MciQuery::bits: return command(L"status", alias, L" bitspersample wait");
    case MciQuery::channels: return command(L"status", alias, L" channels wait");
    case MciQuery::formatTag: return command(L"status", alias, L" format tag wait");
    }
    return {};
}

} // namespace velora
