// frmDescriptions: categories, and what is done with the whole of one or of the file.
#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modMain.h"
#include "hook/aolSend.h"
#include "sounds/WavDescriptions.h"
#include "sounds/frmDescriptions.h"
#include "sounds/frmDescriptionsMove.h"
#include "sounds/frmProcessing.h"
#include "sounds/modDescImport.h"
#include "sounds/modDescMail.h"
#include "sounds/modDescriptions.h"
#include "sounds/modMailAttach.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmDescriptions";
constexpr wchar_t kTitle[] = L"Wav Descriptions";
constexpr wchar_t kImportCategory[] = L"Imported Descriptions";
constexpr DWORD kMailTimeout = 5000; // ms; a long text
constexpr wchar_t kNoCategory[] =
    L"~B~CRNo category selected!~B~CN~N ~NPlease select a category before attempting to use this "
    L"feature.";
constexpr wchar_t kNoMail[] =
    L"~B~CRVelora was unable to open an E-Mail window.~B~CN~N ~NPlease open an E-Mail by pressing "
    L"~B~CBCTRL+M~B~CN and try this operation again.";
constexpr wchar_t kOfferImport[] =
    L"Velora has detected Wav Description files from an older version of Velora.~N ~NWould you "
    L"like to import these Wav Descriptions into the Velora 10.x Wav Descriptions database?";

/// Where the sounds of the first three categories are.
std::wstring usualFolder(const std::wstring& category)
{
    const std::wstring& aolFolder = aol().folder;
    if (equalNoCase(category, L"Windows Directory")) {
        wchar_t folder[MAX_PATH];
        return std::wstring(folder, GetWindowsDirectoryW(folder, MAX_PATH)) + L"\\Media";
    }
    if (aolFolder.empty())
        return {};
    if (equalNoCase(category, L"AOL Sounds"))
        return aolFolder + L"\\sounds";
    return equalNoCase(category, L"AOL Directory") ? aolFolder : std::wstring();
}

void tellBadName(const std::wstring& name)
{
    MsgBoxEx(L"The category ~B" + literal(name)
                 + L"~B cannot be made.~N ~NA category of that name may be there already. A name "
                   L"has up to 64 characters, does not begin with \"MSys\" or a blank, and holds "
                   L"none of . ! ` [ ]",
             kMsgExclamation, kTitle);
}

std::wstring counted(std::size_t number)
{
    return std::to_wstring(number) + (number == 1 ? L" description" : L" descriptions");
}

std::wstring summary(const clsDatabase::Filled& filled, bool finished)
{
    std::wstring text = L"Added: ~B" + counted(filled.added) + L"~B.";
    if (filled.present > 0)
        text += L"~N ~NLeft as they were: " + counted(filled.present) + L".";
    if (!finished)
        text += L"~N ~NThe operation was cancelled. What was done until then stays.";
    else if (!filled.whole)
        text += L"~N ~NNot everything could be written to the database.";
    return text;
}

} // namespace

bool makeDescriptionCategory(const std::wstring& name)
{
    if (wavDatabase().AddTable(name))
        return true;
    tellBadName(name);
    return false;
}

bool frmDescriptions::categoryOrTold()
{
    if (!category().empty())
        return true;
    MsgBoxEx(kNoCategory, kMsgExclamation, kTitle);
    return false;
}

void frmDescriptions::NewCategory()
{
    trap(kModule, [&] {
        const std::wstring name =
            trim(InputBoxEx(L"Please enter the name of the new descriptions category.", kTitle, {},
                            {.maxLength = 64}));
        if (name.empty() || !makeDescriptionCategory(name) || !isOpen())
            return;
        chkAll.setChecked(false);
        loadCategories(name);
        changed();
    });
}

void frmDescriptions::EditCategory()
{
    trap(kModule, [&] {
        if (!categoryOrTold())
            return;
        const std::wstring former = category();
        const std::wstring name =
            trim(InputBoxEx(L"Below is the currently selected Category.  Make changes as necessary "
                            L"and click OK.",
                            kTitle, former, {.maxLength = 64}));
        if (name.empty() || name == former)
            return;
        const bool renamed = wavDatabase().EditTable(former, name);
        if (!renamed)
            tellBadName(name);
        if (!isOpen())
            return;
        loadCategories(renamed ? name : former);
        changed();
    });
}

void frmDescriptions::DeleteCategory()
{
    trap(kModule, [&] {
        if (!categoryOrTold())
            return;
        const std::wstring name = category();
        const long records = wavDatabase().GetRecordCount(name);
        if (MsgBoxEx(L"~B~CRConfirm Delete~B~CN~N ~NAre you sure you wish to delete the "
                     L"Descriptions Category ~B"
                         + literal(name) + L"~B?"
                         + (records > 0 ? L"~N ~NIt holds "
                                              + counted(static_cast<std::size_t>(records)) + L"."
                                        : std::wstring()),
                     kMsgYesNo | kMsgQuestion | kMsgSecondDefault, kTitle)
            != kAnswerYes)
            return;
        const bool deleted = wavDatabase().DeleteTable(name);
        if (!deleted)
            MsgBoxEx(L"The category ~B" + literal(name) + L"~B could not be deleted.", kMsgCritical,
                     kTitle);
        if (!isOpen())
            return;
        loadCategories(deleted ? std::wstring() : name);
        changed();
    });
}

