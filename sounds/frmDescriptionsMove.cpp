#include "sounds/frmDescriptionsMove.h"

#include "base/files.h"
#include "base/text.h"
#include "core/MsgBoxEx.h"
#include "ui/FolderDialog.h"

namespace velora {
namespace {

constexpr wchar_t kTitle[] = L"Wav Descriptions";
constexpr Size kListSize{270, 150};
constexpr Size kFolderSize{320, 0};

} // namespace

frmDescriptionsMove::frmDescriptionsMove(std::vector<std::wstring> categories, std::wstring present)
    : Form("frmDescriptionsMove"), categories_(std::move(categories)), present_(std::move(present))
{
}

std::optional<std::wstring> frmDescriptionsMove::ask()
{
    runModal();
    return chosen_;
}

FormOptions frmDescriptionsMove::options() const
{
    FormOptions options;
    options.title = L"Velora - Move Description";
    return options;
}

void frmDescriptionsMove::onCreate()
{
    lblCategories.create(*this, L"&Move to the category:");
    lstCategories.create(*this, categories_);
    lstCategories.setPreferredSize(kListSize);
    lstCategories.onActivate = [this] { cmdOK_Click(); };
    for (std::size_t i = 0; i < categories_.size(); ++i)
        if (equalNoCase(categories_[i], present_))
            lstCategories.select(static_cast<int>(i));
    cmdOK.create(*this, L"OK", [this] { cmdOK_Click(); });
    cmdCancel.create(*this, L"Cancel", [this] { endModal(IDCANCEL); });
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    setLayout(rows({lblCategories, grow(lstCategories), buttonRow({cmdOK, cmdCancel})}).margins());
    setFirstFocus(lstCategories);
}

void frmDescriptionsMove::cmdOK_Click()
{
    const int selected = lstCategories.selected();
    if (selected < 0)
        return;
    chosen_ = categories_.at(static_cast<std::size_t>(selected));
    endModal(IDOK);
}

frmDescriptionsFill::frmDescriptionsFill(std::wstring category, std::wstring folder)
    : Form("frmDescriptionsFill"), category_(std::move(category)), folder_(std::move(folder))
{
}

std::optional<std::wstring> frmDescriptionsFill::ask()
{
    runModal();
    return chosen_;
}

FormOptions frmDescriptionsFill::options() const
{
    FormOptions options;
    options.title = L"Velora - Fill Descriptions Category";
    return options;
}

void frmDescriptionsFill::onCreate()
{
    lblFolder.create(*this, L"Fill \"" + replaceAll(category_, L"&", L"&&")
                                + L"\" from the &sound files of this folder:");
    txtFolder.create(*this, folder_);
    txtFolder.setPreferredSize(kFolderSize);
    cmdBrowse.create(*this, L"&Browse...", [this] { cmdBrowse_Click(); });
    cmdOK.create(*this, L"OK", [this] { cmdOK_Click(); });
    cmdCancel.create(*this, L"Cancel", [this] { endModal(IDCANCEL); });
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    tips_.add(txtFolder, L"Each wav, midi and mp3 file there gets a description from its tag. "
                         L"Descriptions that are there already stay as they are.");
    setLayout(rows({lblFolder, columns({grow(Box(txtFolder).align(Align::middle)), cmdBrowse}),
                    buttonRow({cmdOK, cmdCancel})})
                  .margins());
    setFirstFocus(txtFolder);
}

void frmDescriptionsFill::cmdBrowse_Click()
{
    const std::wstring folder =
        chooseFolder(hwnd(), L"The folder of the sound files:", txtFolder.text());
    if (!folder.empty() && isOpen())
        txtFolder.setText(folder);
}

void frmDescriptionsFill::cmdOK_Click()
{
    std::wstring folder = trim(txtFolder.text());
    while (folder.size() > 3 && folder.ends_with(L'\\'))
        folder.pop_back();
    if (!folderExists(folder)) {
        MsgBoxEx(L"The folder ~B" + literal(folder) + L"~B does not exist.", kMsgExclamation,
                 kTitle);
        txtFolder.focus();
        return;
    }
    chosen_ = folder;
    endModal(IDOK);
}

} // namespace velora
