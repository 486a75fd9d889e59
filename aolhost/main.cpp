// waol.exe and aol.exe: the AOL stand-in.
#include "aolhost/Aol.h"
#include "aolhost/AolFolder.h"
#include "aolhost/Commands.h"
#include "aolhost/Controls.h"
#include "aolhost/Document.h"
#include "aolhost/Frame.h"
#include "aolhost/Modal.h"
#include "aolhost/RichText.h"
#include "aolhost/SignOn.h"
#include "aolhost/Text.h"
#include "aolhost/Toolbar.h"

#include <cstdio>
#include <shellapi.h>

namespace aolhost {
namespace {

struct Arguments {
    std::vector<std::pair<std::wstring, std::wstring>> options; ///< --name=value
    std::wstring makeFolder;
    std::wstring keyword; ///< -s keyword
    std::wstring tellPipe;
    std::vector<std::wstring> tellLines;
    std::wstring wrong; ///< the first argument that is none
};

Arguments readArguments()
{
    Arguments out;
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i) {
        const std::wstring word = words[i];
        const std::size_t equals = word.find(L'=');
        if (startsNoCase(word, L"--make-folder="))
            out.makeFolder = word.substr(equals + 1);
        else if (startsNoCase(word, L"--tell="))
            out.tellPipe = word.substr(equals + 1);
        else if (!out.tellPipe.empty())
            out.tellLines.push_back(word);
        else if (startsNoCase(word, L"--") && equals != std::wstring::npos)
            out.options.emplace_back(word.substr(2, equals - 2), word.substr(equals + 1));
        else if (startsNoCase(word, L"-s"))
            out.keyword = word.size() > 2 ? word.substr(2) : i + 1 < count ? words[++i] : L"";
        else
            out.wrong = word;
    }
    LocalFree(words);
    return out;
}

bool apply(Options& options, const Arguments& arguments)
{
    for (const auto& [name, value] : arguments.options)
        if (!setOption(options, name, value)) {
            std::fprintf(stderr, "waol: unknown option --%s=%s\n", toUtf8(name).c_str(),
                         toUtf8(value).c_str());
            return false;
        }
    if (!arguments.wrong.empty())
        std::fprintf(stderr, "waol: unknown argument %s\n", toUtf8(arguments.wrong).c_str());
    options.keyword = arguments.keyword.empty() ? options.keyword : arguments.keyword;
    return arguments.wrong.empty();
}

/// aol.exe only starts the waol.exe beside it, with what it was given.
bool startedBeside()
{
    const std::wstring self = programPath();
    const std::wstring folder = self.substr(0, self.rfind(L'\\'));
    const std::wstring program = folder + L"\\waol.exe";
    if (!sameNoCase(self, folder + L"\\aol.exe")
        || GetFileAttributesW(program.c_str()) == INVALID_FILE_ATTRIBUTES)
        return false;
    std::wstring line = GetCommandLineW();
    const bool quoted = line[0] == L'"';
    const std::size_t end = quoted ? line.find(L'"', 1) : line.find(L' ');
    const std::wstring rest = end == std::wstring::npos ? L"" : line.substr(end + quoted);
    line = L"\"" + program + L"\"" + rest;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        folder.c_str(), &start, &process))
        return false;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

/// A keyword goes to the AOL that runs already.
bool handedOver(const std::wstring& keyword)
{
    const HWND running = FindWindowW(L"AOL Frame25", nullptr);
    if (keyword.empty() || !running)
        return false;
    COPYDATASTRUCT data{1, static_cast<DWORD>(keyword.size() * sizeof(wchar_t)),
                        const_cast<wchar_t*>(keyword.c_str())};
    DWORD_PTR result = 0;
    SendMessageTimeoutW(running, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data), SMTO_ABORTIFHUNG,
                        5000, &result);
    SetForegroundWindow(running);
    return true;
}

int runAol(const Options& options)
{
    Aol& a = aol();
    a.options = options;
    a.words = Words(options.edition, options.version);
    a.transcript.open(options.transcript);
    IconButton::pressedByReturn = options.version >= 6;
    registerControlClasses();
    Document::registerClasses();
    Modal::registerClasses();
    Toolbar::registerClasses();
    RichText::registerClasses(options.wideEdits);
    auto* frame = new Frame;
    ShowWindow(frame->hwnd(), SW_SHOW);
    UpdateWindow(frame->hwnd());
    new SignOn(false);
    if (!options.signOnName.empty())
        a.signOn(options.signOnName);
    if (!options.pipe.empty())
        startPipe(options.pipe, frame->hwnd());
    if (!options.script.empty())
        startScript(options.script, frame->hwnd());
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (aol().frame && aol().frame->translate(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    a.transcript.add(L"end", L"", L"");
    return 0;
}

int start()
{
    const Arguments arguments = readArguments();
    if (!arguments.tellPipe.empty())
        return tell(arguments.tellPipe, arguments.tellLines);
    Options options = optionsOfFolder(programPath());
    // The edition and version first: they decide how the rest is when nothing is said.
    Options given = options;
    if (!apply(given, arguments))
        return 2;
    options.edition = given.edition;
    options.version = given.version;
    applyVersionHabits(options);
    applyFolderFile(options);
    apply(options, arguments);
    if (!arguments.makeFolder.empty())
        return makeAolFolder(arguments.makeFolder, options) ? 0 : 1;
    if (startedBeside() || handedOver(arguments.keyword))
        return 0;
    return runAol(options);
}

} // namespace
} // namespace aolhost

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    try {
        return aolhost::start();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "waol: %s\n", error.what());
        return 3;
    }
}
