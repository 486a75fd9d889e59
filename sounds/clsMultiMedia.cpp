#include "sounds/clsMultiMedia.h"

#include "base/clock.h"
#include "base/text.h"
#include "base/trap.h"

namespace velora {
namespace {

constexpr char kModule[] = "clsMultiMedia";
constexpr wchar_t kMsAdpcm[] = L"MS ADPCM";
constexpr wchar_t kImaAdpcm[] = L"IMA ADPCM";
constexpr std::int16_t kAdpcmBits = 4;

std::wstring formatName(const std::wstring& answer)
{
    const std::wstring tag = lower(answer);
    if (tag == L"pcm")
        return L"PCM";
    if (tag == L"2")
        return kMsAdpcm;
    if (tag == L"17")
        return kImaAdpcm;
    return tag.empty() ? L"" : L"Unknown";
}

} // namespace

std::optional<std::wstring> clsMultiMedia::ask(MciQuery query)
{
    if (fileName_.empty())
        return std::nullopt;
    return port_.send(mciStatus(alias_, query));
}

bool clsMultiMedia::sendIfAny(const std::optional<std::wstring>& command)
{
    return command && port_.send(*command);
}

std::optional<long> clsMultiMedia::askNumber(MciQuery query)
{
    const std::optional<std::wstring> answer = ask(query);
    return answer ? parseLong(trimView(*answer)) : std::nullopt;
}

std::wstring clsMultiMedia::FormatTag()
{
    return trap(
        kModule,
        [&] {
            if (const auto answer = ask(MciQuery::formatTag))
                formatTag_ = formatName(*answer);
            return formatTag_;
        },
        std::wstring());
}

std::int16_t clsMultiMedia::Bits()
{
    return trap(
        kModule,
        [&] {
            const std::wstring tag = fileName_.empty() ? std::wstring() : FormatTag();
            if (tag == kMsAdpcm || tag == kImaAdpcm)
                bits_ = kAdpcmBits;
            else if (tag == L"PCM")
                bits_ = static_cast<std::int16_t>(askNumber(MciQuery::bits).value_or(bits_));
            return bits_;
        },
        std::int16_t{0});
}

std::int16_t clsMultiMedia::Channels()
{
    return trap(
        kModule,
        [&] {
            channels_ =
                static_cast<std::int16_t>(askNumber(MciQuery::channels).value_or(channels_));
            return channels_;
        },
        std::int16_t{0});
}

std::int32_t clsMultiMedia::SamplingRate()
{
    return trap(
        kModule,
        [&] {
            samplingRate_ = static_cast<std::int32_t>(
                askNumber(MciQuery::samplingRate).value_or(samplingRate_));
            return samplingRate_;
        },
        std::int32_t{0});
}

void clsMultiMedia::mmOpen(const std::wstring& path)
{
    trap(kModule, [&] {
        mmClose();
        const DateTime time = now();
        const int number = static_cast<int>(random_.rnd() * 1000 + 1);
        const std::wstring alias = mciAlias(path, time.minute, time.second, number);
        // The kind is told by the path as it was given: a short path's extension may differ in
        // case.
        if (!mciDevice(path))
            return;
        const std::wstring sendable = port_.sendable(path);
        if (!sendIfAny(mciOpen(sendable, alias)) && !sendIfAny(mciOpenElement(sendable, alias)))
            return;
        fileName_ = path;
        alias_ = alias;
    });
}

void clsMultiMedia::mmClose()
{
    trap(kModule, [&] {
        if (!fileName_.empty())
            port_.send(mciClose(alias_));
        fileName_.clear();
        alias_.clear();
    });
}

void clsMultiMedia::mmPause()
{
    trap(kModule, [&] {
        if (!fileName_.empty())
            port_.send(mciPause(alias_));
    });
}

void clsMultiMedia::mmPlay()
{
    trap(kModule, [&] {
        if (!fileName_.empty())
            port_.send(mciPlay(alias_, wait_));
    });
}

void clsMultiMedia::mmStop()
{
    trap(kModule, [&] {
        if (!fileName_.empty())
            port_.send(mciStop(alias_));
    });
}

void clsMultiMedia::mmSeek(long position)
{
    trap(kModule, [&] {
        if (!fileName_.empty())
            port_.send(mciSeek(alias_, position));
    });
}

long clsMultiMedia::Length()
{
    return trap(
        kModule, [&] { return askNumber(MciQuery::length).value_or(0); }, 0L);
}

long clsMultiMedia::Position()
{
    return trap(
        kModule, [&] { return askNumber(MciQuery::position).value_or(0); }, 0L);
}

std::wstring clsMultiMedia::Status()
{
    return trap(
        kModule, [&] { return ask(MciQuery::mode).value_or(std::wstring()); }, std::wstring());
}

} // namespace velora
