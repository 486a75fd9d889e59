#include "chat/modSchemeFiles.h"

#include "base/clock.h"
#include "base/files.h"
#include "base/safename.h"
#include "base/text.h"
#include "base/trap.h"
#include "chat/modCurrentFade.h"
#include "settings/Options.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "modSchemeFiles";
constexpr std::wstring_view kExtension = L".fde";
constexpr std::uint64_t kLargest = 1u << 20;

struct BuiltIn {
    const wchar_t* name;
    int count;
    std::array<std::uint32_t, 6> rgb; ///< 0xRRGGBB, as designers write colours
};

constexpr BuiltIn kBuiltIn[] = {
    {L"Cool Fade", 6, {0x1B2A8F, 0x1F6FD0, 0x16A0A8, 0x1F6FD0, 0x5B3FC0, 0x1B2A8F}},
    {L"Campfire", 4, {0x8B0000, 0xD43C00, 0xC88400, 0x8B0000}},
    {L"Deep Forest", 4, {0x0B4F2A, 0x2E8B57, 0x6B7F10, 0x0B4F2A}},
    {L"Grape Soda", 3, {0x4B0082, 0xB0268C, 0x4B0082}},
    {L"Rainbow", 6, {0xC00000, 0xC86400, 0x7A7A00, 0x007A1E, 0x0030C0, 0x7A00A0}},
    {L"Slate", 3, {0x202830, 0x607080, 0x202830}},
};

Colour fromRgb(std::uint32_t rgb)
{
    return static_cast<Colour>((rgb & 255) << 16 | (rgb & 0xFF00) | rgb >> 16);
}

FadeScheme schemeOf(const BuiltIn& built)
{
    FadeScheme scheme;
    scheme.fade.FadeNumber = built.count;
    for (std::size_t i = 0; i < scheme.fade.colours.size(); ++i)
        scheme.fade.colours[i] = fromRgb(built.rgb[i % static_cast<std::size_t>(built.count)]);
    scheme.Comments = L"Comes with Velora";
    return scheme;
}

std::wstring nameOfFile(std::wstring_view file)
{
    const std::wstring_view name = file.substr(file.find_last_of(L"\\/") + 1);
    return std::wstring(name.substr(0, name.size() - std::min(name.size(), kExtension.size())));
}

std::optional<FadeScheme> readScheme(const std::wstring& path)
{
    const auto bytes = readFile(path, kLargest);
    return bytes ? parseScheme(decodeFileText(*bytes)) : std::nullopt;
}

} // namespace

clsSchemes::clsSchemes(std::wstring programFolder) : program_(std::move(programFolder)) {}

std::wstring clsSchemes::folder() const
{
    return joinPath(joinPath(program_, L"Fader"), L"Schemes");
}

std::wstring clsSchemes::pathOf(const std::wstring& name) const
{
    return joinPath(folder(), safeFileName(name) + std::wstring(kExtension));
}

std::vector<SchemeEntry> clsSchemes::list() const
{
    std::vector<SchemeEntry> entries;
    for (const std::wstring& from : {folder(), joinPath(program_, L"download")})
        for (const FileEntry& file : listFolder(from, L"*.fde"))
            if (!file.folder)
                entries.push_back({nameOfFile(file.name), joinPath(from, file.name)});
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto& a, const auto& b) { return lower(a.name) < lower(b.name); });
    entries.erase(
        std::unique(entries.begin(), entries.end(),
                    [](const auto& a, const auto& b) { return equalNoCase(a.name, b.name); }),
        entries.end());
    return entries;
}

std::optional<FadeScheme> clsSchemes::load(const std::wstring& name) const
{
    return trap(
        kModule,
        [&]() -> std::optional<FadeScheme> {
            for (const SchemeEntry& entry : list())
                if (equalNoCase(entry.name, name) || equalNoCase(entry.name, safeFileName(name)))
                    return readScheme(entry.path);
            return std::nullopt;
        },
        std::optional<FadeScheme>());
}

bool clsSchemes::exists(const std::wstring& name) const
{
    return fileExists(pathOf(name));
}

bool clsSchemes::save(const std::wstring& name, FadeScheme scheme) const
{
    return trap(
        kModule,
        [&] {
            const std::wstring today = longDate(now());
            const auto former = readScheme(pathOf(name));
            scheme.DateCreated =
                former && !former->DateCreated.empty() ? former->DateCreated : today;
            scheme.Modified = today;
            makeFolder(folder());
            replaceFileKeepingCopies(pathOf(name), encodeFileText(renderScheme(scheme)));
            return true;
        },
        false);
}

bool clsSchemes::remove(const std::wstring& name) const
{
    return trap(
        kModule,
        [&] {
            for (const SchemeEntry& entry : list())
                if (equalNoCase(entry.name, name)) {
                    deleteFile(entry.path);
                    return true;
                }
            return false;
        },
        false);
}

bool clsSchemes::import(const std::wstring& file) const
{
    return trap(
        kModule,
        [&] {
            const auto scheme = readScheme(file);
            if (!scheme)
                return false;
            makeFolder(folder());
            replaceFileKeepingCopies(pathOf(nameOfFile(file)),
                                     encodeFileText(renderScheme(*scheme)));
            return true;
        },
        false);
}

void clsSchemes::provideBuiltIn() const
{
    trap(kModule, [&] {
        if (folderExists(folder()) && !listFolder(folder(), L"*.fde").empty())
            return;
        for (const BuiltIn& built : kBuiltIn)
            save(built.name, schemeOf(built));
    });
}

void prepareFader(const std::wstring& programFolder)
{
    trap(kModule, [&] {
        const clsSchemes schemes(programFolder);
        schemes.provideBuiltIn();
        const std::wstring name = opt::Fader::Default.get();
        if (settingValues(L"Fader\\Schemes\\" + name).empty())
            if (const auto scheme = schemes.load(name))
                setCurrentFade(scheme->fade);
        nextScheme = [schemes](RandomSource& random) -> std::optional<Fade> {
            const auto entries = schemes.list();
            if (entries.empty())
                return std::nullopt;
            const auto pick =
                static_cast<std::size_t>(random.rnd() * static_cast<double>(entries.size()));
            const auto scheme = schemes.load(entries[pick].name);
            return scheme ? std::optional(scheme->fade) : std::nullopt;
        };
    });
}

} // namespace velora
