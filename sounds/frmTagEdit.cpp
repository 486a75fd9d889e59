#include "sounds/frmTagEdit.h"

#include "base/binaryfile.h"
#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modMain.h"
#include "core/modWindowPlace.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmTagEdit";
constexpr wchar_t kSection[] = L"Wav List";
constexpr wchar_t kPlaceKey[] = L"TagEditPosition";
constexpr wchar_t kBoxTitle[] = L"Tag Editor";
constexpr int kFieldWidth = 300;

/// A stored field without its padding: other programs pad with NULs and leave what was there
/// behind the first.
std::wstring unpadded(std::wstring text)
{
    text.resize(std::min(text.find(L'\0'), text.size()));
    text.resize(text.find_last_not_of(L' ') + 1);
    return text;
}

std::wstring unpaddedLyrics(const std::wstring& text)
{
    return unpadded(text.substr(0, text.find(L"LYRICSEND")));
}

/// The genres' names in the order in which one looks for them; the first is no name.
std::vector<std::wstring> genreChoices()
{
    std::vector<std::wstring> names = split(clsMP3::GenreMatrix(), L'|');
    std::sort(names.begin(), names.end());
    names.insert(names.begin(), std::wstring());
    return names;
}

bool canHaveTag(const std::wstring& path)
{
    try {
        return BinaryFile(path, BinaryFile::Access::Read).size() >= clsMP3::kTagBytes;
    } catch (const Error&) {
        return false;
    }
}

bool sameFields(const clsMP3& a, const clsMP3& b)
{
    return a.Title() == b.Title() && a.Artist() == b.Artist() && a.Album() == b.Album()
           && a.Year() == b.Year() && a.Comments() == b.Comments() && a.Genre() == b.Genre();
}

} // namespace

std::wstring tagUndoFile()
{
    return AppPath() + L"\\data\\tag undo.dat";
}

bool EditTag(const std::wstring& path)
{
    return trap(
        kModule,
        [&] {
            makeFolder(AppPath() + L"\\data");
            if (!canHaveTag(path)) {
                MsgBoxEx(L"~B~CRThis file cannot have a tag!~B~CN~N ~NThe file ~B~CB"
                             + literal(path) + L"~B~CN cannot be read, or is shorter than a tag.",
                         kMsgExclamation, kBoxTitle);
                return false;
            }
            frmTagEdit form(path);
            form.runModal();
            return form.fileChanged();
        },
        false);
}

frmTagEdit::frmTagEdit(std::wstring path, std::wstring undoFile)
    : Form(kModule), path_(std::move(path)), undoFile_(std::move(undoFile))
{
    tag_.setUndoFile(undoFile_);
}

void frmTagEdit::Field::show(const std::wstring& text)
{
    edit->setText(text);
    shown = edit->text();
}

FormOptions frmTagEdit::options() const
{
    FormOptions options;
    options.title = L"Velora - Tag Editor";
    options.kind = FormKind::sizable;
    options.place = rememberedPlace(kSection, kPlaceKey);
    return options;
}

void frmTagEdit::onCreate()
{
    createFields();
    lblState.create(*this, L"");
    createButtons();
    const auto row = [](Label& label, const Box& field) {
        return columns({Box(label).atLeast({70, 0}).align(Align::middle), field});
    };
    setLayout(rows({row(lblFile, grow(txtFile)), row(lblTitle, grow(txtTitle)),
                    row(lblArtist, grow(txtArtist)), row(lblAlbum, grow(txtAlbum)),
                    row(lblYear, grow(columns({txtYear, Box(lblGenre).align(Align::middle),
                                               grow(cboGenre)}))),
                    row(lblComments, grow(txtComments)), lblLyrics, grow(txtLyrics), lblState,
                    buttonRow({cmdSave, cmdUndo, cmdClose})})
                  .margins());
    setFirstFocus(txtTitle);
    load();
}

void frmTagEdit::createFields()
{
    lblFile.create(*this, L"&File:");
    txtFile.create(*this, path_, {.readOnly = true});
    const auto field = [&](Label& label, const wchar_t* name, Edit& edit, int length) {
        label.create(*this, name);
        edit.create(*this, {}, {.maxLength = length});
        edit.setPreferredSize({kFieldWidth, 0});
    };
    field(lblTitle, L"&Title:", txtTitle, 30);
    field(lblArtist, L"&Artist:", txtArtist, 30);
    field(lblAlbum, L"Al&bum:", txtAlbum, 30);
    field(lblYear, L"&Year:", txtYear, 4);
    txtYear.setPreferredSize({56, 0});
    lblGenre.create(*this, L"&Genre:");
    cboGenre.create(*this, genreChoices(), 0);
    field(lblComments, L"Co&mments:", txtComments, 30);
    lblLyrics.create(*this, L"&Lyrics:");
    txtLyrics.create(*this, {},
                     {.multiline = true, .wantsReturn = true, .maxLength = clsMP3::kLyricsWidth});
    txtLyrics.setPreferredSize({kFieldWidth, 110});
}

void frmTagEdit::createButtons()
{
    cmdSave.create(*this, L"&Save", [this] { cmdSave_Click(); });
    cmdUndo.create(*this, L"&Undo", [this] { cmdUndo_Click(); });
    cmdClose.create(*this, L"Close", [this] { close(CloseReason::user); });
    setDefaultButton(cmdSave);
    setCancelButton(cmdClose);
    tips_.add(cmdSave, L"Writes the fields that you have changed into the file");
    tips_.add(cmdUndo, L"Puts back what the last save has replaced in this file");
    tips_.add(txtLyrics, L"In a file without lyrics they take the place of the last 5,101 bytes, a "
                         L"wav or mid grows by them.  Undo brings back what was there");
    tips_.add(cboGenre, L"Type the first letters of a genre's name");
}

