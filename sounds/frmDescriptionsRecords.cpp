// frmDescriptions: what is done with single descriptions.
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "sounds/WavDescriptions.h"
#include "sounds/frmDescriptions.h"
#include "sounds/frmDescriptionsEdit.h"
#include "sounds/frmDescriptionsMove.h"
#include "sounds/modDescriptions.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmDescriptions";
constexpr wchar_t kTitle[] = L"Wav Descriptions";

void tellNotWritten()
{
    MsgBoxEx(L"The description could not be written to the database. What was there is as it was "
             L"before.",
             kMsgCritical, kTitle);
}

/// Stores a record whose name may be there already: true when it is.
bool holds(const std::wstring& table, const std::wstring& fileName)
{
    clsDatabase& db = wavDatabase();
    db.SetTable(table);
    db.SetFileName(fileName);
    return db.GetWavDescription();
}

bool saved(const std::wstring& table, const Description& record, bool exists)
{
    clsDatabase& db = wavDatabase();
    db.SetTable(table);
    db.SetRecord(record);
    const bool done = exists ? db.EditWavDescription() : db.AddWavDescription();
    if (!done)
        tellNotWritten();
    return done;
}

} // namespace

bool editWavDescription(const std::wstring& path, const std::wstring& category)
{
    return trap(
        kModule,
        [&] {
            const std::wstring name = path.substr(path.find_last_of(L"\\/") + 1);
            const bool exists = holds(category, name);
            const auto record =
                frmDescriptionsEdit(
                    {category, exists ? wavDatabase().Record() : descriptionFromTag(path, name),
                     path})
                    .edit();
            return record && saved(category, *record, exists);
        },
        false);
}

void frmDescriptions::NewRecord()
{
    trap(kModule, [&] {
        const std::wstring table = category();
        if (table.empty())
            return;
        const auto record =
            frmDescriptionsEdit({.category = table, .record = {}, .newName = true}).edit();
        if (!record)
            return;
        if (holds(table, record->fileName)) {
            MsgBoxEx(L"The category ~B" + literal(table) + L"~B already holds a description of ~B"
                         + literal(record->fileName) + L"~B.~N ~NPlease edit that one.",
                     kMsgExclamation, kTitle);
            changed(table, record->fileName);
        } else if (saved(table, *record, false)) {
            changed(table, cutToSizes(*record).fileName);
        }
    });
}

void frmDescriptions::EditRecord()
{
    trap(kModule, [&] {
        const std::vector<DescriptionRow> rows = rowsOrTold();
        if (rows.empty())
            return;
        const DescriptionRow& row = rows.front();
        const auto record =
            frmDescriptionsEdit({.category = row.table, .record = row.record}).edit();
        if (record && *record != row.record && saved(row.table, *record, true))
            changed(row.table, row.record.fileName);
    });
}

void frmDescriptions::MoveRecord()
{
    trap(kModule, [&] {
        const std::vector<DescriptionRow> rows = rowsOrTold();
        if (rows.empty())
            return;
        const auto target = frmDescriptionsMove(categories_, rows.front().table).ask();
        if (!target)
            return;
        if (std::any_of(rows.begin(), rows.end(), [&](const DescriptionRow& row) {
                return equalNoCase(row.table, *target);
            })) {
            MsgBoxEx(L"~B~CRCannot move description!~B~CN~N ~NYou cannot move a description to "
                     L"the category it already exists in.",
                     kMsgExclamation, kTitle);
            return;
        }
        TransferRecord(rows, *target);
    });
}

void frmDescriptions::TransferRecord(const std::vector<DescriptionRow>& rows,
                                     const std::wstring& target)
{
    std::vector<std::wstring> stayed;
    for (const DescriptionRow& row : rows)
        if (!wavDatabase().TransferRecord(row.record.fileName, row.table, target))
            stayed.push_back(row.record.fileName);
    if (rows.size() == stayed.size())
        changed(rows.front().table, rows.front().record.fileName);
    else
        changed(target, everywhere() ? rows.front().record.fileName : std::wstring());
    if (stayed.empty())
        return;
    std::wstring names = literal(stayed.front());
    if (stayed.size() > 1)
        names += L" and " + std::to_wstring(stayed.size() - 1) + L" more";
    MsgBoxEx(L"Not moved: ~B" + names + L"~B~N ~NThe category ~B" + literal(target)
                 + L"~B already holds a description of that name, or the database could not be "
                   L"written.",
             kMsgExclamation, kTitle);
}

void frmDescriptions::DeleteRecord()
{
    trap(kModule, [&] {
        const std::vector<DescriptionRow> rows = rowsOrTold();
        if (rows.empty())
            return;
        std::wstring name = literal(rows.front().record.fileName) + L"~B";
        if (rows.size() > 1)
            name += L" and " + std::to_wstring(rows.size() - 1) + L" more";
        if (MsgBoxEx(L"~B~CRConfirm Delete~B~CN~N ~NAre you sure you wish to delete the record for "
                     L"~B"
                         + name + L"?",
                     kMsgYesNo | kMsgQuestion | kMsgSecondDefault, kTitle)
            != kAnswerYes)
            return;
        bool all = true;
        for (const DescriptionRow& row : rows) {
            wavDatabase().SetTable(row.table);
            wavDatabase().SetFileName(row.record.fileName);
            all = wavDatabase().DeleteWavDescription() && all;
        }
        changed();
        if (!all)
            tellNotWritten();
    });
}

} // namespace velora
