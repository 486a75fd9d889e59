#include "chat/modInstallScheme.h"

#include "base/files.h"
#include "base/safename.h"
#include "base/text.h"
#include "base/trap.h"
#include "chat/modSchemeFiles.h"
#include "settings/Options.h"

namespace velora {
namespace {

constexpr char kModule[] = "modInstallScheme";
constexpr std::uint64_t kLargestScheme = 1u << 20;
constexpr std::wstring_view kExtension = L".fde";

std::wstring schemeName(const std::wstring& file)
{
    std::wstring name = file.substr(file.find_last_of(L"\\/:") + 1);
    if (name.size() > kExtension.size()
        && equalNoCase(name.substr(name.size() - kExtension.size()), kExtension))
        name.resize(name.size() - kExtension.size());
    return trim(name);
}

void writeToSettings(const std::wstring& name, const Fade& fade)
{
    constexpr const wchar_t* colours[] = {L"One", L"Two",   L"Three", L"Four", L"Five",
                                          L"Six", L"Seven", L"Eight", L"Nine", L"Ten"};
    const std::wstring section = L"Fader\\Schemes\\" + name;
    writeSetting(section, L"FadeNumber", fade.FadeNumber);
    for (std::size_t i = 0; i < fade.colours.size(); ++i)
        writeSetting(section, colours[i], fade.colours[i]);
    writeSetting(section, L"Wavy", fade.Wavy);
    writeSetting(section, L"Bold", fade.Bold);
    writeSetting(section, L"Italic", fade.Italic);
    writeSetting(section, L"ULine", fade.ULine);
}

} // namespace

bool InstallScheme(const std::wstring& file, const std::wstring& programFolder)
{
    return trap(
        kModule,
        [&] {
            const auto bytes = readFile(file, kLargestScheme);
            const auto scheme = bytes ? parseScheme(decodeFileText(*bytes)) : std::nullopt;
            const std::wstring name = schemeName(file);
            if (!scheme || !isPlainFileName(name))
                return false;
            writeToSettings(name, scheme->fade);
            // The settings are what fades; a folder that cannot be written is only reported.
            clsSchemes(programFolder).import(file);
            return true;
        },
        false);
}

} // namespace velora
