// The wav list: sounds in mails, the list for others, deleting, entries whose files are gone.
#include "base/files.h"
#include "base/safename.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modMain.h"
#include "hook/aolSend.h"
#include "sounds/frmWavs.h"
#include "sounds/modFavWavs.h"
#include "sounds/modListText.h"
#include "sounds/modMailAttach.h"
#include "sounds/modPlayback.h"
#include "sounds/modShellFiles.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmWavs";
constexpr wchar_t kTitle[] = L"Wav List";
constexpr wchar_t kNoMail[] =
    L"~B~CRVelora was unable to open an E-Mail window.~B~CN~N ~NPlease open an E-Mail by pressing "
    L"~B~CBCTRL+M~B~CN and try this operation again.";

} // namespace

bool frmWavs::fileThere(const Chosen& sound)
{
    const WavSource from = sources_[sound.source];
    // A path that only a list gives is not asked for unless it is a plain one on a drive.
    if (!from.listFile || (isLibraryPath(sound.path) && fileExists(sound.path)))
        return true;
    if (MsgBoxEx(literal(sound.name)
                     + L" ~Bis no longer valid.~N ~NThe file was either moved, deleted or "
                       L"renamed.~N ~NWould you like to remove this wav reference from this wav "
                       L"group?",
                 kMsgYesNo | kMsgQuestion, kTitle)
            == kAnswerYes
        && velora::DelFavWav(from.path, sound.path) && isOpen()) {
        libraryStamp_.clear();
        ListWavs();
    }
    return false;
}

void frmWavs::removeDead()
{
    trap(kModule, [&] {
        const WavSource from = source();
        if (!from.listFile)
            return;
        std::vector<std::wstring> dead;
        for (const ListEntry& entry : readListFile(from.path, true))
            if (isLibraryPath(entry.path) && !fileExists(entry.path))
                dead.push_back(entry.path);
        if (dead.empty()) {
            showStatus(L"Every file of this list is there");
            return;
        }
        if (MsgBoxEx(L"The files of ~B" + std::to_wstring(dead.size()) + L"~B entries of ~B"
                         + literal(from.name)
                         + L"~B are not there.~N ~NDo you wish to remove these entries from the "
                           L"list?",
                     kMsgYesNo | kMsgQuestion | kMsgSecondDefault, kTitle)
                != kAnswerYes
            || !removeListEntries(from.path, dead) || !isOpen())
            return;
        libraryStamp_.clear();
        ListWavs();
    });
}

void frmWavs::attachToMail()
{
    trap(kModule, [&] {
        const auto sound =
            chosenOrTold(L"~B~CRNo file selected to attach to an E-Mail.~B~CN~N ~NPlease select a "
                         L"file from the list before attempting to use this feature.");
        if (!sound || !fileThere(*sound) || !RequireAOLOnline())
            return;
        showStatus(L"Opening a mail for " + sound->name);
        const bool attached = attachToNewMail(sound->path);
        if (isOpen())
            showStatus(attached ? sound->name + L" is attached to a new mail"
                                : sound->name + L" could not be attached");
    });
}

std::vector<ListedSound> frmWavs::listedSounds() const
{
    std::vector<ListedSound> sounds;
    for (int i = 0; i < model().count(); ++i)
        sounds.push_back(
            {model().name(i), sizeText(model().bytes(i), numbers_), description(model().at(i))});
    return sounds;
}

void frmWavs::printList()
{
    trap(kModule, [&] {
        const HWND body = openMailBody();
        if (!body) {
            MsgBoxEx(kNoMail, kMsgExclamation, kTitle);
            return;
        }
        const std::vector<ListedSound> sounds = listedSounds();
        const PrintedList mail =
            listMail(everywhere_ ? L"Found: " + library_.typed() : source().name, sounds);
        // Behind what the user has written there.
        const std::optional<std::wstring> written = aolText(body);
        if (!written
            || !setAolText(body, trimView(*written).empty() ? mail.html : *written + mail.html))
            return;
        const bool all = mail.entries == sounds.size();
        showStatus(L"The list is in your mail"
                   + (all ? std::wstring()
                          : L": its first " + std::to_wstring(mail.entries) + L" sounds"));
    });
}

void frmWavs::saveList()
{
    trap(kModule, [&] {
        const std::wstring folder = aol().folder.empty() ? AppPath() : aol().folder;
        const std::wstring name = trim(InputBoxEx(
            L"Please enter a filename you want to name your Sound List file as.~N ~NYour file will "
            L"be saved in Text (.txt) format in your current AOL folder: ~B~CB"
                + literal(folder)
                + L"~B~CN~N ~NPlease do ~B~CRnot~B~CN include the ~B.txt~B extention.",
            kTitle, safeFileName(source().name)));
        if (name.empty() || !isOpen())
            return;
        const std::wstring path = joinPath(folder, safeFileName(name) + L".txt");
        if (fileExists(path)
            && MsgBoxEx(L"The file ~B" + literal(path)
                            + L"~B already exists.~N ~NDo you wish to replace it?",
                        kMsgYesNo | kMsgQuestion | kMsgSecondDefault, kTitle)
                   != kAnswerYes)
            return;
        replaceFile(path, encodeFileText(listText(source().name, listedSounds())));
        if (isOpen())
            showStatus(L"Saved as " + path);
    });
}

void frmWavs::deleteFile()
{
    trap(kModule, [&] {
        const auto sound = chosenOrTold(kNoWavSelected);
        if (!sound || !fileThere(*sound))
            return;
        for (;;) {
            const int answer =
                MsgBoxEx(L"~BDelete ~CR" + literal(sound->path.substr(sound->path.rfind(L'\\') + 1))
                             + L"~CN ?~B~N ~NDo you wish to send the above file to the Windows "
                               L"Recycle Bin?",
                         kMsgDeletePreviewCancel | kMsgQuestion | kMsgThirdDefault, kTitle);
            if (answer == kAnswerPreview)
                PlaySoundEx(sound->path);
            else if (answer == kAnswerDelete)
                break;
            else
                return;
        }
        // MCI keeps the file of the sound that plays.
        if (equalNoCase(playingSound(), sound->path))
            StopSound();
        const bool gone = recycleFile(sound->path, hwnd());
        if (!isOpen())
            return;
        libraryStamp_.clear();
        ListWavs();
        showStatus(sound->name + (gone ? L" is in the Recycle Bin now" : L" could not be deleted"));
    });
}

} // namespace velora
