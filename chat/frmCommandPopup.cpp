#include "chat/frmCommandPopup.h"

#include "base/text.h"
#include "base/trap.h"
#include "chat/modEditorLists.h"
#include "chat/modKeyword.h"
#include "chat/modRoomText.h"
#include "core/modAOL.h"
#include "core/modWindowPlace.h"
#include "hook/aolSend.h"
#include "ui/WinGeometry.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmCommandPopup";
constexpr wchar_t kSection[] = L"ChatKeywords";
constexpr wchar_t kPlaceKey[] = L"PopupPosition";
constexpr UINT kFollowMs = 200;
constexpr Size kListSize{170, 190};

} // namespace

std::vector<std::wstring> keywordList(std::wstring_view begun)
{
    const std::wstring key = screenNameKey(begun);
    std::vector<std::wstring> words;
    const auto add = [&](std::wstring_view word) {
        if (screenNameKey(word).starts_with(key))
            words.emplace_back(word);
    };
    for (const std::wstring_view word : kPopupKeywords)
        add(word);
    for (const EditorEntry& command : loadEditorList(EditorList::Commands, {}))
        add(command.name);
    return words;
}

frmCommandPopup::frmCommandPopup(bool typing) : Form(kModule), typing_(typing) {}

void frmCommandPopup::showList(bool typing)
{
    trap(kModule, [&] {
        if (typing ? AOL_FindChat() == nullptr : requireRoom() == nullptr)
            return;
        frmCommandPopup* form = find<frmCommandPopup>();
        if (form && form->typing_ != typing) {
            form->close();
            form = nullptr;
        }
        if (!form)
            form = &open<frmCommandPopup>(typing);
        if (typing)
            form->show();
        else
            form->bringToFront();
    });
}

void frmCommandPopup::hideList()
{
    trap(kModule, [] {
        if (frmCommandPopup* const form = find<frmCommandPopup>())
            form->close();
    });
}

FormOptions frmCommandPopup::options() const
{
    FormOptions options;
    options.title = L"Velora - Keywords";
    options.kind = FormKind::tool;
    options.activates = !typing_;
    if (!typing_) {
        options.place = rememberedPlace(kSection, kPlaceKey);
        return options;
    }
    options.owner = AOLWindow();
    // Above the box that is typed in, so that it hides no text of the room's end.
    const Rect input = windowRect(chatInput(AOL_FindChat()));
    const int height = kListSize.height + 80;
    options.place =
        Rect{input.right - kListSize.width - 60, input.top - height, input.right - 30, input.top};
    return options;
}

void frmCommandPopup::onCreate()
{
    lblList.create(*this, L"&Keywords:");
    lstCommands.create(*this);
    lstCommands.setPreferredSize(kListSize);
    // While the user types, a click is enough; with the keyboard the list is gone through first.
    if (typing_)
        lstCommands.onSelect = [this] { choose(); };
    else
        lstCommands.onActivate = [this] { choose(); };
    cmdChoose.create(*this, L"&Insert", [this] { choose(); });
    cmdClose.create(*this, L"Close", [this] { close(CloseReason::user); });
    setDefaultButton(cmdChoose);
    setCancelButton(cmdClose);
    cmdChoose.show(!typing_);
    setLayout(
        rows({lblList, grow(lstCommands), buttonRow({cmdChoose, cmdClose})}, kNear).margins());
    fill({});
    if (!typing_ && lstCommands.count() > 0)
        lstCommands.select(0);
    setFirstFocus(lstCommands);
    if (typing_)
        tmrFollow.start(kFollowMs, [this] { follow(); });
}

void frmCommandPopup::fill(std::wstring_view begun)
{
    const std::vector<std::wstring> words = keywordList(begun);
    if (words == shown_)
        return;
    shown_ = words;
    lstCommands.setItems(shown_);
}

void frmCommandPopup::follow()
{
    const auto text = aolText(chatInput(AOL_FindChat()), kAolTimerTimeout);
    if (!text || *text == begun_)
        return;
    begun_ = *text;
    if (!begun_.starts_with(L'/')) {
        close();
        return;
    }
    fill(std::wstring_view(begun_).substr(1));
    if (shown_.empty())
        close();
}

void frmCommandPopup::choose()
{
    const int index = lstCommands.selected();
    if (index < 0)
        return;
    const std::wstring text = L"/" + shown_[static_cast<std::size_t>(index)];
    // The user goes on in AOL, where Enter carries the keyword out.
    SetForegroundWindow(AOLWindow());
    typeInRoom(text);
    close();
}

bool frmCommandPopup::onClose(CloseReason)
{
    tmrFollow.stop();
    if (!typing_)
        rememberPlace(kSection, place(), kPlaceKey);
    return true;
}

} // namespace velora