void frmTagEdit::load()
{
    tag_.GetTag(path_);
    tag_.GetLyrics(path_);
    title_.show(unpadded(tag_.Title()));
    artist_.show(unpadded(tag_.Artist()));
    album_.show(unpadded(tag_.Album()));
    year_.show(unpadded(tag_.Year()));
    comments_.show(unpadded(tag_.Comments()));
    lyrics_.show(unpaddedLyrics(tag_.Lyrics()));
    const std::vector<std::wstring> names = genreChoices();
    const auto genre = std::find(names.begin(), names.end(), clsMP3::GetGenreString(tag_.Genre()));
    cboGenre.select(genre == names.end() ? 0 : static_cast<int>(genre - names.begin()));
    shownGenre_ = cboGenre.itemText(cboGenre.selected());
    showState();
}

void frmTagEdit::showState()
{
    lblState.setText(tag_.Genre() != clsMP3::kNoTag ? L"This file has a tag."
                     : path_.ends_with(L"wav") || path_.ends_with(L"mid")
                         ? L"This file has no tag yet. It will be appended to it."
                         : L"This file has no tag yet. It will replace the last 128 bytes.");
    cmdUndo.enable(tag_.undoTarget() == path_);
}

bool frmTagEdit::changed() const
{
    const Field* const fields[] = {&title_, &artist_, &album_, &year_, &comments_, &lyrics_};
    return std::any_of(std::begin(fields), std::end(fields),
                       [](const Field* field) { return field->changed(); })
           || cboGenre.itemText(cboGenre.selected()) != shownGenre_;
}

/// A tag holds the letters of Western Europe. The user decides about others.
bool frmTagEdit::charactersAgreed()
{
    std::wstring all;
    for (const Field* field : {&title_, &artist_, &album_, &year_, &comments_, &lyrics_})
        all += field->edit->text();
    return fits1252(all)
           || MsgBoxEx(L"~B~CRA tag cannot hold all of these characters!~B~CN~N ~NWhat it cannot "
                       L"hold will become a question mark.  Do you want to save it like this?",
                       kMsgYesNo | kMsgQuestion | kMsgSecondDefault, kBoxTitle)
                  == kAnswerYes;
}

/// Only what the user has changed: the bytes of all other fields stay as they are.
void frmTagEdit::takeFields(clsMP3& tag) const
{
    if (title_.changed())
        tag.SetTitle(txtTitle.text());
    if (artist_.changed())
        tag.SetArtist(txtArtist.text());
    if (album_.changed())
        tag.SetAlbum(txtAlbum.text());
    if (year_.changed())
        tag.SetYear(txtYear.text());
    if (comments_.changed())
        tag.SetComments(txtComments.text());
    const std::wstring genre = cboGenre.itemText(cboGenre.selected());
    if (genre != shownGenre_ || tag.Genre() == clsMP3::kNoTag)
        tag.SetGenre(clsMP3::GetGenreByte(genre));
}

bool frmTagEdit::saveLyrics()
{
    tag_.SetLyrics(txtLyrics.text());
    tag_.SaveLyrics(path_);
    clsMP3 written;
    written.GetLyrics(path_);
    return written.Lyrics() == tag_.Lyrics();
}

bool frmTagEdit::tellNotSaved(const wchar_t* orElse)
{
    MsgBoxEx(L"~B~CRThe tag could not be saved!~B~CN~N ~NThe file ~B~CB" + literal(path_)
                 + L"~B~CN cannot be written" + orElse + L".",
             kMsgExclamation, kBoxTitle);
    return false;
}

bool frmTagEdit::cmdSave_Click()
{
    if (!changed() || !charactersAgreed() || !isOpen())
        return false;
    // Lyrics come first: they bring the file's tag with them, and what they replace holds the tag,
    // so that one undo record serves both.
    const bool lyrics = lyrics_.changed();
    if (lyrics && !saveLyrics())
        return tellNotSaved(L", or is too short for lyrics");
    tag_.GetTag(path_);
    takeFields(tag_);
    tag_.setUndoFile(lyrics ? std::wstring() : undoFile_);
    tag_.SaveTag(path_);
    tag_.setUndoFile(undoFile_);
    // A save says nothing of a failure: what stands in the file does.
    clsMP3 written;
    written.GetTag(path_);
    if (!sameFields(written, tag_))
        return tellNotSaved(L"");
    fileChanged_ = true;
    load();
    lblState.setText(L"Saved.");
    return true;
}

void frmTagEdit::cmdUndo_Click()
{
    if (!tag_.undo()) {
        MsgBoxEx(L"~B~CRThe last save cannot be undone!~B~CN~N ~NThe file has been changed since, "
                 L"or cannot be written.",
                 kMsgExclamation, kBoxTitle);
        return;
    }
    fileChanged_ = true;
    load();
    lblState.setText(L"The last save has been undone.");
    txtTitle.focus();
}

bool frmTagEdit::onClose(CloseReason reason)
{
    if (reason == CloseReason::user && changed()) {
        const int answer = MsgBoxEx(L"Do you want to save the changes of this tag?",
                                    kMsgYesNoCancel | kMsgQuestion, kBoxTitle);
        if (!isOpen())
            return true;
        if (answer == kAnswerCancel || (answer == kAnswerYes && !cmdSave_Click()))
            return false;
    }
    rememberPlace(kSection, place(), kPlaceKey);
    return true;
}

} // namespace velora
