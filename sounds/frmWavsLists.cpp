// The wav list: sources, listing, finding, and what the rows show.
#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "settings/Options.h"
#include "sounds/fileFacts.h"
#include "sounds/frmWavs.h"
#include "sounds/modFavWavs.h"
#include "sounds/modSoundLine.h"
#include "sounds/modWavLibrary.h"
#include "ui/MessageLoop.h"
#include "ui/WinGeometry.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmWavs";
constexpr int kSizeColumn = 76, kNameColumn = 120, kOtherColumn = 130;

} // namespace

void frmWavs::fillSources(const std::wstring& select)
{
    sources_ = librarySources();
    std::vector<std::wstring> names;
    int selected = 0;
    for (const WavSource& wavSource : sources_) {
        if (equalNoCase(wavSource.name, select))
            selected = static_cast<int>(names.size());
        names.push_back(wavSource.name);
    }
    imgcboList.setItems(names);
    imgcboList.select(selected);
}

const WavSource& frmWavs::source() const
{
    static const WavSource kNone;
    const int index = std::max(0, imgcboList.selected());
    return index < static_cast<int>(sources_.size()) ? sources_[static_cast<std::size_t>(index)]
                                                     : kNone;
}

const WavCategory* frmWavs::category(const WavSource& of) const
{
    if (of.kind == WavSource::Kind::category)
        for (const WavCategory& one : wavCategories())
            if (one.name == of.name)
                return &one;
    return nullptr;
}

SoundKind frmWavs::kind() const
{
    return static_cast<SoundKind>(std::max(0, cboKind.selected()));
}

bool frmWavs::everywhere() const
{
    return chkEverywhere.checked() && !trimView(txtFind.text()).empty();
}

WavListOptions frmWavs::listOptions() const
{
    return {opt::WavList::PreserveCase.get(), opt::WavList::NoAOLWavs.get()};
}

void frmWavs::ListWavs()
{
    trap(kModule, [&] {
        const std::wstring path = selectedPath();
        const bool there = !source().listFile                             ? ListWavDir()
                           : source().kind == WavSource::Kind::favourites ? ListFavWavs()
                                                                          : ListWavList();
        watchSource();
        txtFind_Change();
        if (const int row = model().indexOf(path); row >= 0)
            lstWav.select(row);
        showStatus(L"");
        // Shown over the list, not instead of it.
        if (!there)
            postCall([] { MsgBoxEx(kNoWavDirectory, kMsgExclamation, L"Wav List"); });
    });
}

bool frmWavs::ListWavDir()
{
    return list_.fill(source(), kind(), listOptions());
}

bool frmWavs::ListWavList()
{
    if (!fileExists(source().path)) {
        makeFolder(source().path.substr(0, source().path.find_last_of(L'\\')));
        replaceFile(source().path, "");
    }
    return list_.fill(source(), kind(), listOptions());
}

bool frmWavs::ListFavWavs()
{
    return list_.fill(source(), kind(), listOptions());
}

void frmWavs::Refresh()
{
    libraryStamp_.clear();
    ListWavs();
}

void frmWavs::watchSource()
{
    const std::wstring path = source().path;
    watchedStamp_ = fileStamp(path);
    watch_.watch(source().listFile ? path.substr(0, path.find_last_of(L'\\')) : path, [this] {
        // Beside a list file lies much else that changes. A folder that is gone says so once.
        const std::wstring stamp = fileStamp(source().path);
        if (!isOpen() || (source().listFile && stamp == watchedStamp_) || stamp.empty())
            return;
        const int top = ListView_GetTopIndex(lstWav.hwnd());
        const std::wstring status = lblStatus.text();
        ListWavs();
        lblStatus.setText(status);
        if (lstWav.selected() < 0 && top > 0 && top < lstWav.rowCount()) {
            lstWav.ensureVisible(lstWav.rowCount() - 1);
            lstWav.ensureVisible(top);
        }
    });
}

void frmWavs::categoriesChanged(const std::wstring& select)
{
    loadWavCategories();
    fillSources(select.empty() ? source().name : select);
    Refresh();
}

void frmWavs::txtFind_Change()
{
    trap(kModule, [&] {
        const std::wstring typed = txtFind.text();
        const std::wstring before = selectedPath();
        everywhere_ = everywhere();
        if (everywhere_) {
            const std::wstring stamp = libraryStamp(sources_);
            if (stamp != libraryStamp_) {
                library_.fillAll(sources_, listOptions());
                libraryStamp_ = stamp;
            }
        }
        model().find(typed);
        setColumns();
        // What is typed chooses the first match, so that Enter acts on it.
        const bool finds = !trimView(typed).empty() && model().count() > 0;
        showRows(finds ? model().path(0) : before);
    });
}

void frmWavs::showRows(const std::wstring& selectPath)
{
    lstWav.setRowCount(model().count());
    lstWav.select(selectPath.empty() ? -1 : model().indexOf(selectPath));
    lblCount.setText(L"Count: " + std::to_wstring(model().count()));
    fitColumns();
    relayout();
    lblCount.redraw(); // moved and wider: the system keeps what it had drawn of it
    showDescription();
}

