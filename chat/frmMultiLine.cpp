#include "chat/frmMultiLine.h"

#include "base/trap.h"
#include "chat/frmSendLines.h"
#include "chat/modRoomText.h"
#include "chat/modSendRules.h"
#include "core/modWindowPlace.h"

namespace velora {
namespace {
constexpr char kModule[] = "frmMultiLine";
constexpr wchar_t kSection[] = L"ChatExtender";
/// What was written and not sent, while the program runs.
std::wstring g_draft;
} // namespace

frmMultiLine::frmMultiLine() : Form(kModule) {}

void frmMultiLine::showWindow()
{
    trap(kModule, [] {
        frmMultiLine* form = find<frmMultiLine>();
        if (!form)
            form = &open<frmMultiLine>();
        form->bringToFront();
    });
}

FormOptions frmMultiLine::options() const
{
    FormOptions options;
    options.title = L"Velora - Multi-Line Entry";
    options.kind = FormKind::sizable;
    options.place = rememberedPlace(kSection);
    return options;
}

void frmMultiLine::onCreate()
{
    lblText.create(*this, L"&Text for the chat room:");
    Edit::Options many;
    many.multiline = true;
    many.wantsReturn = true;
    many.maxLength = 8000;
    txtText.create(*this, g_draft, many);
    txtText.setPreferredSize({400, 130});
    txtText.onChange = [this] { refresh(); };
    lblCount.create(*this, L"");
    chkFade.create(*this, L"&Fade what I send", opt::Fader::On.get());
    chkFade.onChange = [this] { opt::Fader::On.set(chkFade.checked()); };
    cmdSend.create(*this, L"&Send", [this] { sendAll(); });
    cmdClose.create(*this, L"Close", [this] { close(CloseReason::user); });
    setCancelButton(cmdClose);
    addKey(MOD_CONTROL, VK_RETURN, [this] { sendAll(); });
    setLayout(rows({rows({lblText, grow(txtText)}, kNear).grow(),
                    columns({chkFade, grow(lblCount)}, 3 * kGap), buttonRow({cmdSend, cmdClose})})
                  .margins());
    setFirstFocus(txtText);
    refresh();
    changes_ = onOptionChanged([this](OptionId) { refresh(); });
}

std::vector<std::wstring> frmMultiLine::lines() const
{
    return breakLines(txtText.text(), static_cast<int>(opt::ChatExtender::CharsInLine.get()));
}

void frmMultiLine::refresh()
{
    if (!isOpen())
        return;
    const std::size_t count = lines().size();
    lblCount.setText(count == 0   ? L"Ctrl+Enter sends"
                     : count == 1 ? L"1 line"
                                  : std::to_wstring(count) + L" lines, one after the other");
    cmdSend.enable(count > 0);
    chkFade.setChecked(opt::Fader::On.get());
}

void frmMultiLine::sendAll()
{
    std::vector<std::wstring> all = lines();
    if (all.empty() || !requireRoom() || !isOpen())
        return;
    txtText.setText({});
    refresh();
    frmSendLines::sendLines(std::move(all));
}

bool frmMultiLine::onClose(CloseReason)
{
    g_draft = txtText.text();
    rememberPlace(kSection, place());
    return true;
}

} // namespace velora
