#include "im_mail/frmAutoAnswer.h"

#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modWindowPlace.h"
#include "im_mail/clsIMSession.h"
#include "im_mail/frmAnswerEdit.h"
#include "im_mail/modAnswerRules.h"
#include "im_mail/modIMAnswer.h"
#include "settings/Options.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmAutoAnswer";
constexpr wchar_t kPlaceKey[] = L"AnswerPosition";
constexpr wchar_t kTitle[] = L"Auto-Answer";
constexpr wchar_t kDefaultEntry[] = L"(default message)";
constexpr Size kListSize{170, 130};

std::function<void()>& adjustRoute()
{
    static std::function<void()> route;
    return route;
}

void tellNotWritten()
{
    MsgBoxEx(L"The message could not be written. It is as it was before.", kMsgCritical, kTitle);
}

/// Runs what writes; the user is told when it fails.
template <class Write>
bool written(Write&& write, const char* procedure)
{
    try {
        write();
        return true;
    } catch (...) {
        reportCurrentException(kModule, procedure);
    }
    tellNotWritten();
    return false;
}

std::wstring deleteQuestion(AnswerKind kind, const std::wstring& title)
{
    return L"You are about to delete ~B" + literal(title) + L"~B from your "
           + (kind == AnswerKind::general ? L"General" : L"Personalized")
           + L" IM Answer Message Queue.~N ~NDo you wish to proceed?";
}

std::wstring existsMessage(AnswerKind kind)
{
    return kind == AnswerKind::general
               ? L"~B~CRMessage title already exists!~B~CN~N ~NPlease choose another title to name "
                 L"this message, or to edit this message title, please use the ~BEdit~B button."
               : L"~B~CRScreen name already exists!~B~CN~N ~NPlease choose another screen name, or "
                 L"to edit this screen name, please use the ~BEdit~B button.";
}

} // namespace

frmAutoAnswer::frmAutoAnswer() : Form(kModule), store_(joinPath(imProgramFolder(), L"data")) {}

void frmAutoAnswer::setAdjustRoute(std::function<void()> route)
{
    adjustRoute() = std::move(route);
}

void frmAutoAnswer::openWindow()
{
    trap(kModule, [] {
        if (frmAutoAnswer* const present = find<frmAutoAnswer>())
            return present->bringToFront();
        open<frmAutoAnswer>().show();
    });
}

FormOptions frmAutoAnswer::options() const
{
    FormOptions options;
    options.title = L"Velora - Auto-Answer";
    options.kind = FormKind::sizable;
    options.place = rememberedPlace(L"IM", kPlaceKey);
    return options;
}

void frmAutoAnswer::onCreate()
{
    createMode();
    const Box general = createMessages(general_, L"&General messages");
    const Box personal = createMessages(personal_, L"&Personalized messages");
    const Box exceptions = createExceptions();
    createOptions();
    cmdDefault.create(*this, L"Edit &default message...", [this] { editDefault(); });
    cmdClose.create(*this, L"Close", [this] { close(CloseReason::user); });
    setCancelButton(cmdClose);
    tips.add(cmdDefault, L"The message that is sent when no other one is chosen");
    setLayout(rows({columns({Box(lblMode).atLeast({48, 0}).align(Align::middle), grow(cboMode)}),
                    columns({grow(general), grow(personal), grow(exceptions)}).grow(),
                    rows({chkOnce, chkPersonal, chkAlias, chkShow}, kNear),
                    columns({cmdDefault, space(), cmdClose})})
                  .margins());
    setFirstFocus(cboMode);
    LoadGeneralList();
    LoadPersonalList();
    LoadExceptions();
    changes_ = onOptionChanged([this](OptionId) { showOptions(); });
}

void frmAutoAnswer::createMode()
{
    lblMode.create(*this, L"&Answer:");
    cboMode.create(*this,
                   {L"Nobody (off)", L"Everybody", L"Only the names in the exceptions list",
                    L"Everybody but the names in the exceptions list",
                    L"Only members with a buddy note", L"Everybody but members with a buddy note"});
    cboMode.onChange = [this] {
        setAnswerMode(cboMode.selected());
        AdjustIMWindow();
    };
    tips.add(cboMode, L"Switching on forgets who has been answered before");
}

