#include "aolhost/Aol.h"
#include "aolhost/ImWindow.h"
#include "aolhost/MenuCommands.h"
#include "aolhost/Menus.h"
#include "aolhost/Pages.h"
#include "aolhost/Text.h"

namespace aolhost {
namespace {

/// AOL's addresses for a room and for an instant message.
constexpr const wchar_t* kRoomAddress = L"aol://2719:";
constexpr const wchar_t* kImAddress = L"aol://9293:";

std::wstring after(const std::wstring& text, wchar_t mark)
{
    const std::size_t at = text.rfind(mark);
    return at == std::wstring::npos ? std::wstring() : trimmed(text.substr(at + 1));
}

void openProfile(const std::wstring& who)
{
    new TextPage(aol().words.memberProfile(),
                 L"<B>Screen Name:</B> " + who + L"<BR><B>Location:</B> Here and there<BR>"
                     + L"<B>Hobbies:</B> Chatting, sounds, gardening<BR>"
                     + L"<B>Computer:</B> A 486 with a new sound card<BR>"
                     + L"<B>Quote:</B> <I>Be nice, or be quiet.</I>");
}

} // namespace

void Aol::openKeyword(const std::wstring& keyword)
{
    transcript.add(L"keyword", name, keyword);
    if (!online()) {
        options.keyword = keyword;
        return;
    }
    if (startsNoCase(keyword, L"profile"))
        openProfile(after(keyword, L':'));
    else if (startsNoCase(keyword, kRoomAddress))
        // Two numbers stand before the room's name: "2-2-Town Square".
        enterRoom(splitAt(keyword.substr(11), L'-').size() > 2
                      ? keyword.substr(keyword.find(L'-', keyword.find(L'-') + 1) + 1)
                      : after(keyword, L':'));
    else if (startsNoCase(keyword, L"room:"))
        enterRoom(trimmed(keyword.substr(5)));
    else if (startsNoCase(keyword, kImAddress) || sameNoCase(keyword, L"im"))
        new SendImWindow(after(keyword, L':'));
    else if (sameNoCase(keyword, L"chat"))
        runMenuCommand(kFindChat);
    else if (sameNoCase(keyword, L"mail"))
        runMenuCommand(kReadMail);
    else
        new TextPage(keyword, L"You asked for <B>" + keyword + L"</B>.");
}

} // namespace aolhost
