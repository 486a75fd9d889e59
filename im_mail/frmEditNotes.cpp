#include "im_mail/frmEditNotes.h"

#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modWindowPlace.h"
#include "im_mail/modBuddyNotes.h"

namespace velora {
namespace {
constexpr char kModule[] = "frmEditNotes";
constexpr wchar_t kPlaceKey[] = L"NotesPosition";
} // namespace

frmEditNotes::frmEditNotes(std::wstring screenName)
    : Form(kModule), screenName_(std::move(screenName))
{
}

void frmEditNotes::edit(const std::wstring& screenName)
{
    trap(kModule, [&] {
        if (screenNameKey(screenName).empty())
            return;
        for (Form* form : all())
            if (auto* present = dynamic_cast<frmEditNotes*>(form);
                present && screenNameKey(present->screenName_) == screenNameKey(screenName))
                return present->bringToFront();
        open<frmEditNotes>(screenName.substr(0, kMostNoteName)).show();
    });
}

FormOptions frmEditNotes::options() const
{
    FormOptions options;
    options.title = L"Velora - Buddy Notes for " + screenName_;
    options.kind = FormKind::sizable;
    options.place = rememberedPlace(L"IM", kPlaceKey);
    return options;
}

void frmEditNotes::onCreate()
{
    lblNote.create(*this, L"&Notes:");
    txtNote.create(*this, GetBuddyNotes(screenName_),
                   {.multiline = true, .wantsReturn = true, .maxLength = kMostNote});
    txtNote.setPreferredSize({320, 130});
    txtNote.onChange = [this] { count(); };
    lblCount.create(*this, L"");
    lblCount.setPreferredSize({150, 0});
    cmdOK.create(*this, L"OK", [this] { save(); });
    cmdCancel.create(*this, L"Cancel", [this] { close(CloseReason::user); });
    setCancelButton(cmdCancel);
    setDefaultButton(cmdOK);
    setLayout(
        rows({lblNote, grow(txtNote),
              columns({Box(lblCount).align(Align::middle), grow(buttonRow({cmdOK, cmdCancel}))})})
            .margins());
    setFirstFocus(txtNote);
    count();
}

void frmEditNotes::onDestroy()
{
    rememberPlace(L"IM", place(), kPlaceKey);
}

void frmEditNotes::count()
{
    lblCount.setText(std::to_wstring(txtNote.text().size()) + L" of " + std::to_wstring(kMostNote)
                     + L" characters");
}

void frmEditNotes::save()
{
    if (!saveBuddyNote(screenName_, txtNote.text())) {
        MsgBoxEx(L"The note could not be written.", kMsgCritical, L"Buddy Notes");
        return; // what was typed stays in the window
    }
    close();
}

} // namespace velora
