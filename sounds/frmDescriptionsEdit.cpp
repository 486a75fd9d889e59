#include "sounds/frmDescriptionsEdit.h"

#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modWindowPlace.h"
#include "sounds/clsMP3.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmDescriptionsEdit";
constexpr wchar_t kSection[] = L"Descriptions";
constexpr wchar_t kPlaceKey[] = L"EditPosition";
constexpr int kFieldWidth = 300;
constexpr int kYearWidth = 60;
constexpr const wchar_t* kLabels[] = {
    L"&File name:", L"&Title:",    L"&Artist:", L"A&lbum:",
    L"&Year:",      L"&Comments:", L"&Genre:",  L"Com&pression type:"};
enum Index { fileName, title, artist, album, year, comments, genre, compression };

} // namespace

std::optional<Description> frmDescriptionsEdit::edit()
{
    runModal();
    return result_;
}

FormOptions frmDescriptionsEdit::options() const
{
    FormOptions options;
    options.title =
        subject_.newName ? L"Velora - New Wav Description" : L"Velora - Edit Wav Description";
    options.place = rememberedPlace(kSection, kPlaceKey);
    return options;
}

std::array<Control*, 8> frmDescriptionsEdit::fields()
{
    return {&txtFileName, &txtTitle,    &txtArtist, &txtAlbum,
            &txtYear,     &txtComments, &cboGenre,  &txtCompression};
}

std::array<const Control*, 8> frmDescriptionsEdit::fields() const
{
    return {&txtFileName, &txtTitle,    &txtArtist, &txtAlbum,
            &txtYear,     &txtComments, &cboGenre,  &txtCompression};
}

void frmDescriptionsEdit::onCreate()
{
    lblCategory.create(*this, L"Category: " + replaceAll(subject_.category, L"&", L"&&"));
    std::vector<Box> lines = {Box(lblCategory)};
    int labels = 0;
    const auto all = fields();
    for (std::size_t i = 0; i < all.size(); ++i) {
        lblField_[i].create(*this, kLabels[i]);
        labels = std::max(labels, Box(lblField_[i]).preferredSize().width);
        if (i == genre) {
            cboGenre.create(*this, split(clsMP3::GenreMatrix(), L'|'), -1, true);
        } else {
            Edit::Options how;
            how.maxLength = static_cast<int>(kDescriptionFields[i].size);
            how.readOnly = i == fileName && !subject_.newName;
            static_cast<Edit*>(all[i])->create(*this, L"", how);
        }
        all[i]->setPreferredSize({i == year ? kYearWidth : kFieldWidth, 0});
    }
    cmdTag.create(*this, L"From Ta&g", [this] { cmdTag_Click(); });
    cmdTag.enable(!subject_.path.empty() && fileExists(subject_.path));
    cmdOK.create(*this, L"OK", [this] { cmdOK_Click(); });
    cmdCancel.create(*this, L"Cancel", [this] { endModal(IDCANCEL); });
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    tips_.add(cmdTag, L"Takes the fields from the tag in the sound file");
    tips_.add(txtCompression, L"The file's format, such as PCM");
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Box label = Box(lblField_[i]).atLeast({labels, 0}).align(Align::middle);
        lines.push_back(columns({label, i == year ? Box(*all[i]) : grow(*all[i])}));
    }
    lines.push_back(columns({Box(cmdTag), space(), buttonRow({cmdOK, cmdCancel})}));
    setLayout(rows(lines).margins());
    show(subject_.record);
    setFirstFocus(subject_.newName ? txtFileName : txtTitle);
}

void frmDescriptionsEdit::onDestroy()
{
    rememberPlace(kSection, place(), kPlaceKey);
}

void frmDescriptionsEdit::show(const Description& record)
{
    const auto all = fields();
    for (std::size_t i = 0; i < all.size(); ++i)
        all[i]->setText(record.*kDescriptionFields[i].value);
}

Description frmDescriptionsEdit::entered() const
{
    Description record;
    const auto all = fields();
    for (std::size_t i = 0; i < all.size(); ++i)
        record.*kDescriptionFields[i].value = trim(all[i]->text());
    if (!subject_.newName)
        record.fileName = subject_.record.fileName;
    return record;
}

void frmDescriptionsEdit::cmdTag_Click()
{
    trap(kModule, [&] {
        Description record = descriptionFromTag(subject_.path, entered().fileName);
        record.compression = entered().compression;
        show(record);
    });
}

void frmDescriptionsEdit::cmdOK_Click()
{
    const Description record = entered();
    if (record.fileName.empty()) {
        MsgBoxEx(L"Please enter the name of the sound file that this description is about.",
                 kMsgExclamation, L"Wav Descriptions");
        txtFileName.focus();
        return;
    }
    result_ = record;
    endModal(IDOK);
}

} // namespace velora
