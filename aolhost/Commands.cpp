#include "aolhost/Commands.h"

#include "aolhost/Aol.h"
#include "aolhost/ChatRoom.h"
#include "aolhost/Frame.h"
#include "aolhost/ImWindow.h"
#include "aolhost/MenuCommands.h"
#include "aolhost/Menus.h"
#include "aolhost/Pages.h"
#include "aolhost/RichText.h"
#include "aolhost/Text.h"

#include <stdexcept>

namespace aolhost {
namespace {

using Answer = std::wstring;

/// Refuses a command; the text is what its answer says after "error ".
struct Refusal {
    std::wstring reason;
};

struct Said {
    std::wstring who, text;
};

/// "NAME: TEXT"; blanks around the name and one after the colon do not count.
Said parseSaid(const std::wstring& argument)
{
    const std::size_t colon = argument.find(L':');
    if (colon == std::wstring::npos)
        throw Refusal{L"NAME: TEXT is what this command takes"};
    std::wstring text = argument.substr(colon + 1);
    if (!text.empty() && text[0] == L' ')
        text.erase(0, 1);
    return {trimmed(argument.substr(0, colon)), text};
}

ChatRoom& openRoom()
{
    ChatRoom* room = aol().room();
    if (!room)
        throw Refusal{L"no room is open"};
    return *room;
}

void needOnline()
{
    if (!aol().online())
        throw Refusal{L"not signed on"};
}

Answer joined(const std::vector<std::wstring>& items)
{
    std::wstring out = std::to_wstring(items.size());
    for (const std::wstring& item : items)
        out += L'\t' + escaped(item);
    return out;
}

std::wstring hex(HWND window)
{
    wchar_t text[16];
    wsprintfW(text, L"0x%X", reinterpret_cast<UINT_PTR>(window));
    return text;
}

Answer status(const std::wstring&)
{
    const Aol& a = aol();
    const ChatRoom* room = a.room();
    return L"edition=" + std::to_wstring(static_cast<int>(a.options.edition)) + L"\tversion="
           + std::to_wstring(a.options.version) + L"\tonline=" + (a.online() ? L"1" : L"0")
           + L"\tname=" + a.name + L"\troom=" + (room ? escaped(room->name()) : L"") + L"\tbuilt="
           + (room && room->built() ? L"1" : L"0") + L"\tframe=" + hex(a.frame->hwnd()) + L"\tmdi="
           + hex(a.frame->mdiClient()) + L"\troomwindow=" + hex(room ? room->hwnd() : nullptr)
           + L"\tdisplay=" + hex(room ? room->displayWindow() : nullptr) + L"\tinput="
           + hex(room ? room->inputWindow() : nullptr) + L"\tnotices="
           + std::to_wstring(room ? room->notices() : 0) + L"\tdocuments="
           + std::to_wstring(a.documents.size()) + L"\tsent=" + std::to_wstring(a.sent.size())
           + L"\timsent=" + std::to_wstring(a.imsSent.size()) + L"\tmailsent="
           + std::to_wstring(a.mailsSent.size()) + L"\tposted="
           + std::to_wstring(a.postsSent.size()) + L"\timson=" + (a.imsOn ? L"1" : L"0");
}

Answer people(const std::wstring& argument)
{
    ChatRoom& room = openRoom();
    if (argument.empty())
        return joined(room.people());
    const std::wstring who = argument.substr(1);
    if (argument[0] == L'+')
        room.add(who);
    else if (argument[0] == L'-')
        room.remove(who);
    else
        throw Refusal{L"+NAME or -NAME"};
    return {};
}

Answer say(const std::wstring& argument)
{
    const Said said = parseSaid(argument);
    openRoom().say(said.who, unescaped(said.text));
    return {};
}

/// "FROM-TO": the numbers of the lines.
Answer burstLines(const std::wstring& argument)
{
    const std::vector<std::wstring> ends = splitAt(argument, L'-');
    for (long i = numberOr(ends.front(), 1); i <= numberOr(ends.back(), 0); ++i)
        openRoom().burstLine(i);
    return {};
}

Answer fill(const std::wstring& argument)
{
    openRoom().fill(numberOr(argument, 0));
    return {};
}

Answer enterRoom(const std::wstring& argument)
{
    needOnline();
    return hex(aol().enterRoom(argument).hwnd());
}

Answer signOn(const std::wstring& argument)
{
    if (argument.empty())
        throw Refusal{L"a name is missing"};
    aol().signOn(argument);
    return {};
}

Answer receiveIm(const std::wstring& argument, bool internet)
{
    needOnline();
    const Said said = parseSaid(argument);
    const bool came = aol().receiveIm(said.who, unescaped(said.text), internet);
    return came ? hex(ImWindow::with(said.who)->hwnd()) : L"refused";
}

Answer imText(const std::wstring& argument)
{
    const ImWindow* im = ImWindow::with(argument);
    if (!im)
        throw Refusal{L"no such instant message"};
    return escaped(im->conversationText());
}

/// "FROM|SUBJECT|BODY" of a mail that comes now.
MailText parseMail(const std::wstring& argument)
{
    const std::vector<std::wstring> parts = splitAt(argument, L'|');
    if (parts.size() < 3)
        throw Refusal{L"FROM|SUBJECT|BODY is what this command takes"};
    SYSTEMTIME t;
    GetLocalTime(&t);
    wchar_t date[64];
    wsprintfW(date, L"%d/%d/%02d %d:%02d:%02d %s", t.wMonth, t.wDay, t.wYear % 100,
              t.wHour % 12 == 0 ? 12 : t.wHour % 12, t.wMinute, t.wSecond,
              t.wHour < 12 ? L"AM" : L"PM");
    MailText mail;
    mail.from = parts[0];
    mail.to = aol().name;
    mail.subject = parts[1];
    mail.body = unescaped(parts[2]);
    mail.date = parts.size() > 3 ? parts[3] : date;
    return mail;
}

Answer board(const std::wstring& argument)
{
    needOnline();
    const std::size_t bar = argument.find(L'|');
    if (bar == std::wstring::npos)
        throw Refusal{L"BOARD|FROM|SUBJECT|BODY is what this command takes"};
    return hex((new ReadMessage(ReadMessage::Kind::board, argument.substr(0, bar),
                                parseMail(argument.substr(bar + 1))))
                   ->hwnd());
}

Answer mail(const std::wstring& argument, bool openIt)
{
    needOnline();
    aol().receiveMail(parseMail(argument), openIt);
    return openIt ? hex(aol().documents.back()->hwnd()) : Answer();
}

Answer documents(const std::wstring&)
{
    std::vector<std::wstring> captions;
    for (const Document* document : aol().documents)
        captions.push_back(document->text());
    return joined(captions);
}

Document& documentCalled(const std::wstring& caption)
{
    for (Document* document : aol().documents)
        if (document->text().find(caption) != std::wstring::npos)
            return *document;
    throw Refusal{L"no such document"};
}

/// What a menu item does that needs no argument.
template <int id>
Answer menu(const std::wstring&)
{
    if (!runMenuCommand(id))
        throw Refusal{L"not signed on"};
    return {};
}

struct Command {
    const wchar_t* name;
    Answer (*run)(const std::wstring&);
};

const Command kCommands[] = {
    {L"signon", signOn},
    {L"signoff",
     [](const std::wstring&) {
         aol().signOff();
         return Answer();
     }},
    {L"room", enterRoom},
    {L"move",
     [](const std::wstring& a) {
         openRoom().move(a);
         return Answer();
     }},
    {L"leave",
     [](const std::wstring&) {
         openRoom().close();
         return Answer();
     }},
    {L"say", say},
    {L"host",
     [](const std::wstring& a) {
         openRoom().host(unescaped(a));
         return Answer();
     }},
    {L"burstlines", burstLines},
    {L"fill", fill},
    {L"clear",
     [](const std::wstring&) {
         openRoom().clearDisplay();
         return Answer();
     }},
    {L"people", people},
    {L"sent", [](const std::wstring&) { return joined(aol().sent); }},
    {L"display", [](const std::wstring&) { return escaped(openRoom().displayText()); }},
    {L"status", status},
    {L"im", [](const std::wstring& a) { return receiveIm(a, false); }},
    {L"internetim", [](const std::wstring& a) { return receiveIm(a, true); }},
    {L"imtext", imText},
    {L"imsent", [](const std::wstring&) { return joined(aol().imsSent); }},
    {L"sendim",
     [](const std::wstring& a) {
         needOnline();
         return hex((new SendImWindow(a))->hwnd());
     }},
    {L"mail", [](const std::wstring& a) { return mail(a, true); }},
    {L"newmail", [](const std::wstring& a) { return mail(a, false); }},
    {L"mailsent", [](const std::wstring&) { return joined(aol().mailsSent); }},
    {L"board", board},
    {L"posted", [](const std::wstring&) { return joined(aol().postsSent); }},
    {L"writemail", menu<kWriteMail>},
    {L"mailbox", menu<kReadMail>},
    {L"about", menu<kAbout>},
    {L"keyword",
     [](const std::wstring& a) {
         aol().openKeyword(a);
         return Answer();
     }},
    {L"build",
     [](const std::wstring&) {
         for (Document* document : std::vector<Document*>(aol().documents))
             document->buildWaiting();
         return Answer();
     }},
    {L"documents", documents},
    {L"activate",
     [](const std::wstring& a) {
         documentCalled(a).activate();
         return Answer();
     }},
    {L"close",
     [](const std::wstring& a) {
         documentCalled(a).close();
         return Answer();
     }},
};

/// A crash ends the process at once: the system's own box or debugger would keep it alive.
LONG WINAPI endAtOnce(EXCEPTION_POINTERS* what)
{
    TerminateProcess(GetCurrentProcess(), what->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

Answer runOption(const std::wstring& name, const std::wstring& value)
{
    if (!isRunTimeOption(name))
        throw Refusal{L"unknown command " + name};
    const Options before = aol().options;
    if (!setOption(aol().options, name, value))
        throw Refusal{L"unknown value " + value};
    if (!RichText::registerClasses(aol().options.wideEdits)) {
        aol().options = before;
        throw Refusal{L"rich edits are open"};
    }
    return {};
}

Answer run(const std::wstring& name, const std::wstring& argument)
{
    for (const Command& command : kCommands)
        if (name == command.name)
            return command.run(argument);
    return runOption(name, argument);
}

std::wstring answerTo(const std::wstring& name, const std::wstring& argument)
{
    try {
        const Answer answer = run(name, argument);
        return answer.empty() ? L"ok" : L"ok " + answer;
    } catch (const Refusal& refusal) {
        return L"error " + refusal.reason;
    } catch (const std::exception& error) {
        return L"error " + fromUtf8(error.what());
    }
}

} // namespace

void runRequest(Request& request) noexcept
{
    const std::size_t blank = request.line.find(L' ');
    const std::wstring name = lowered(request.line.substr(0, blank));
    const std::wstring argument =
        blank == std::wstring::npos ? std::wstring() : request.line.substr(blank + 1);
    const bool hang = name == L"hang";
    const bool end = name == L"crash" || name == L"exit";
    request.answer = hang || end ? L"ok" : answerTo(name, argument);
    // The request belongs to the waiting thread: it is gone once that is told.
    SetEvent(request.answered);
    if (hang)
        Sleep(static_cast<DWORD>(numberOr(argument, 1000)));
}

bool endsAol(const std::wstring& line)
{
    return sameNoCase(line, L"crash") || sameNoCase(line, L"exit");
}

void endAol(bool crash)
{
    if (!crash) {
        PostMessageW(aol().frame->hwnd(), WM_CLOSE, 0, 0);
        return;
    }
    SetUnhandledExceptionFilter(endAtOnce);
    *static_cast<volatile int*>(nullptr) = 0;
}

} // namespace aolhost
