#include "support/aolhost_win.h"

#include "base/files.h"
#include "base/text.h"

#include <stdexcept>

namespace velora::test {
namespace {

std::wstring freshName()
{
    static int count = 0;
    return L"aolhost-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++count);
}

std::wstring tempFolder()
{
    wchar_t path[MAX_PATH + 1];
    return {path, GetTempPathW(MAX_PATH + 1, path)};
}

[[noreturn]] void fail(const std::wstring& what)
{
    throw std::runtime_error("AOL stand-in: " + toUtf8(what));
}

std::wstring argument(const std::wstring& name, const std::wstring& value)
{
    return L" \"--" + name + L"=" + value + L"\"";
}

void removeFolder(const std::wstring& folder)
{
    for (const FileEntry& entry : listFolder(folder)) {
        const std::wstring path = folder + L"\\" + entry.name;
        if (entry.folder)
            removeFolder(path);
        else
            DeleteFileW(path.c_str());
    }
    RemoveDirectoryW(folder.c_str());
}

} // namespace

bool waitFor(const std::function<bool()>& condition, unsigned ms)
{
    const DWORD start = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - start > ms)
            return false;
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
    }
    return true;
}

std::wstring classOf(HWND window)
{
    wchar_t name[256];
    return {name, static_cast<std::size_t>(GetClassNameW(window, name, 256))};
}

std::wstring textOf(HWND window)
{
    constexpr UINT limit = 5000;
    DWORD_PTR length = 0;
    if (!SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, limit, &length))
        return {};
    std::wstring out(length + 1, L'\0');
    if (!SendMessageTimeoutW(window, WM_GETTEXT, out.size(), reinterpret_cast<LPARAM>(out.data()),
                             SMTO_ABORTIFHUNG, limit, &length))
        return {};
    out.resize(length);
    return out;
}

std::vector<HWND> childrenOf(HWND parent)
{
    std::vector<HWND> out;
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        out.push_back(child);
    return out;
}

HWND childOfClass(HWND parent, std::wstring_view className, int which)
{
    for (const HWND child : childrenOf(parent))
        if (equalNoCase(classOf(child), className) && --which == 0)
            return child;
    return nullptr;
}

HWND childOfText(HWND parent, std::wstring_view text)
{
    for (const HWND child : childrenOf(parent))
        if (textOf(child) == text)
            return child;
    return nullptr;
}

AolHost::AolHost(const Options& options) : options_(options)
{
    const std::wstring name = freshName();
    folder_ = tempFolder() + name;
    transcript_ = folder_ + L"\\transcript.txt";
    const Process maker(buildFolder() + L"\\waol.exe",
                        argument(L"make-folder", folder_)
                            + argument(L"edition", std::to_wstring(options.edition))
                            + argument(L"version", std::to_wstring(options.version))
                            + argument(L"names", options.names),
                        buildFolder());
    if (!maker.ended(60000) || maker.exitCode() != 0)
        fail(L"no AOL folder was made");
    try {
        if (options.run)
            start();
    } catch (...) {
        kill();
        removeFolder(folder_);
        throw;
    }
}

AolHost::~AolHost()
{
    kill();
    removeFolder(folder_);
}

void AolHost::kill()
{
    pipe_.reset();
    process_.kill();
}

void AolHost::start()
{
    pipeName_ = freshName();
    std::wstring line = argument(L"pipe", pipeName_) + argument(L"transcript", transcript_)
                        + argument(L"mdi", options_.mdiCreation)
                        + argument(L"late", std::to_wstring(options_.lateMs))
                        + argument(L"edits", options_.unicodeEdits ? L"w" : L"a");
    if (!options_.signOn.empty())
        line += argument(L"signon", options_.signOn);
    for (const std::wstring& more : options_.more)
        line += L" \"" + more + L"\"";
    process_ = Process(folder_ + L"\\waol.exe", line, folder_);
    connect();
    frame_ = handleOf(L"frame");
}

