#include "aolhost/Aol.h"

#include "aolhost/ChatRoom.h"
#include "aolhost/Frame.h"
#include "aolhost/ImWindow.h"
#include "aolhost/Modal.h"
#include "aolhost/Pages.h"
#include "aolhost/SignOn.h"

#include <mmsystem.h>
#include <utility>

namespace aolhost {

Aol& aol()
{
    static Aol instance;
    return instance;
}

void Aol::signOn(const std::wstring& screenName)
{
    if (online())
        return;
    name = screenName;
    transcript.add(L"signon", name, L"");
    if (auto* screen = first<SignOn>())
        screen->close();
    new Welcome;
    frame->onlineChanged();
    play(L"welcome");
    if (!options.keyword.empty())
        openKeyword(std::exchange(options.keyword, {}));
}

void Aol::signOff()
{
    if (!online())
        return;
    transcript.add(L"signoff", name, L"");
    name.clear();
    play(L"goodbye");
    for (Document* document : std::vector<Document*>(documents))
        document->close();
    frame->onlineChanged();
    new SignOn(true);
}

ChatRoom* Aol::room() const
{
    return first<ChatRoom>();
}

ChatRoom& Aol::enterRoom(const std::wstring& roomName)
{
    if (ChatRoom* former = room())
        former->close();
    transcript.add(L"room", name, roomName);
    return *new ChatRoom(roomName);
}

bool Aol::receiveIm(const std::wstring& who, const std::wstring& html, bool internet)
{
    if (!imsOn) {
        transcript.add(L"imrefused", who, html);
        return false;
    }
    ImWindow* im = ImWindow::with(who);
    if (!im)
        im = new ImWindow(who, internet ? ImWindow::Kind::internet : ImWindow::Kind::from);
    im->receive(html);
    return true;
}

void Aol::switchIms(bool on)
{
    imsOn = on;
    transcript.add(L"ims", name, on ? L"on" : L"off");
    const std::wstring message = words.imsSwitched(on);
    if (options.answerModal)
        new MessageModal(words.product(), message, Picture::bell);
    else
        new TextPage(words.product(), message);
}

void Aol::receiveMail(const MailText& mail, bool openIt)
{
    transcript.add(L"mail", mail.from, mail.subject);
    mailBox.push_back(mail);
    play(L"gotmail");
    if (auto* box = first<MailBox>())
        box->refresh();
    if (openIt)
        new ReadMessage(ReadMessage::Kind::mail, mail.subject, mail);
}

void Aol::play(const wchar_t* sound) const
{
    if (options.sounds)
        PlaySoundW((options.folder + L"\\sounds\\" + sound + L".wav").c_str(), nullptr,
                   SND_FILENAME | SND_ASYNC | SND_NODEFAULT);
}

} // namespace aolhost
