#include "core/modCaptions.h"

#include <algorithm>

namespace velora {

namespace {

struct Captions {
    const wchar_t* writeMail;
    const wchar_t* frame;
    const wchar_t* name;
    const wchar_t* signOn;
    const wchar_t* welcome;
    const wchar_t* attach;
    const wchar_t* attachments;
    const wchar_t* profile;
    const wchar_t *reply, *replyAll, *forward;
    wchar_t findLetter;
};

constexpr Captions kCaptions[kEditions] = {
    {L"Write Mail", L"America  Online", L"America Online", L"Sign On", L"Welcome,", L"Attach",
     L"Attachments", L"Member Profile", L"Reply", L"Reply All", L"Forward", L'f'},
    {L"Write Email", L"AOL", L"AOL", L"Sign On", L"Welcome,", L"Attach", L"Attachments",
     L"Member Profile", L"Reply", L"Reply All", L"Forward", L'f'},
    {L"Write Mail", L"AOL Canada", L"AOL Canada", L"Sign On", L"Welcome,", L"Attach",
     L"Attachments", L"Member Profile", L"Reply", L"Reply All", L"Forward", L'f'},
    {L"Write e-mail", L"AOL", L"AOL", L"Sign On", L"Welcome,", L"Attach", L"Attachments",
     L"Member Profile", L"Reply", L"Reply All", L"Forward", L'f'},
    {L"eMail schreiben", L"AOL", L"AOL", L"Anmelden", L"Willkommen,", L"Anh\u00E4ngen",
     L"eMail-Anhang", L"Member Profile", L"Antworten", L"Allen antworten", L"Weiterleiten", L'r'},
    {L"R\u00E9diger un courrier", L"AOL est un service de Cegetel", L"AOL", L"Connexion",
     L"Bienvenue,", L"Fichier", L"Fichiers joints", L"Carte de visite", L"R\u00E9pondre",
     L"R\u00E9pondre \u00E0 tous", L"Faire suivre", L'c'},
};

const Captions& of(int edition)
{
    return kCaptions[edition > 0 && edition < kEditions ? edition : kUnitedStates];
}

} // namespace

std::wstring sendImMenuCaption(int edition)
{
    return edition == kGermany  ? L"Telegramm schicken"
           : edition == kFrance ? L"Envoyer un Message Eclair"
                                : L"Send Instant Message";
}

std::wstring writeMailCaption(int edition)
{
    return of(edition).writeMail;
}

std::wstring frameCaption(int edition)
{
    return of(edition).frame;
}

std::wstring aolName(int edition)
{
    return of(edition).name;
}

std::wstring signOnCaption(int edition)
{
    return of(edition).signOn;
}

std::wstring welcomePrefix(int edition)
{
    return of(edition).welcome;
}

std::wstring attachCaption(int edition)
{
    return of(edition).attach;
}

std::wstring attachmentsCaption(int edition)
{
    return of(edition).attachments;
}

std::wstring profileCaption(int edition)
{
    return of(edition).profile;
}

std::wstring replyCaption(int edition)
{
    return of(edition).reply;
}

std::wstring replyAllCaption(int edition)
{
    return of(edition).replyAll;
}

std::wstring forwardCaption(int edition)
{
    return of(edition).forward;
}

wchar_t findWindowLetter(int edition)
{
    return of(edition).findLetter;
}

std::wstring aboutMenuCaption(int edition, int version)
{
    switch (edition) {
    case kUnitedKingdom:
    case kAustralia: return L"&About AOL";
    case kCanada: return version == 7 ? L"&About AOL" : L"&About AOL Canada";
    case kGermany: return L"&\u00DCber AOL " + std::to_wstring(std::clamp(version, 3, 7)) + L".0";
    case kFrance: return L"A &propos d'AOL";
    default: return L"&About America Online";
    }
}

std::wstring signOffCaption(int edition, int version)
{
    switch (edition) {
    case kUnitedKingdom:
        if (version == 6)
            return L"Goodbye from AOL";
        return version == 7 ? L"Goodbye from AOL! " : L"Goodbye from AOL!";
    case kCanada: return L"Goodbye from AOL Canada!";
    case kAustralia: return L"Goodbye from AOL";
    case kGermany: return L"Bis bald!";
    case kFrance: return L"A bient\u00F4t sur AOL";
    default: return L"Goodbye from America Online!";
    }
}

std::wstring imReceivedPattern(int edition, int version)
{
    switch (edition) {
    case kGermany: return L"*Telegramm von: *";
    case kFrance: return L"*Message \u00E9clair de: *";
    default: return version < 6 ? L"*Instant Message From: *" : L"*IM From: *";
    }
}

std::wstring imSentPattern(int edition, int version)
{
    switch (edition) {
    case kGermany: return version == 6 ? L"*Telegramm an: *" : imReceivedPattern(edition, version);
    case kFrance: return imReceivedPattern(edition, version);
    default: return version < 6 ? L"*Instant Message To: *" : L"*IM To: *";
    }
}

std::wstring internetImPattern(int edition, int version)
{
    if (edition == kGermany || edition == kFrance || version < 6)
        return imReceivedPattern(edition, version);
    return L"*Internet Message From: *";
}

} // namespace velora