void AolHost::connect()
{
    pending_.clear();
    const std::wstring path = L"\\\\.\\pipe\\" + pipeName_;
    const bool open = waitFor(
        [&] {
            pipe_.reset(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr));
            return pipe_ || !process_.running();
        },
        60000);
    if (!open || !pipe_)
        fail(L"its pipe did not open");
}

std::wstring AolHost::command(std::wstring_view line)
{
    const std::string bytes = toUtf8(line) + "\n";
    DWORD count = 0;
    if (!WriteFile(pipe_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr))
        fail(L"gone before the command " + std::wstring(line));
    char buffer[8192];
    std::size_t end;
    while ((end = pending_.find('\n')) == std::string::npos) {
        DWORD there = 0;
        if (!PeekNamedPipe(pipe_.get(), nullptr, 0, nullptr, &there, nullptr))
            fail(L"gone during the command " + std::wstring(line));
        if (there == 0) {
            // AOL may be asking this process something just now, and can't answer before it knows.
            MSG message;
            PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 1, QS_SENDMESSAGE);
            continue;
        }
        if (!ReadFile(pipe_.get(), buffer, sizeof buffer, &count, nullptr) || count == 0)
            fail(L"gone during the command " + std::wstring(line));
        pending_.append(buffer, count);
    }
    const std::wstring answer = fromUtf8(pending_.substr(0, end));
    pending_.erase(0, end + 1);
    if (answer != L"ok" && answer.compare(0, 3, L"ok ") != 0)
        fail(std::wstring(line) + L": " + answer);
    return answer.size() > 3 ? answer.substr(3) : std::wstring();
}

std::wstring AolHost::unescaped(std::wstring_view text)
{
    std::wstring out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const wchar_t c = text[++i];
        out += c == L'n' ? L'\n' : c == L'r' ? L'\r' : c == L't' ? L'\t' : c;
    }
    return out;
}

std::vector<std::wstring> AolHost::listOf(const std::wstring& answer)
{
    std::vector<std::wstring> items = split(answer, L'\t');
    items.erase(items.begin());
    for (std::wstring& item : items)
        item = unescaped(item);
    return items;
}

std::map<std::wstring, std::wstring> AolHost::status()
{
    std::map<std::wstring, std::wstring> out;
    for (const std::wstring& part : split(command(L"status"), L'\t')) {
        const std::size_t equals = part.find(L'=');
        if (equals != std::wstring::npos)
            out[part.substr(0, equals)] = unescaped(part.substr(equals + 1));
    }
    return out;
}

std::vector<std::wstring> AolHost::sent()
{
    return listOf(command(L"sent"));
}

std::wstring AolHost::display()
{
    return unescaped(command(L"display"));
}

HWND AolHost::handleOf(const wchar_t* name)
{
    return reinterpret_cast<HWND>(std::stoul(status()[name], nullptr, 16));
}

HWND AolHost::mdi()
{
    return handleOf(L"mdi");
}

HWND AolHost::enterRoom(const std::wstring& name)
{
    command(L"room " + name);
    if (!waitFor([&] { return status()[L"built"] == L"1"; }))
        fail(L"the room was not built");
    return roomWindow();
}

HWND AolHost::roomWindow()
{
    return handleOf(L"roomwindow");
}

HWND AolHost::displayWindow()
{
    return handleOf(L"display");
}

HWND AolHost::inputWindow()
{
    return handleOf(L"input");
}

HWND AolHost::document(std::wstring_view captionPart)
{
    for (const HWND child : childrenOf(mdi()))
        if (textOf(child).find(captionPart) != std::wstring::npos)
            return child;
    return nullptr;
}

HWND AolHost::dialog() const
{
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, L"_AOL_Modal", nullptr))) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == processId())
            return window;
    }
    return nullptr;
}

bool AolHost::ended(unsigned ms)
{
    return waitFor([&] { return !process_.running(); }, ms);
}

} // namespace velora::test
