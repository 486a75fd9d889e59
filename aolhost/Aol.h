#pragma once
// The stand-in as a whole: what it was told to be, who is signed on, which windows are open.
#include "aolhost/Mail.h"
#include "aolhost/Options.h"
#include "aolhost/Transcript.h"
#include "aolhost/Words.h"

#include <string>
#include <vector>

namespace aolhost {

class ChatRoom;
class Document;
class Frame;

struct Aol {
    Options options;
    Words words;
    Transcript transcript;
    Frame* frame = nullptr;              ///< null before it is made and after it is gone
    std::vector<Document*> documents;    ///< open ones, in order of opening
    std::wstring name;                   ///< the signed-on screen name; empty when signed off
    std::vector<std::wstring> sent;      ///< what the user sent to rooms, as typed
    std::vector<std::wstring> imsSent;   ///< "NAME: TEXT"
    std::vector<std::wstring> mailsSent; ///< "TO|COPY|SUBJECT|BODY" and "|FILE" for each attachment
    std::vector<std::wstring> postsSent; ///< "SUBJECT|BODY"
    std::vector<MailText> mailBox;
    bool imsOn = true;

    bool online() const { return !name.empty(); }
    void signOn(const std::wstring& screenName);
    void signOff();
    /// The open room; null when none is.
    ChatRoom* room() const;
    /// Leaves the room there is and opens another.
    ChatRoom& enterRoom(const std::wstring& roomName);
    /// Somebody sends an instant message; nothing comes while they are switched off.
    bool receiveIm(const std::wstring& who, const std::wstring& html, bool internet);
    /// "$im_on" and "$im_off", with AOL's answer window.
    void switchIms(bool on);
    void receiveMail(const MailText& mail, bool openIt);
    void openKeyword(const std::wstring& keyword);
    /// Plays one of AOL's own sounds when `options.sounds` is on.
    void play(const wchar_t* sound) const;

    template <class Kind>
    Kind* first() const
    {
        for (Document* document : documents)
            if (auto* kind = dynamic_cast<Kind*>(document))
                return kind;
        return nullptr;
    }
};

Aol& aol();

} // namespace aolhost
