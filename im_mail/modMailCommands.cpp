#include "im_mail/modMailCommands.h"

#include "base/secret.h"
#include "base/text.h"
#include "base/trap.h"
#include "im_mail/modMail.h"

namespace velora {
namespace {

constexpr char kModule[] = "modMailCommands";
/// The user may have typed between our change and its undoing: each word is a change of its own.
constexpr int kMostUndos = 20;

/// What is to be encrypted: the place and the text that stands there.
struct Chosen {
    TextRange range;
    std::wstring text;
    bool whole = false;
    ~Chosen() { wipe(text); }
};

bool readChosen(MailBody& body, Chosen& chosen)
{
    const auto range = body.selection();
    auto text = body.selectedText();
    if (!range || !text)
        return false;
    chosen.range = *range;
    wipe(chosen.text);
    chosen.text.swap(*text);
    return true;
}

/// True when the same text still stands at the same place; it is selected then.
bool stillThere(MailBody& body, const Chosen& chosen)
{
    if (!body.select(chosen.range))
        return false;
    auto text = body.selectedText();
    if (!text)
        return false;
    const WipeOnExit wipeText(*text);
    return *text == chosen.text;
}

bool holds(MailBody& body, std::wstring_view part)
{
    auto text = body.text();
    if (!text)
        return false;
    const WipeOnExit wipeText(*text);
    return text->find(part) != text->npos;
}

bool isText(MailBody& body, const std::wstring& text)
{
    auto present = body.text();
    if (!present)
        return false;
    const WipeOnExit wipePresent(*present);
    return *present == text;
}

/// Brings the mail back to what it was. The box's own undo keeps fonts and colours; where it has
/// none, the text at least comes back.
bool restore(MailBody& body, const std::wstring& before)
{
    for (int i = 0; i < kMostUndos; ++i) {
        if (isText(body, before))
            return true;
        if (!body.undo())
            break;
    }
    return body.selectAll() && body.replaceSelection(before) && isText(body, before);
}

/// Puts in what replaces the selection, then the notice. The box may refuse or cut what it gets.
bool putIn(MailBody& body, const std::wstring& envelope, bool notice)
{
    if (!body.replaceSelection(envelope) || !holds(body, envelope))
        return false;
    if (!notice)
        return true;
    auto text = body.text();
    if (!text)
        return false;
    const WipeOnExit wipeText(*text);
    if (holdsNotice(*text))
        return true;
    // A full box may cut its end, and that is the envelope's.
    return body.select({0, 0}) && body.replaceSelection(decryptNotice())
           && holds(body, decryptNotice()) && holds(body, envelope);
}

/// Lets the user choose text and password; `done` when there is something to encrypt.
EncryptResult ask(MailBody& body, const EncryptQuestions& questions, Chosen& chosen,
                  std::wstring& password)
{
    if (!readChosen(body, chosen))
        return EncryptResult::failed;
    const TextRange before = chosen.range;
    const auto stop = [&](EncryptResult result) {
        if (chosen.whole)
            body.select(before);
        return result;
    };
    if (trimView(chosen.text).empty()) {
        if (!questions.wholeMail())
            return EncryptResult::cancelled;
        chosen.whole = true;
        if (!body.selectAll() || !readChosen(body, chosen))
            return stop(EncryptResult::failed);
        if (trimView(chosen.text).empty())
            return stop(EncryptResult::cancelled);
    }
    std::wstring entered = questions.password();
    const WipeOnExit wipeEntered(entered);
    password.assign(trimView(entered));
    return password.empty() ? stop(EncryptResult::cancelled) : EncryptResult::done;
}

} // namespace

EncryptedMail::~EncryptedMail()
{
    wipe(before);
}

EncryptResult encryptMail(MailBody& body, const EncryptQuestions& questions, bool notice,
                          EncryptedMail& undo)
{
    return trap(
        kModule,
        [&] {
            Chosen chosen;
            std::wstring password;
            password.reserve(64); // not moved while it grows: nothing of it is left behind
            const WipeOnExit wipePassword(password);
            if (const EncryptResult asked = ask(body, questions, chosen, password);
                asked != EncryptResult::done)
                return asked;
            std::wstring plain(trimView(chosen.text));
            const WipeOnExit wipePlain(plain);
            const std::wstring envelope = EncryptMailText(plain, password);
            if (envelope.empty())
                return EncryptResult::failed;
            if (envelope.size() >= kMostMailCharacters)
                return EncryptResult::tooLong;
            // The user was free to go on in AOL while the password was asked for.
            if (!stillThere(body, chosen))
                return EncryptResult::changed;
            auto before = body.text();
            if (!before)
                return EncryptResult::failed;
            const WipeOnExit wipeBefore(*before);
            if (!putIn(body, envelopeForMail(envelope), notice)) {
                restore(body, *before);
                return EncryptResult::failed;
            }
            wipe(undo.before);
            undo.before.swap(*before);
            undo.after = body.text().value_or(std::wstring());
            return EncryptResult::done;
        },
        EncryptResult::failed);
}

bool undoEncryption(MailBody& body, const EncryptedMail& encrypted)
{
    return trap(
        kModule,
        [&] {
            return !encrypted.after.empty() && isText(body, encrypted.after)
                   && restore(body, encrypted.before);
        },
        false);
}

EncryptResult replaceSelected(MailBody& body,
                              const std::function<std::wstring(std::wstring)>& change)
{
    return trap(
        kModule,
        [&] {
            const auto before = body.text();
            const auto selected = body.selectedText();
            if (!before || !selected)
                return EncryptResult::failed;
            if (trimView(*selected).empty())
                return EncryptResult::cancelled;
            const std::wstring changed = change(*selected);
            if (before->size() - selected->size() + changed.size() >= kMostMailCharacters)
                return EncryptResult::tooLong;
            if (body.replaceSelection(changed) && holds(body, changed))
                return EncryptResult::done;
            restore(body, *before);
            return EncryptResult::failed;
        },
        EncryptResult::failed);
}

} // namespace velora
