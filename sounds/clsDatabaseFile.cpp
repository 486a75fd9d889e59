// clsDatabase: the file itself: opening, making, repairing, compacting it, and filling it.
#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "sounds/clsDatabase.h"

namespace velora {
namespace {

constexpr char kModule[] = "clsDatabase";
constexpr wchar_t kSetAsideAs[] = L"wav description.bad";
constexpr const wchar_t* kFirstTables[] = {L"AOL Directory", L"AOL Sounds", L"Windows Directory"};

constexpr wchar_t kCannotCreate[] =
    L"~B~CRError #429 - Active X cannot create object~B~CN~N ~NThe Jet Database Engine was not "
    L"able to initialize properly.~N ~NTo fix this error, please do a ~Bfull~B reinstallation of "
    L"Velora 10.x, followed by a complete restart of the computer so that the Jet Database Engine "
    L"is properly installed.~N ~NThe help file of Velora tells where to find support.";
constexpr wchar_t kDamaged[] =
    L"~B~CRWav Descriptions Database is corrupted or saved in another format!~B~CN~N ~NClick "
    L"~BOK~B to attempt repairs.";
constexpr wchar_t kRepaired[] = L"~B~CRWav Descriptions Database repair successful!~B~CN~N "
                                L"~NPlease click ~BOK~B to continue.";
constexpr wchar_t kBeyondRepair[] =
    L"~B~CRWav Descriptions Database is corrupted!~B~CN~N ~NVelora cannot repair the database.~N "
    L"~NThe damaged database will be renamed to ~Bwav description.bad~B.  Velora will then create "
    L"a new wav descriptions database file.";
constexpr wchar_t kEngineError[] = L"~B~CRDatabase engine error!~B~CN~N ~NVelora was not able to "
                                   L"recover from this error.";
constexpr wchar_t kDiskError[] =
    L"~B~CRDisk error!~B~CN~N ~NThe Wav Descriptions Database could not be read or written.  Wav "
    L"descriptions are off until Velora is started again.";

constexpr std::size_t kBatch = 200; // records a transaction

bool isSoundFile(const FileEntry& entry)
{
    const std::wstring name = lower(entry.name);
    return !entry.folder
           && (name.find(L".wav") != name.npos || name.find(L".mid") != name.npos
               || name.find(L".mp3") != name.npos);
}

} // namespace

bool clsDatabase::Init()
{
    return trap(
        kModule,
        [&] {
            close();
            try {
                engine();
                makeFolder(folder_);
                open(Missing::make);
                keepFormer();
                return true;
            } catch (const JetError& error) {
                reportCurrentException(kModule, "Init");
                close();
                return recover(error);
            }
        },
        false);
}

void clsDatabase::open(Missing missing)
{
    if (missing == Missing::make && !fileExists(path_))
        return Create();
    database_ = engine().openDatabase(path_);
    if (tables().empty())
        makeFirstTables(); // a kill came between making the file and them
}

void clsDatabase::makeFirstTables()
{
    inTransaction([&] {
        for (const wchar_t* name : kFirstTables)
            database().appendTable(categoryTable(name));
    });
    tablesChanged();
}

void clsDatabase::Create()
{
    close();
    database_ = engine().createDatabase(path_, kJetLocaleGeneral);
    makeFirstTables();
}

/// A file that opens is worth keeping as it was before this run changes it.
void clsDatabase::keepFormer()
{
    close();
    trap(kModule, [&] { keepCopies(path_); });
    open(Missing::fail);
}

bool clsDatabase::fail(const wchar_t* prompt)
{
    close();
    services_.message(prompt, kMsgCritical);
    return false;
}

bool clsDatabase::recover(const JetError& error)
{
    switch (error.number()) {
    case kCannotCreateObject: return fail(kCannotCreate);
    case jeterr::kDiskError: return fail(kDiskError);
    case jeterr::kDamaged: break;
    default: return fail(kEngineError);
    }
    try {
        return recoverDamaged();
    } catch (const std::exception&) {
        reportCurrentException(kModule, "Init");
        return fail(kEngineError);
    }
}

bool clsDatabase::recoverDamaged()
{
    services_.message(kDamaged, kMsgExclamation);
    if (Repair()) {
        services_.message(kRepaired, kMsgInformation);
        return true;
    }
    close();
    services_.message(kBeyondRepair, kMsgCritical);
    const std::wstring aside = joinPath(folder_, kSetAsideAs);
    keepCopies(aside);
    moveFile(path_, aside);
    Create();
    return true;
}

bool clsDatabase::Repair()
{
    const bool repaired = trap(
        kModule,
        [&] {
            close();
            engine().repairDatabase(path_, categoryTable(L"Category"));
            open(Missing::fail);
            return true;
        },
        false);
    if (repaired)
        services_.message(L"The database ~B" + literal(path_) + L"~B was successfully repaired.",
                          kMsgInformation);
    return repaired;
}

bool clsDatabase::Compact()
{
    const bool compacted = trap(
        kModule,
        [&] {
            const std::wstring temporary = path_.substr(0, path_.size() - 4) + L".tmp";
            close();
            deleteFile(temporary);
            engine().compactDatabase(path_, temporary);
            moveFile(temporary, path_); // in one step: a kill leaves one of the two whole
            return true;
        },
        false);
    trap(kModule, [&] { open(Missing::fail); });
    if (compacted && isOpen())
        services_.message(L"The database ~B" + literal(path_) + L"~B was successfully compacted.",
                          kMsgInformation);
    return compacted && isOpen();
}

// --- Filling ----------------------------------------------------------------------------------

clsDatabase::Filled clsDatabase::GetWavs(const std::wstring& folder,
                                         const DatabaseProgress& progress)
{
    return trap(
        kModule,
        [&] {
            std::vector<FileEntry> files = listFolder(folder);
            std::erase_if(files, [](const FileEntry& entry) { return !isSoundFile(entry); });
            return fill(
                files.size(),
                [&](std::size_t i) {
                    return descriptionFromTag(joinPath(folder, files[i].name), files[i].name);
                },
                progress);
        },
        Filled{.whole = false});
}

clsDatabase::Filled clsDatabase::AddRecords(const std::vector<Description>& records,
                                            const DatabaseProgress& progress)
{
    return trap(
        kModule,
        [&] {
            return fill(
                records.size(), [&](std::size_t i) { return records[i]; }, progress);
        },
        Filled{.whole = false});
}

/// Reads a batch, telling how far it is, and then stores it in one transaction: nothing pumps while
/// one is open.
clsDatabase::Filled clsDatabase::fill(std::size_t count,
                                      const std::function<Description(std::size_t)>& make,
                                      const DatabaseProgress& progress)
{
    Filled filled;
    filled.files = count;
    const std::wstring table = table_;
    for (std::size_t done = 0; done < count && filled.whole;) {
        std::vector<Description> batch;
        while (batch.size() < kBatch && done < count && filled.whole) {
            batch.push_back(make(done++));
            filled.whole = !progress || progress(done, count);
        }
        DaoRecordset& set = recordset(table);
        std::size_t added = 0;
        inTransaction([&] {
            for (const Description& record : batch)
                added += addOne(set, record);
        });
        filled.added += added;
        filled.present += batch.size() - added;
    }
    return filled;
}

} // namespace velora