void frmDescriptions::GetWavs()
{
    trap(kModule, [&] {
        if (!categoryOrTold())
            return;
        const std::wstring table = category();
        const auto folder = frmDescriptionsFill(table, usualFolder(table)).ask();
        if (!folder)
            return;
        clsDatabase::Filled filled;
        const bool finished = frmProcessing::run([&](const DatabaseProgress& progress) {
            wavDatabase().SetTable(table);
            filled = wavDatabase().GetWavs(*folder, progress);
        });
        changed();
        MsgBoxEx(filled.files == 0
                     ? L"There are no sound files in the folder ~B" + literal(*folder) + L"~B."
                     : summary(filled, finished),
                 kMsgInformation, kTitle);
    });
}

void frmDescriptions::ListToEMail()
{
    trap(kModule, [&] {
        const HWND body = openMailBody();
        if (!body) {
            MsgBoxEx(kNoMail, kMsgExclamation, kTitle);
            return;
        }
        const auto present = aolText(body);
        if (present && !trimView(*present).empty()
            && MsgBoxEx(L"The open E-Mail already holds a text.~N ~NDo you wish to replace it by "
                        L"this list?",
                        kMsgYesNo | kMsgQuestion | kMsgSecondDefault, kTitle)
                   != kAnswerYes)
            return;
        std::vector<Description> records;
        for (int i = 0; i < model_.count(); ++i)
            records.push_back(model_[i].record);
        const PrintedList mail =
            descriptionMail(everywhere() ? L"All categories" : category(), records);
        if (!setAolText(body, mail.html, kMailTimeout))
            MsgBoxEx(L"AOL did not take the list. Please try this operation again.",
                     kMsgExclamation, kTitle);
        else if (mail.entries < records.size())
            MsgBoxEx(L"An E-Mail cannot hold the whole list: it has the first "
                         + counted(mail.entries) + L" of " + std::to_wstring(records.size()) + L".",
                     kMsgInformation, kTitle);
    });
}

// --- Older files ------------------------------------------------------------------------------

void frmDescriptions::offerImport()
{
    trap(kModule, [&] {
        const std::vector<std::wstring> paths = oldDescriptionFiles(AppPath() + L"\\data");
        if (!paths.empty()
            && MsgBoxEx(kOfferImport, kMsgYesNo | kMsgQuestion, kTitle) == kAnswerYes)
            importFiles(paths);
    });
}

void frmDescriptions::importFiles(const std::vector<std::wstring>& paths)
{
    clsDatabase& db = wavDatabase();
    const std::vector<std::wstring> tables = db.GetTables();
    if (std::none_of(tables.begin(), tables.end(),
                     [](const std::wstring& name) { return equalNoCase(name, kImportCategory); })
        && !makeDescriptionCategory(kImportCategory))
        return;
    clsDatabase::Filled total;
    std::size_t skipped = 0;
    const bool finished = frmProcessing::run([&](const DatabaseProgress& progress) {
        for (const std::wstring& path : paths) {
            const auto bytes = readFile(path);
            const OldDescriptions old = parseOldDescriptions(decodeFileText(bytes.value_or("")));
            db.SetTable(kImportCategory);
            const clsDatabase::Filled filled = db.AddRecords(old.records, progress);
            total.files += filled.files;
            total.added += filled.added;
            total.present += filled.present;
            total.whole = total.whole && filled.whole && bytes;
            skipped += old.skipped;
            if (!total.whole)
                return;
            moveFile(path, importedName(path));
        }
    });
    if (isOpen()) {
        chkAll.setChecked(false);
        loadCategories(kImportCategory);
    }
    changed();
    std::wstring text = summary(total, finished);
    if (skipped > 0)
        text += L"~N ~NLines without a file name or a description: " + std::to_wstring(skipped);
    MsgBoxEx(text, kMsgInformation, kTitle);
}

// --- The file ---------------------------------------------------------------------------------

void frmDescriptions::CompactDatabase()
{
    trap(kModule, [&] {
        if (!wavDatabase().Compact())
            MsgBoxEx(L"The database could not be compacted. It is as it was before.", kMsgCritical,
                     kTitle);
        if (isOpen())
            refresh();
    });
}

void frmDescriptions::RepairDatabase()
{
    trap(kModule, [&] {
        if (!wavDatabase().Repair()) {
            MsgBoxEx(L"The database could not be repaired.", kMsgCritical, kTitle);
            if (!wavDatabase().isOpen())
                wavDatabase().Init();
        }
        if (isOpen())
            refresh();
        wavDescriptionsChanged();
    });
}

} // namespace velora