void frmAutoAnswer::createOptions()
{
    const auto bind = [this](CheckBox& box, std::wstring_view text, const Option<bool>& option) {
        box.create(*this, text);
        box.onChange = [&box, option] { option.set(box.checked()); };
    };
    bind(chkOnce, L"Answer the &first message from each incoming IM once.", opt::IM::AnswerOnce);
    bind(chkPersonal, L"Prefer a sender's p&ersonalized message", opt::IM::UsePersonalMessages);
    bind(chkAlias, L"Fill in the sender's a&lias instead of the screen name", opt::IM::UseAlias);
    bind(chkShow, L"Show the a&nswer window", opt::IM::ShowAnswerWin);
    tips.add(chkShow, L"A small list of the IMs that were answered");
    showOptions();
}

/// As they are, wherever they were set.
void frmAutoAnswer::showOptions()
{
    const int mode = static_cast<int>(opt::IM::IMAnswerMode.get());
    cboMode.select(mode < 0 || mode > 5 ? 1 : mode);
    chkOnce.setChecked(opt::IM::AnswerOnce.get());
    chkPersonal.setChecked(opt::IM::UsePersonalMessages.get());
    chkAlias.setChecked(opt::IM::UseAlias.get());
    chkShow.setChecked(opt::IM::ShowAnswerWin.get());
}

Box frmAutoAnswer::createMessages(Messages& messages, const wchar_t* heading)
{
    messages.grpBox.create(*this, heading);
    messages.lstTitles.create(*this);
    messages.lstTitles.setPreferredSize(kListSize);
    messages.lstTitles.onActivate = [this, &messages] { editMessage(messages); };
    if (messages.kind == AnswerKind::general)
        messages.lstTitles.onSelect = [this] { useMessage(); };
    messages.cmdAdd.create(*this, L"Add...", [this, &messages] { addMessage(messages); });
    messages.cmdRename.create(*this, L"Rename...", [this, &messages] { renameMessage(messages); });
    messages.cmdEdit.create(*this, L"Edit...", [this, &messages] { editMessage(messages); });
    messages.cmdDelete.create(*this, L"Delete", [this, &messages] { deleteMessage(messages); });
    if (messages.kind == AnswerKind::general)
        tips.add(messages.lstTitles, L"The selected message is the one that is sent");
    else
        tips.add(messages.lstTitles, L"Each is sent to the member of this name alone");
    return messages.grpBox.around(
        rows({grow(messages.lstTitles),
              columns({grow(messages.cmdAdd), grow(messages.cmdRename)}, kNear).sameSizes(),
              columns({grow(messages.cmdEdit), grow(messages.cmdDelete)}, kNear).sameSizes()}));
}

Box frmAutoAnswer::createExceptions()
{
    grpExceptions.create(*this, L"E&xceptions list");
    lstExceptions.create(*this);
    lstExceptions.setPreferredSize(kListSize);
    cmdAddName.create(*this, L"Add...", [this] { addException(); });
    cmdRemoveName.create(*this, L"Remove", [this] { removeException(); });
    return grpExceptions.around(
        rows({grow(lstExceptions),
              columns({grow(cmdAddName), grow(cmdRemoveName)}, kNear).sameSizes()}));
}

void frmAutoAnswer::onDestroy()
{
    rememberPlace(L"IM", place(), kPlaceKey);
}

void frmAutoAnswer::LoadGeneralList()
{
    reload(general_, opt::IM::Message.get());
}

void frmAutoAnswer::LoadPersonalList()
{
    reload(personal_, {});
}

void frmAutoAnswer::LoadExceptions()
{
    lstExceptions.setItems(store_.exceptions());
}

/// The IM window's auto-answer button shows whether it is on.
void frmAutoAnswer::AdjustIMWindow()
{
    if (adjustRoute())
        adjustRoute()();
}

std::wstring frmAutoAnswer::chosen(const Messages& messages) const
{
    const int row = messages.lstTitles.selected();
    // The first general entry stands for the default message.
    if (row < 0 || (messages.kind == AnswerKind::general && row == 0))
        return {};
    return messages.lstTitles.itemText(row);
}

void frmAutoAnswer::reload(const Messages& messages, const std::wstring& select)
{
    auto& list = messages.kind == AnswerKind::general ? general_.lstTitles : personal_.lstTitles;
    std::vector<std::wstring> titles = store_.titles(messages.kind);
    if (messages.kind == AnswerKind::general)
        titles.insert(titles.begin(), kDefaultEntry);
    list.setItems(titles);
    if (titles.empty())
        return;
    int row = 0;
    for (std::size_t i = 0; i < titles.size(); ++i)
        if (equalNoCase(titles[i], select))
            row = static_cast<int>(i);
    list.select(row);
}

