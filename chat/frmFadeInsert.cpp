#include "chat/frmFadeInsert.h"

#include "base/trap.h"
#include "chat/clsReplyHooks.h"
#include "chat/modCurrentFade.h"
#include "chat/modFadePreview_win.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modClipboard.h"
#include "core/modFindChild.h"
#include "core/modWindowPlace.h"
#include "hook/AgentLink.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmFadeInsert";
constexpr wchar_t kSection[] = L"Fader";
constexpr wchar_t kPlaceKey[] = L"InsertPosition";
constexpr COLORREF kWhite = RGB(255, 255, 255);

} // namespace

HWND frontTextBox()
{
    const auto front = sendToAol(AOLMDI(), WM_MDIGETACTIVE, 0, 0);
    if (!front || !*front)
        return nullptr;
    // In a chat room and an instant message the box to write in is the last one; a mail has only
    // one.
    HWND box = nullptr;
    for (int which = 1;
         const HWND next = FindChildByClass(reinterpret_cast<HWND>(*front), L"RICHCNTL", which);
         ++which)
        box = next;
    // Older boards write in a box of another class.
    return box ? box : GetMailReplyWnd(reinterpret_cast<HWND>(*front));
}

frmFadeInsert::frmFadeInsert() : Form(kModule) {}

void frmFadeInsert::showWindow()
{
    trap(kModule, [] {
        frmFadeInsert* form = find<frmFadeInsert>();
        if (!form)
            form = &open<frmFadeInsert>();
        form->bringToFront();
    });
}

FormOptions frmFadeInsert::options() const
{
    FormOptions options;
    options.title = L"Velora - Fade and Insert";
    options.kind = FormKind::sizable;
    options.place = rememberedPlace(kSection, kPlaceKey);
    return options;
}

void frmFadeInsert::onCreate()
{
    lblText.create(*this, L"&Text to fade:");
    Edit::Options many;
    many.multiline = true;
    many.wantsReturn = true;
    txtText.create(*this, {}, many);
    txtText.setPreferredSize({360, 80});
    txtText.onChange = [this] { refresh(); };
    lblPreview.create(*this, L"As it will look:");
    lblFaded.createDrawn(*this, L"Preview", [this](HDC dc, const Rect& where) {
        drawFaded(dc, where, runs_, kWhite);
        RECT frame{where.left, where.top, where.right, where.bottom};
        DrawEdge(dc, &frame, BDR_SUNKENOUTER, BF_RECT);
    });
    lblFaded.setPreferredSize({360, 80});
    cmdInsert.create(*this, L"&Insert", [this] { insert(); });
    cmdCopy.create(*this, L"&Copy", [this] { copy(); });
    cmdClose.create(*this, L"Close", [this] { close(CloseReason::user); });
    setCancelButton(cmdClose);
    setLayout(rows({lblText, grow(txtText), lblPreview, grow(lblFaded),
                    buttonRow({cmdInsert, cmdCopy, cmdClose})})
                  .margins());
    refresh();
    changes_ = onOptionChanged([this](OptionId) { refresh(); });
}

std::wstring frmFadeInsert::faded() const
{
    std::wstring text = txtText.text();
    FadeEngine(text, currentFade(), opt::Fader::SolidFade.get(), true);
    return text;
}

void frmFadeInsert::refresh()
{
    if (!isOpen())
        return;
    const int phase = wavePhase();
    runs_ = fadeRuns(faded());
    setWavePhase(phase);
    const bool some = !runs_.empty();
    cmdInsert.enable(some);
    cmdCopy.enable(some);
    lblFaded.redraw();
}

void frmFadeInsert::insert()
{
    const HWND box = frontTextBox();
    if (!box || !connectAol() || !aolLink().replaceSelection(box, faded())) {
        MsgBoxEx(
            L"~B~CRThere is nothing to write into!~B~CN~N ~NPlease bring the E-Mail or Instant "
            L"Message that you are writing to the front of AOL and try this operation again.",
            kMsgExclamation, L"Fade and Insert");
        return;
    }
    ScrollToCursor(box);
    SystemRandom random;
    prepareNextFade(random);
    txtText.setText({});
    refresh();
}

void frmFadeInsert::copy()
{
    setClipboardText(hwnd(), faded());
}

bool frmFadeInsert::onClose(CloseReason)
{
    rememberPlace(kSection, place(), kPlaceKey);
    return true;
}

} // namespace velora
