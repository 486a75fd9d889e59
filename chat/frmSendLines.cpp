#include "chat/frmSendLines.h"

#include "base/text.h"
#include "base/trap.h"
#include "chat/modRoomText.h"
#include "chat/modSendRules.h"
#include "core/modAOL.h"
#include "hook/aolSend.h"
#include "settings/Options.h"

namespace velora {
namespace {
constexpr char kModule[] = "frmSendLines";
}

frmSendLines::frmSendLines(std::vector<std::wstring> lines)
    : Form(kModule), lines_(std::move(lines))
{
}

void frmSendLines::sendLines(std::vector<std::wstring> lines)
{
    trap(kModule, [&] {
        if (frmSendLines* running = find<frmSendLines>()) {
            running->lines_.insert(running->lines_.end(), lines.begin(), lines.end());
            running->refresh();
            return;
        }
        frmSendLines& form = open<frmSendLines>(std::move(lines));
        form.sendNext();
        if (form.isOpen())
            form.show();
    });
}

FormOptions frmSendLines::options() const
{
    FormOptions options;
    options.title = L"Velora - Sending";
    options.kind = FormKind::tool;
    options.owner = AOLWindow();
    options.activates = false;
    return options;
}

void frmSendLines::onCreate()
{
    lblText.create(*this, L"");
    lblText.setPreferredSize({260, 0});
    barProgress.create(*this, static_cast<int>(lines_.size()));
    cmdCancel.create(*this, L"Cancel", [this] { close(CloseReason::user); });
    setCancelButton(cmdCancel);
    setLayout(rows({lblText, barProgress, buttonRow({cmdCancel})}).margins());
    const unsigned pause = pauseMs(opt::ChatExtender::MultilineBurst.get());
    tmrBurst.start(pause, [this] { sendNext(); });
}

void frmSendLines::refresh()
{
    barProgress.setMaximum(static_cast<int>(lines_.size()));
    barProgress.setValue(static_cast<int>(next_));
    lblText.setText(L"Line " + std::to_wstring(next_) + L" of " + std::to_wstring(lines_.size())
                    + L" sent");
}

void frmSendLines::sendNext()
{
    // A line that AOL did not take is kept with the rest.
    if (next_ < lines_.size() && AOL_FindChat() && sayInRoom(asTheyLeave(lines_[next_])))
        ++next_;
    else
        tmrBurst.stop();
    refresh();
    if (next_ == lines_.size() || !tmrBurst.active())
        close();
}

bool frmSendLines::onClose(CloseReason)
{
    tmrBurst.stop();
    std::wstring rest;
    for (; next_ < lines_.size(); ++next_)
        rest += (rest.empty() ? L"" : L" ") + lines_[next_];
    // What the user typed is never lost: the rest goes back to where it came from, in front of what
    // was begun there meanwhile.
    const HWND room = rest.empty() ? nullptr : AOL_FindChat();
    if (!room)
        return true;
    const std::wstring begun = trim(aolText(chatInput(room)).value_or(std::wstring()));
    TextToChat(begun.empty() ? rest : rest + L" " + begun, kPutOnly);
    return true;
}

} // namespace velora
