#include "aolhost/Words.h"

namespace aolhost {
namespace {

struct Entry {
    const wchar_t *english, *german, *french;
};

const Entry kWords[] = {
    {L"&File", L"&Datei", L"&Fichier"},
    {L"&Edit", L"&Bearbeiten", L"&Edition"},
    {L"&Mail", L"&eMail", L"&Courrier"},
    {L"&People", L"&Chat", L"&Dialogue"},
    {L"&Window", L"&Fenster", L"Fe&nêtre"},
    {L"&Sign Off", L"&Abmelden", L"&Déconnexion"},
    {L"&Help", L"&Hilfe", L"&Aide"},
    {L"E&xit", L"&Beenden", L"&Quitter"},
    {L"&Print...", L"&Drucken...", L"&Imprimer..."},
    {L"Cu&t", L"&Ausschneiden", L"Co&uper"},
    {L"&Copy", L"&Kopieren", L"&Copier"},
    {L"&Paste", L"&Einfügen", L"C&oller"},
    {L"Select &All", L"&Alles markieren", L"Tout &sélectionner"},
    {L"&Read Mail", L"eMail &lesen", L"&Lire le courrier"},
    {L"&Write Mail", L"eMail &schreiben", L"&Ecrire un courrier"},
    {L"&Chat Room", L"&Chatraum", L"&Salon"},
    {L"Send &Instant Message", L"&Telegramm schicken", L"Envoyer un &Message Eclair"},
    {L"&Member Profile", L"&Mitgliedsprofil", L"Carte de &visite"},
    {L"&Cascade", L"Ü&berlappend", L"&Cascade"},
    {L"&Tile", L"&Nebeneinander", L"&Mosaïque"},
    {L"&Contents", L"&Inhalt", L"&Sommaire"},
    {L"Read", L"Lesen", L"Lire"},
    {L"Write", L"Schreiben", L"Ecrire"},
    {L"Mail Center", L"eMail-Center", L"Courrier"},
    {L"Print", L"Drucken", L"Imprimer"},
    {L"My Files", L"Dateien", L"Fichiers"},
    {L"My AOL", L"Mein AOL", L"Mon AOL"},
    {L"Favorites", L"Favoriten", L"Favoris"},
    {L"Internet", L"Internet", L"Internet"},
    {L"Channels", L"Kanäle", L"Chaînes"},
    {L"People", L"Chat", L"Dialogue"},
    {L"Quotes", L"Börse", L"Bourse"},
    {L"Find", L"Suchen", L"Chercher"},
    {L"Keyword", L"Kennwort", L"Mot-clé"},
    {L"Go", L"Los", L"Aller"},
    {L"Sign On", L"Anmelden", L"Connexion"},
    {L"Select Screen Name:", L"Name auswählen:", L"Choisissez un pseudo :"},
    {L"Enter Password:", L"Passwort eingeben:", L"Mot de passe :"},
    {L"Select Location:", L"Standort auswählen:", L"Lieu :"},
    {L"Home", L"Zuhause", L"Maison"},
    {L"Setup", L"Einstellungen", L"Réglages"},
    {L"Access Numbers", L"Zugangsnummern", L"Numéros d'accès"},
    {L"people here", L"Personen hier", L"personnes ici"},
    {L"Find a Chat", L"Chat suchen", L"Autre salon"},
    {L"Private Chat", L"Privater Chat", L"Salon privé"},
    {L"Notify AOL", L"AOL benachrichtigen", L"Prévenir AOL"},
    {L"Chat Rooms", L"Chaträume", L"Salons"},
    {L"To:", L"An:", L"A :"},
    {L"Copy To:", L"Kopie an:", L"Copie :"},
    {L"Subject:", L"Betreff:", L"Objet :"},
    {L"Send Now", L"Sofort senden", L"Envoyer"},
    {L"Send Later", L"Später senden", L"Plus tard"},
    {L"Address Book", L"Adressbuch", L"Adresses"},
    {L"Cancel", L"Abbrechen", L"Annuler"},
    {L"Close", L"Schließen", L"Fermer"},
    {L"Delete", L"Löschen", L"Effacer"},
    {L"Date:", L"Datum:", L"Date :"},
    {L"From:", L"Von:", L"De :"},
    {L"Get Profile", L"Profil", L"Profil"},
    {L"Notify", L"Melden", L"Prévenir"},
    {L"Request Return Receipt", L"Empfangsbestätigung", L"Accusé de réception"},
    {L"You've Got Mail", L"Sie haben Post", L"Vous avez du courrier"},
    {L"Today on AOL", L"Heute bei AOL", L"Aujourd'hui sur AOL"},
    {L"Chat", L"Chat", L"Dialogue"},
    {L"Buddy List", L"Buddy-Liste", L"Ma liste"},
    {L"Message:", L"Nachricht:", L"Message :"},
    {L"Attach...", L"Anhängen...", L"Joindre..."},
    {L"Detach", L"Entfernen", L"Retirer"},
};

} // namespace

std::wstring Words::tr(const wchar_t* english) const
{
    if (german() || french())
        for (const Entry& entry : kWords)
            if (std::wstring_view(entry.english) == english)
                return german() ? entry.german : entry.french;
    return english;
}

std::wstring Words::pick(const wchar_t* english, const wchar_t* germanText,
                         const wchar_t* frenchText) const
{
    return german() ? germanText : french() ? frenchText : english;
}

std::wstring Words::frame() const
{
    switch (edition_) {
    case Edition::unitedStates: return L"America  Online";
    case Edition::canada: return L"AOL Canada";
    case Edition::france: return L"AOL est un service de Cegetel";
    default: return L"AOL";
    }
}

std::wstring Words::product() const
{
    switch (edition_) {
    case Edition::unitedStates: return L"America Online";
    case Edition::canada: return L"AOL Canada";
    default: return L"AOL";
    }
}

std::wstring Words::aboutItem() const
{
    switch (edition_) {
    case Edition::unitedStates: return L"&About America Online";
    case Edition::canada: return version_ >= 7 ? L"&About AOL" : L"&About AOL Canada";
    case Edition::germany: return L"&Über AOL " + std::to_wstring(version_) + L".0";
    case Edition::france: return L"A &propos d'AOL";
    default: return L"&About AOL";
    }
}

std::wstring Words::writeMail() const
{
    switch (edition_) {
    case Edition::unitedKingdom: return L"Write Email";
    case Edition::australia: return L"Write e-mail";
    default: return pick(L"Write Mail", L"eMail schreiben", L"Rédiger un courrier");
    }
}

std::wstring Words::signOnWindow() const
{
    return pick(L"Sign On", L"Anmelden", L"Connexion");
}

std::wstring Words::signOffWindow() const
{
    switch (edition_) {
    case Edition::unitedStates: return L"Goodbye from America Online!";
    case Edition::unitedKingdom:
        return version_ >= 7   ? L"Goodbye from AOL! "
               : version_ == 6 ? L"Goodbye from AOL"
                               : L"Goodbye from AOL!";
    case Edition::canada: return L"Goodbye from AOL Canada!";
    default: return pick(L"Goodbye from AOL", L"Bis bald!", L"A bientôt sur AOL");
    }
}

std::wstring Words::welcome(const std::wstring& name) const
{
    return pick(L"Welcome, ", L"Willkommen, ", L"Bienvenue, ") + name + L"!";
}

std::wstring Words::attach() const
{
    return pick(L"Attach", L"Anhängen", L"Fichier");
}

std::wstring Words::attachDialog() const
{
    return pick(L"Attachments", L"eMail-Anhang", L"Fichiers joints");
}

std::wstring Words::imFrom(const std::wstring& name, bool unread, bool plainFrench) const
{
    const std::wstring english = version_ >= 6 ? L"IM From: " : L"Instant Message From: ";
    if (german())
        return (unread ? L"> Telegramm von: " : L"Telegramm von: ") + name;
    if (french())
        return (unread ? L">" : L"")
               + std::wstring(plainFrench ? L"Message Eclair de : " : L"Message éclair de: ")
               + name;
    return (unread ? L">" : L"") + english + name;
}

std::wstring Words::imTo(const std::wstring& name) const
{
    if (german())
        return (version_ == 6 ? L"Telegramm an: " : L"Telegramm von: ") + name;
    if (french())
        return L"Message éclair de: " + name;
    return (version_ >= 6 ? L"IM To: " : L"Instant Message To: ") + name;
}

std::wstring Words::internetFrom(const std::wstring& name, bool unread) const
{
    if (version_ < 6 || german() || french())
        return imFrom(name, unread, false);
    return (unread ? L">Internet Message From: " : L"Internet Message From: ") + name;
}

std::wstring Words::internetUser() const
{
    return pick(L"Internet user", L"Internet-Anwender", L"L'internaute");
}

std::wstring Words::sendIm() const
{
    return pick(L"Send Instant Message", L"Telegramm schicken", L"Envoyer un Message Eclair");
}

std::wstring Words::respond() const
{
    if (version_ >= 6 && !german() && !french())
        return L"Click here to reply";
    return pick(L"Respond", L"Antworten", L"Répondre");
}

std::wstring Words::available() const
{
    return pick(L"Available?", L"Online?", L"Disponible?");
}

std::wstring Words::imsSwitched(bool on) const
{
    if (on)
        return pick(L"You are now accepting Instant Messages. Members can check to see if you are "
                    L"available.",
                    L"Sie empfangen jetzt wieder Telegramme. Wer fragt \"Online?\", sieht Sie.",
                    L"Vous recevez de nouveau les Messages éclair. A la question \"Disponible?\", "
                    L"AOL répond oui.");
    return pick(L"You are now ignoring all Instant Messages. Members who check to see if you are "
                L"available will be told so.",
                L"Sie empfangen jetzt keine Telegramme. Wer fragt \"Online?\", erfährt es.",
                L"Vous ignorez tous les Messages éclair. A la question \"Disponible?\", AOL répond "
                L"non.");
}

std::wstring Words::reply() const
{
    return pick(L"Reply", L"Antworten", L"Répondre");
}

std::wstring Words::replyAll() const
{
    return pick(L"Reply All", L"Allen antworten", L"Répondre à tous");
}

std::wstring Words::forward() const
{
    return pick(L"Forward", L"Weiterleiten", L"Faire suivre");
}

std::wstring Words::forwardPrefix() const
{
    return pick(L"Fwd: ", L"Wtr: ", L"Fwd: ");
}

std::wstring Words::send() const
{
    return pick(L"Send", L"Senden", L"Envoyer");
}

std::wstring Words::memberProfile() const
{
    return pick(L"Member Profile", L"Member Profile", L"Carte de visite");
}

std::wstring Words::findChat() const
{
    return tr(L"Find a Chat");
}

std::wstring Words::guest() const
{
    return pick(L"Guest", L"Gast", L"Invité");
}

wchar_t Words::findLetter() const
{
    return german() ? L'r' : french() ? L'c' : L'f';
}

} // namespace aolhost
