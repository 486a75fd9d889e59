#include "im_mail/frmDecrypt.h"

#include "base/files.h"
#include "base/secret.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modWindowPlace.h"
#include "im_mail/modPrint.h"

#include <commdlg.h>
#include <richedit.h>

namespace velora {
namespace {

constexpr char kModule[] = "frmDecrypt";
constexpr wchar_t kSection[] = L"E-Mail";
constexpr wchar_t kPlaceKey[] = L"DecryptPosition";
constexpr wchar_t kTitle[] = L"Velora - Decrypted E-Mail";
constexpr wchar_t kBoxTitle[] = L"Decrypted E-Mail";
constexpr Size kTextSize{460, 240};

/// Where the user wants the text; empty when cancelled. Pumps messages.
std::wstring askForFile(HWND owner)
{
    wchar_t path[MAX_PATH] = L"";
    OPENFILENAMEW wish = {};
    wish.lStructSize = sizeof wish;
    wish.hwndOwner = owner;
    wish.lpstrFilter = L"Text files (*.txt)\0*.txt\0All files\0*.*\0";
    wish.lpstrFile = path;
    wish.nMaxFile = MAX_PATH;
    wish.lpstrTitle = L"Save the Decrypted E-Mail";
    wish.lpstrDefExt = L"txt";
    wish.Flags =
        OFN_EXPLORER | OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    return GetSaveFileNameW(&wish) ? path : L"";
}

} // namespace

frmDecrypt::frmDecrypt(std::wstring_view text) : Form(kModule), text_(text) {}

frmDecrypt::~frmDecrypt()
{
    wipe(text_);
}

frmDecrypt& frmDecrypt::DisplayMessage(std::wstring_view text)
{
    frmDecrypt& form = open<frmDecrypt>(text);
    form.bringToFront();
    return form;
}

FormOptions frmDecrypt::options() const
{
    FormOptions options;
    options.title = kTitle;
    options.kind = FormKind::sizable;
    options.place = rememberedPlace(kSection, kPlaceKey);
    return options;
}

void frmDecrypt::onCreate()
{
    lblText.create(*this, L"&Text of the E-Mail:");
    RichEdit::Options how;
    how.readOnly = true;
    rtfText.create(*this, how);
    rtfText.setPreferredSize(kTextSize);
    rtfText.append(text_, {.colour = GetSysColor(COLOR_WINDOWTEXT)});
    wipe(text_);
    rtfText.select(0, 0);
    SendMessageW(rtfText.hwnd(), EM_SCROLLCARET, 0, 0);
    lblFind.create(*this, L"&Find:");
    txtFind.create(*this);
    cmdFind.create(*this, L"Find &Next", [this] { findNext(); });
    cmdCopy.create(*this, L"&Copy", [this] { copy(); });
    cmdSave.create(*this, L"&Save As...", [this] { save(); });
    cmdPrint.create(*this, L"&Print...", [this] { print(); });
    cmdExit.create(*this, L"E&xit", [this] { close(CloseReason::user); });
    const bool some = rtfText.length() > 0;
    for (Control* control : {static_cast<Control*>(&cmdFind), static_cast<Control*>(&cmdCopy),
                             static_cast<Control*>(&cmdSave), static_cast<Control*>(&cmdPrint)})
        control->enable(some);
    setDefaultButton(cmdFind);
    setCancelButton(cmdExit);
    setFirstFocus(rtfText);
    addKey(MOD_CONTROL, 'F', [this] {
        txtFind.focus();
        txtFind.select();
    });
    addKey(0, VK_F3, [this] { findNext(); });
    addKey(MOD_CONTROL, 'S', [this] { cmdSave.click(); });
    addKey(MOD_CONTROL, 'P', [this] { cmdPrint.click(); });
    setLayout(rows({lblText, grow(rtfText), columns({lblFind, grow(txtFind), cmdFind}),
                    buttonRow({cmdCopy, cmdSave, cmdPrint, cmdExit})})
                  .margins());
}

std::wstring frmDecrypt::shownText() const
{
    return rtfText.text();
}

void frmDecrypt::copy()
{
    // The selection, or all there is.
    const auto before = rtfText.selection();
    if (before.first == before.second)
        rtfText.select(0, -1);
    SendMessageW(rtfText.hwnd(), WM_COPY, 0, 0);
    rtfText.select(before.first, before.second);
}

void frmDecrypt::save()
{
    const std::wstring path = askForFile(hwnd());
    if (path.empty() || !isOpen())
        return;
    std::wstring text = shownText();
    const WipeOnExit wipeText(text);
    std::string bytes = encodeFileText(text);
    const WipeOnExit wipeBytes(bytes);
    try {
        replaceFile(path, bytes);
    } catch (const Error& error) {
        reportError(kModule, "save", error.what(), error.code());
        MsgBoxEx(L"~B~CRThe text could not be saved!~B~CN~N ~NThe file ~B~CB" + literal(path)
                     + L"~B~CN cannot be written.  Please choose another place.",
                 kMsgExclamation, kBoxTitle);
    }
}

void frmDecrypt::print()
{
    std::wstring text = shownText();
    const WipeOnExit wipeText(text);
    if (printText(hwnd(), text, kTitle) == PrintResult::failed)
        MsgBoxEx(L"~B~CRThe text could not be printed!~B~CN~N ~NPlease see whether the printer is "
                 L"ready.",
                 kMsgExclamation, kBoxTitle);
}

void frmDecrypt::findNext()
{
    const std::wstring what = txtFind.text();
    if (what.empty() || !cmdFind.enabled()) {
        txtFind.focus();
        return;
    }
    FINDTEXTEXW find = {};
    // From behind the present hit, then once more from the start.
    find.chrg = {rtfText.selection().second, -1};
    find.lpstrText = what.c_str();
    const auto search = [&] {
        return SendMessageW(rtfText.hwnd(), EM_FINDTEXTEXW, FR_DOWN,
                            reinterpret_cast<LPARAM>(&find))
               >= 0;
    };
    bool found = search();
    if (!found) {
        find.chrg = {0, -1};
        found = search();
    }
    if (!found) {
        MsgBoxEx(L"~B" + literal(what) + L"~B does not occur in this text.", kMsgInformation,
                 kBoxTitle);
        return;
    }
    rtfText.select(find.chrgText.cpMin, find.chrgText.cpMax);
    SendMessageW(rtfText.hwnd(), EM_HIDESELECTION, FALSE, 0);
    SendMessageW(rtfText.hwnd(), EM_SCROLLCARET, 0, 0);
}

bool frmDecrypt::onClose(CloseReason)
{
    rememberPlace(kSection, place(), kPlaceKey);
    return true;
}

void frmDecrypt::onDestroy()
{
    // Over what stands in the box before its memory goes back to the system. Copies that Windows
    // itself has made of it while drawing are out of our reach.
    const int length = rtfText.length();
    rtfText.select(0, -1);
    rtfText.replaceSelection(std::wstring(static_cast<std::size_t>(length), L' '));
    SendMessageW(rtfText.hwnd(), EM_EMPTYUNDOBUFFER, 0, 0);
    rtfText.setText({});
}

} // namespace velora