void frmAutoAnswer::useMessage()
{
    opt::IM::Message.set(chosen(general_));
}

std::wstring frmAutoAnswer::askTitle(const Messages& messages, bool rename,
                                     const std::wstring& initial)
{
    const wchar_t* const prompt =
        messages.kind == AnswerKind::general
            ? L"Please enter a title for this General IM Answer Message."
        : rename ? L"Please enter a new screen name for this Personalized IM Answer Message."
                 : L"Please enter the screen name for this Personalized IM Answer Message.";
    std::wstring title =
        trim(InputBoxEx(prompt, kTitle, initial, {.maxLength = static_cast<int>(kMostTitle)}));
    if (messages.kind == AnswerKind::personalised)
        title = screenNameKey(title);
    // The entry of the default message can be no title.
    return title == kDefaultEntry ? std::wstring() : title;
}

void frmAutoAnswer::addMessage(Messages& messages)
{
    const std::wstring title = askTitle(messages, false, {});
    if (title.empty() || !isOpen())
        return;
    if (store_.exists(messages.kind, title)) {
        MsgBoxEx(existsMessage(messages.kind), kMsgExclamation, kTitle);
        return;
    }
    const auto text = frmAnswerEdit(title, newGeneralMessage()).ask();
    if (text && SaveMessage(messages.kind, title, *text) && isOpen()) {
        reload(messages, title);
        if (messages.kind == AnswerKind::general)
            useMessage();
    }
}

void frmAutoAnswer::renameMessage(Messages& messages)
{
    const std::wstring former = chosen(messages);
    if (former.empty())
        return;
    const std::wstring title = askTitle(messages, true, former);
    if (title.empty() || title == former || !isOpen())
        return;
    bool free = true;
    if (!written([&] { free = store_.rename(messages.kind, former, title); }, "renameMessage"))
        return;
    if (!free) {
        MsgBoxEx(existsMessage(messages.kind), kMsgExclamation, kTitle);
        return;
    }
    reload(messages, title);
    if (messages.kind == AnswerKind::general)
        useMessage();
}

void frmAutoAnswer::editMessage(Messages& messages)
{
    const std::wstring title = chosen(messages);
    if (title.empty()) {
        if (messages.kind == AnswerKind::general)
            editDefault();
        return;
    }
    const auto text = frmAnswerEdit(title, store_.read(messages.kind, title).value_or(L"")).ask();
    if (text)
        SaveMessage(messages.kind, title, *text);
}

void frmAutoAnswer::deleteMessage(Messages& messages)
{
    const std::wstring title = chosen(messages);
    if (title.empty()
        || MsgBoxEx(deleteQuestion(messages.kind, title),
                    kMsgYesNo | kMsgQuestion | kMsgSecondDefault, kTitle)
               != kAnswerYes)
        return;
    written([&] { store_.remove(messages.kind, title); }, "deleteMessage");
    if (!isOpen())
        return;
    reload(messages, {});
    if (messages.kind == AnswerKind::general)
        useMessage();
}

bool frmAutoAnswer::SaveMessage(AnswerKind kind, const std::wstring& title,
                                const std::wstring& text)
{
    return written([&] { store_.save(kind, title, text); }, "SaveMessage");
}

void frmAutoAnswer::editDefault()
{
    const std::wstring present = store_.defaultText();
    const auto text =
        frmAnswerEdit(L"Default message", present.empty() ? defaultAnswer() : present).ask();
    if (text)
        written([&] { store_.saveDefault(*text); }, "editDefault");
}

void frmAutoAnswer::addException()
{
    const std::wstring name =
        InputBoxEx(L"Enter a name to add to your Exceptions List below and click ~BOK~B.", kTitle,
                   {}, {.maxLength = static_cast<int>(kMostTitle)});
    if (name.empty() || !isOpen())
        return;
    written([&] { store_.addException(name); }, "addException");
    LoadExceptions();
}

void frmAutoAnswer::removeException()
{
    const int row = lstExceptions.selected();
    if (row < 0)
        return;
    written([&] { store_.removeException(lstExceptions.itemText(row)); }, "removeException");
    LoadExceptions();
}

} // namespace velora
