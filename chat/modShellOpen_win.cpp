#include "base/files.h"
#include "base/trap.h"
#include "base/win.h"
#include "chat/modShellOpen.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modMain.h"

#include <shellapi.h>

namespace velora {
namespace {

constexpr char kModule[] = "modShellOpen";
/// ShellExecute answers an error up to this number.
constexpr INT_PTR kShellErrors = 32;

bool shellOpenWindows(const std::wstring& file, const std::wstring& arguments)
{
    const auto answer = reinterpret_cast<INT_PTR>(
        ShellExecuteW(nullptr, L"open", file.c_str(),
                      arguments.empty() ? nullptr : arguments.c_str(), nullptr, SW_SHOWNORMAL));
    return answer > kShellErrors;
}

/// The program that shows pages. The system's own opening of a file's address forgets the place in
/// the page.
std::wstring pageProgram(const std::wstring& page)
{
    wchar_t program[MAX_PATH] = {};
    const auto answer = reinterpret_cast<INT_PTR>(FindExecutableW(page.c_str(), nullptr, program));
    return answer > kShellErrors ? program : L"";
}

} // namespace

std::function<bool(const std::wstring&, const std::wstring&)> shellOpen = shellOpenWindows;

bool openHelp(std::wstring_view place)
{
    return trap(
        kModule,
        [&] {
            const std::wstring page = AppPath() + L"\\help\\index.html";
            if (!fileExists(page)) {
                MsgBoxEx(L"~B~CRThe help file is missing!~B~CN~N ~NPlease run the set-up program "
                         L"again to put it back.",
                         kMsgExclamation, L"Help");
                return false;
            }
            const std::wstring program = pageProgram(page);
            const std::wstring address = fileAddress(page, place);
            return (!program.empty() && shellOpen(program, L"\"" + address + L"\""))
                   || shellOpen(page, L"");
        },
        false);
}

bool openInBrowser(const std::wstring& address)
{
    return trap(
        kModule,
        [&] {
            const std::wstring safe = browserAddress(address);
            if (!safe.empty() && shellOpen(safe, L""))
                return true;
            MsgBoxEx(L"~B~CRCannot open this address!~B~CN~N ~N" + literal(address.substr(0, 200)),
                     kMsgExclamation, L"Chat Keywords");
            return false;
        },
        false);
}

bool openAolKeyword(const std::wstring& keyword)
{
    return trap(
        kModule,
        [&] {
            const std::wstring argument = aolKeywordArgument(keyword);
            if (argument.empty())
                return false;
            if (!aol().folder.empty() && shellOpen(aol().folder + L"\\waol.exe", argument))
                return true;
            MsgBoxEx(L"~B~CRCannot open the keyword!~B~CN~N ~NAOL's program was not found in "
                     L"~B"
                         + literal(aol().folder) + L"~B.",
                     kMsgExclamation, L"Chat Keywords");
            return false;
        },
        false);
}

} // namespace velora
