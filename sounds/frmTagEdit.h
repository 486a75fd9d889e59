#pragma once
// The tag editor: the fields of one sound file's tag, its lyrics, and the way back from a save.
#include "sounds/clsMP3.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ToolTip.h"

#include <string>

namespace velora {

/// Opens the editor for a file and waits until the user closes it; true when the file has been
/// changed (its row is to be shown anew then). Tells the user when the file cannot have a tag.
/// Pumps messages.
bool EditTag(const std::wstring& path);

/// Where the program keeps what the last save replaced.
std::wstring tagUndoFile();

class frmTagEdit final : public Form {
public:
    explicit frmTagEdit(std::wstring path, std::wstring undoFile = tagUndoFile());
    bool fileChanged() const { return fileChanged_; }

protected:
    FormOptions options() const override;
    void onCreate() override;
    bool onClose(CloseReason reason) override;

private:
    /// A field of the tag as the user sees it, and what was shown last.
    struct Field {
        Edit* edit;
        std::wstring shown;
        bool changed() const { return edit->text() != shown; }
        void show(const std::wstring& text);
    };
    void createFields();
    void createButtons();
    void load();
    bool changed() const;
    bool charactersAgreed();
    void takeFields(clsMP3& tag) const;
    bool cmdSave_Click();
    bool saveLyrics();
    bool tellNotSaved(const wchar_t* orElse);
    void cmdUndo_Click();
    void showState();

    std::wstring path_, undoFile_;
    clsMP3 tag_;
    bool fileChanged_ = false;
    Field title_{&txtTitle, {}}, artist_{&txtArtist, {}}, album_{&txtAlbum, {}},
        year_{&txtYear, {}}, comments_{&txtComments, {}}, lyrics_{&txtLyrics, {}};
    std::wstring shownGenre_;

    Label lblFile, lblTitle, lblArtist, lblAlbum, lblYear, lblGenre, lblComments, lblLyrics,
        lblState;
    Edit txtFile, txtTitle, txtArtist, txtAlbum, txtYear, txtComments, txtLyrics;
    ComboBox cboGenre;
    Button cmdSave, cmdUndo, cmdClose;
    ToolTip tips_;
};

} // namespace velora