frmWavs::Shown frmWavs::descriptionsShown()
{
    if (!opt::Descriptions::Show.get() || !wavDescriptions().find)
        return Shown::nothing;
    const std::wstring as = opt::Descriptions::ShowAs.get();
    return equalNoCase(as, L"Columns") ? Shown::columns
           : equalNoCase(as, L"Line")  ? Shown::line
                                       : Shown::tip;
}

std::vector<std::wstring> frmWavs::shownFields()
{
    using namespace opt::Descriptions;
    const bool shown[] = {IncludeTitle.get(),      IncludeArtist.get(),   IncludeAlbum.get(),
                          IncludeYear.get(),       IncludeComments.get(), IncludeGenre.get(),
                          IncludeCompression.get()};
    std::vector<std::wstring> fields;
    for (std::size_t i = 0; i < std::size(shown); ++i)
        if (shown[i])
            fields.push_back(descriptionFields()[i]);
    return fields;
}

void frmWavs::setColumns()
{
    std::vector<Column> wanted = {{Column::name, L"Name"}, {Column::size, L"Size"}};
    if (everywhere_)
        wanted.push_back({Column::category, L"List"});
    if (descriptionsShown() == Shown::columns)
        for (const std::wstring& field : shownFields())
            wanted.push_back({Column::field, field});
    if (wanted == columns_)
        return;
    for (std::size_t i = columns_.size(); i > 0; --i)
        ListView_DeleteColumn(lstWav.hwnd(), static_cast<int>(i - 1));
    columns_ = wanted;
    for (int i = 0; i < static_cast<int>(columns_.size()); ++i) {
        const bool size = columns_[static_cast<std::size_t>(i)].kind == Column::size;
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.fmt = size ? LVCFMT_RIGHT : LVCFMT_LEFT;
        column.cx = size ? kSizeColumn : i == 0 ? kNameColumn : kOtherColumn;
        column.pszText = columns_[static_cast<std::size_t>(i)].fieldName.data();
        SendMessageW(lstWav.hwnd(), LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(&column));
    }
}

// The name takes what the others and a scroll bar leave.
void frmWavs::fitColumns()
{
    if (!lstWav.hwnd() || columns_.empty())
        return;
    int others = 0;
    for (int i = 1; i < static_cast<int>(columns_.size()); ++i)
        others += lstWav.columnWidth(i);
    ListView_SetColumnWidth(lstWav.hwnd(), 0,
                            std::max(kNameColumn, clientSize(lstWav.hwnd()).width - others));
}

void frmWavs::columnClicked(int column)
{
    if (column < 0 || column >= static_cast<int>(columns_.size()))
        return;
    const std::wstring path = selectedPath();
    const Column& by = columns_[static_cast<std::size_t>(column)];
    if (by.kind == Column::name || by.kind == Column::size)
        model().sortBy(by.kind == Column::name ? clsWavListModel::Column::name
                                               : clsWavListModel::Column::size);
    else
        model().sortByText(column, [&](clsWavListModel::Index row) -> std::wstring {
            if (by.kind == Column::category)
                return sources_[model().rows().source(row)].name;
            const auto described = description(row);
            return described ? descriptionField(*described, by.fieldName) : std::wstring();
        });
    lstWav.setSortMark(column, model().descending() ? -1 : 1);
    showRows(path);
}

std::wstring frmWavs::cell(int row, int column) const
{
    if (row < 0 || row >= model().count() || column >= static_cast<int>(columns_.size()))
        return {};
    const Column& what = columns_[static_cast<std::size_t>(column)];
    switch (what.kind) {
    case Column::name: return model().name(row);
    case Column::size: return sizeText(model().bytes(row), numbers_);
    case Column::category: return sources_[model().source(row)].name;
    case Column::field: break;
    }
    const auto described = description(model().at(row));
    return described ? descriptionField(*described, what.fieldName) : std::wstring();
}

// An entry whose file is not there is grey.
std::optional<COLORREF> frmWavs::rowColour(int row) const
{
    if (row >= model().count())
        return std::nullopt;
    const WavSource& of = everywhere_ ? sources_[model().source(row)] : source();
    if (of.listFile && model().bytes(row) == 0)
        return GetSysColor(COLOR_GRAYTEXT);
    return std::nullopt;
}

std::optional<frmWavs::Chosen> frmWavs::chosen() const
{
    const int row = lstWav.selected();
    if (row < 0 || row >= model().count())
        return std::nullopt;
    const std::size_t from = everywhere_
                                 ? model().source(row)
                                 : static_cast<std::size_t>(std::max(0, imgcboList.selected()));
    return Chosen{model().name(row), model().path(row), from, model().kind(row)};
}

std::optional<frmWavs::Chosen> frmWavs::chosenOrTold(const wchar_t* message)
{
    std::optional<Chosen> sound = chosen();
    if (!sound)
        MsgBoxEx(message, kMsgExclamation, L"Wav List");
    return sound;
}

std::wstring frmWavs::selectedPath()
{
    const auto sound = chosen();
    return sound ? sound->path : std::wstring();
}

} // namespace velora
