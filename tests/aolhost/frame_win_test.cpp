#include "support/aolhost_win.h"

#include "base/files.h"
#include "base/text.h"

#include <doctest/doctest.h>

using namespace velora::test;

namespace {

struct EditionWords {
    int edition, version;
    const wchar_t *frame, *signOn, *welcome, *goodbye;
    std::vector<std::wstring> markers;
};

HWND toolbarOf(HWND frame)
{
    return childOfClass(childOfClass(frame, L"AOL Toolbar"), L"_AOL_Toolbar");
}

/// The first number of the program's version resource.
int majorVersion(const std::wstring& program)
{
    DWORD unused = 0;
    std::string block(GetFileVersionInfoSizeW(program.c_str(), &unused), '\0');
    VS_FIXEDFILEINFO* info = nullptr;
    UINT size = 0;
    if (!GetFileVersionInfoW(program.c_str(), 0, static_cast<DWORD>(block.size()), block.data())
        || !VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&info), &size))
        return 0;
    return HIWORD(info->dwFileVersionMS);
}

std::wstring versionText(const std::wstring& program)
{
    DWORD unused = 0;
    std::string block(GetFileVersionInfoSizeW(program.c_str(), &unused), '\0');
    wchar_t* text = nullptr;
    UINT size = 0;
    if (!GetFileVersionInfoW(program.c_str(), 0, static_cast<DWORD>(block.size()), block.data())
        || !VerQueryValueW(block.data(), L"\\StringFileInfo\\040904e4\\FileVersion",
                           reinterpret_cast<void**>(&text), &size))
        return {};
    return text;
}

} // namespace

TEST_CASE("each edition has its captions, files and menus' dialog")
{
    const EditionWords editions[] = {
        {0,
         5,
         L"America  Online",
         L"Sign On",
         L"Welcome, Joe!",
         L"Goodbye from America Online!",
         {}},
        {1, 7, L"AOL", L"Sign On", L"Welcome, Joe!", L"Goodbye from AOL! ", {L"aoluk.dat"}},
        {2,
         6,
         L"AOL Canada",
         L"Sign On",
         L"Welcome, Joe!",
         L"Goodbye from AOL Canada!",
         {L"aolfr.dat", L"aoluk.dat"}},
        {3, 4, L"AOL", L"Sign On", L"Welcome, Joe!", L"Goodbye from AOL", {L"aolau.dat"}},
        {4, 3, L"AOL", L"Anmelden", L"Willkommen, Joe!", L"Bis bald!", {L"aolger.dat"}},
        {5,
         5,
         L"AOL est un service de Cegetel",
         L"Connexion",
         L"Bienvenue, Joe!",
         L"A bientôt sur AOL",
         {L"aolfr.dat"}},
    };
    for (const EditionWords& words : editions) {
        CAPTURE(words.edition);
        AolHost::Options options;
        options.edition = words.edition;
        options.version = words.version;
        options.signOn.clear();
        AolHost aol(options);
        for (const wchar_t* marker : {L"aolau.dat", L"aolger.dat", L"aolfr.dat", L"aoluk.dat"}) {
            const bool wanted = std::find(words.markers.begin(), words.markers.end(), marker)
                                != words.markers.end();
            CHECK(velora::fileExists(aol.folder() + L"\\" + marker) == wanted);
        }
        CHECK(majorVersion(aol.folder() + L"\\waol.exe") == words.version);
        CHECK(majorVersion(aol.folder() + L"\\aol.exe") == words.version);
        CHECK(versionText(aol.folder() + L"\\waol.exe")
              == std::to_wstring(words.version) + L".0.1.0");

        CHECK(classOf(aol.frame()) == L"AOL Frame25");
        CHECK(textOf(aol.frame()) == words.frame);
        CHECK(childOfClass(aol.frame(), L"MDIClient") == aol.mdi());
        CHECK(textOf(aol.document(words.signOn)) == words.signOn);
        CHECK_FALSE(childOfClass(toolbarOf(aol.frame()), L"_AOL_Combobox"));
        CHECK(childOfClass(toolbarOf(aol.frame()), L"_AOL_Icon"));

        aol.command(L"signon Joe");
        CHECK(childOfClass(toolbarOf(aol.frame()), L"_AOL_Combobox"));
        CHECK(textOf(aol.document(words.welcome)) == words.welcome);
        CHECK_FALSE(aol.document(words.signOn));

        aol.command(L"signoff");
        CHECK_FALSE(childOfClass(toolbarOf(aol.frame()), L"_AOL_Combobox"));
        CHECK(textOf(aol.document(words.goodbye)) == words.goodbye);
        CHECK_FALSE(aol.document(words.welcome));
    }
}

TEST_CASE("an installation's screen names stand between NUL bytes in main.idx")
{
    AolHost::Options options;
    options.names = L"Joe Smith,Rose3";
    options.run = false;
    AolHost aol(options);
    const std::string index = velora::readFile(aol.folder() + L"\\idb\\main.idx").value_or("");
    const auto has = [&](const char* name) {
        return index.find('\0' + std::string(name) + '\0') != std::string::npos;
    };
    CHECK(has("Joe Smith"));
    CHECK(has("Rose3"));
    CHECK(has("Guest"));
    CHECK_FALSE(has("New User"));
    CHECK(velora::listFolder(aol.folder() + L"\\sounds", L"*.wav").size() > 12);
    CHECK(velora::listFolder(aol.folder() + L"\\sounds", L"*.mid").size() == 1);
    const std::string wave = velora::readFile(aol.folder() + L"\\sounds\\welcome.wav").value_or("");
    CHECK(wave.substr(0, 4) == "RIFF");
    CHECK(wave.size() > 4000);
}

TEST_CASE("About opens a dialog that its button closes, by the version's way of pressing")
{
    for (const int version : {5, 6}) {
        CAPTURE(version);
        AolHost::Options options;
        options.version = version;
        AolHost aol(options);
        aol.command(L"about");
        const HWND dialog = aol.dialog();
        REQUIRE(dialog);
        CHECK(childOfClass(dialog, L"_AOL_GLYPH"));
        CHECK_FALSE(IsWindowEnabled(aol.frame()));
        const HWND button = childOfClass(dialog, L"_AOL_ICON");
        SendMessageW(button, WM_CHAR, VK_RETURN, 0);
        if (version == 5) {
            aol.command(L"status");
            CHECK(IsWindow(dialog));
            PostMessageW(button, WM_LBUTTONDOWN, 0, 0);
            PostMessageW(button, WM_LBUTTONUP, 0, 0);
        }
        CHECK(waitFor([&] { return !IsWindow(dialog); }));
        CHECK(waitFor([&] { return IsWindowEnabled(aol.frame()) != 0; }));
    }
}

TEST_CASE("the keyword box opens a profile, and the find letter the list of rooms")
{
    AolHost aol;
    const HWND bar = toolbarOf(aol.frame());
    const HWND box = childOfClass(bar, L"_AOL_Combobox");
    REQUIRE(box);
    SendMessageW(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"profile:Rose3"));
    SendMessageW(childOfClass(box, L"Edit"), WM_CHAR, VK_RETURN, 0);
    const HWND profile = aol.document(L"Member Profile");
    REQUIRE(profile);
    CHECK(textOf(childOfClass(profile, L"RICHCNTL")).find(L"Rose3") != std::wstring::npos);
    SendMessageW(childOfClass(bar, L"_AOL_Icon"), WM_CHAR, 'f', 0);
    CHECK(waitFor([&] { return aol.document(L"Find a Chat") != nullptr; }));
}
