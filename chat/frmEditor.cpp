#include "chat/frmEditor.h"

#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modWindowPlace.h"
#include "settings/Options.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmEditor";

/// What the modes differ in.
struct Mode {
    const wchar_t* title;
    const wchar_t* section; ///< of the remembered place
    const wchar_t* list;
    const wchar_t* name; ///< null: styles have none
    const wchar_t* text;
    const wchar_t* refusal;
};

constexpr Mode kModes[] = {
    {L"Chat Room Keyword Editor", L"ChatKeywords", L"Your &keywords:", L"K&eyword:",
     L"&Opens (web address or AOL keyword):",
     L"~B~CRCannot open the Chat Room Keyword Editor.~B~CN~N ~NPlease close the ~B~CBAlias "
     L"Editor~B~CN before attempting to perform this function."},
    {L"Alias Editor", L"ChatAlias", L"Your a&liases:", L"Scre&en name:", L"&Is shown as:",
     L"~B~CRCannot open the Alias Editor.~B~CN~N ~NPlease close the other ~B~CBEditor~B~CN before "
     L"attempting to perform this function."},
    {L"Hug Editor", L"Hugs", L"Your hug &styles:", nullptr, L"St&yle ({%} is the name):",
     L"~B~CRCannot open the Hug Editor.~B~CN~N ~NPlease close the other ~B~CBEditor~B~CN before "
     L"attempting to perform this function."},
    {L"Glintune Editor", L"Glintune", L"Your Glintune &styles:", nullptr,
     L"St&yle ({%} is the sound):",
     L"The Glintune Editor may not be opened while the Hug Editor is open."},
};

const Mode& modeOf(EditorList list)
{
    return kModes[static_cast<std::size_t>(list)];
}

std::wstring currentStyle(EditorList list)
{
    return list == EditorList::Hugs        ? opt::Hugs::Current.get()
           : list == EditorList::Glintunes ? opt::Glintune::Current.get()
                                           : std::wstring();
}

void setCurrentStyle(EditorList list, const std::wstring& style)
{
    if (list == EditorList::Hugs)
        opt::Hugs::Current.set(style);
    else if (list == EditorList::Glintunes)
        opt::Glintune::Current.set(style);
}

} // namespace

frmEditor::frmEditor(EditorList list, std::wstring programFolder)
    : Form(kModule), model_(list, loadEditorList(list, programFolder), currentStyle(list)),
      folder_(std::move(programFolder))
{
}

bool frmEditor::openEditor(EditorList list, const std::wstring& programFolder)
{
    return trap(
        kModule,
        [&] {
            if (find<frmEditor>()) {
                MsgBoxEx(modeOf(list).refusal, kMsgExclamation);
                if (frmEditor* const form = find<frmEditor>())
                    form->bringToFront();
                return false;
            }
            open<frmEditor>(list, programFolder).bringToFront();
            return true;
        },
        false);
}

FormOptions frmEditor::options() const
{
    FormOptions options;
    options.title = L"Velora - " + std::wstring(modeOf(list()).title);
    options.kind = FormKind::sizable;
    options.place = rememberedPlace(modeOf(list()).section, L"EditorPosition");
    return options;
}

void frmEditor::onCreate()
{
    const Mode& mode = modeOf(list());
    lblList.create(*this, mode.list);
    std::vector<ListView::Column> columns;
    if (model_.hasNames()) {
        columns.push_back({list() == EditorList::Commands ? L"Keyword" : L"Screen name", 120});
        columns.push_back({list() == EditorList::Commands ? L"Opens" : L"Is shown as", 240});
    } else {
        columns.push_back({L"Style", 290});
        columns.push_back({L"In use", 70});
    }
    ListView::Options look;
    look.multiple = false;
    lstEntries.create(*this, without(mode.list, L'&'), columns, look);
    lstEntries.setPreferredSize({380, 170});
    lstEntries.getText = [this](int row, int column) -> std::wstring {
        const EditorEntry& entry = model_.entries()[static_cast<std::size_t>(row)];
        if (model_.hasNames())
            return column == 0 ? entry.name : entry.text;
        return column == 0 ? entry.text : entry.text == model_.current() ? L"in use" : L"";
    };
    lstEntries.onSelect = [this] { showEntry(); };
    lstEntries.onActivate = [this](int) { model_.hasNames() ? txtText.focus() : makeCurrent(); };
    const Box buttons = listButtons();
    const Box edits = fields();
    cmdOK.create(*this, L"OK", [this] { ok(); });
    cmdCancel.create(*this, L"Cancel", [this] { close(CloseReason::user); });
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    setLayout(rows({rows({lblList, grow(velora::columns({grow(lstEntries), buttons}))}, kNear),
                    edits, buttonRow({cmdOK, cmdCancel})})
                  .margins());
    setFirstFocus(model_.hasNames() ? txtName : txtText);
    refresh(-1);
}

Box frmEditor::listButtons()
{
    cmdRemove.create(*this, L"&Remove", [this] { removeEntry(); });
    cmdUp.create(*this, L"Move &Up", [this] { moveEntry(-1); });
    cmdDown.create(*this, L"Move &Down", [this] { moveEntry(1); });
    cmdUse.create(*this, L"Use S&tyle", [this] { makeCurrent(); });
    tips_.add(cmdUse, L"Makes this the style in use");
    // Keywords and aliases stand in the order of their names.
    if (model_.hasNames())
        for (Button* button : {&cmdUp, &cmdDown, &cmdUse})
            button->show(false);
    return rows({cmdUse, cmdUp, cmdDown, cmdRemove, space()}).sameSizes();
}

Box frmEditor::fields()
{
    const Mode& mode = modeOf(list());
    const auto field = [&](Label& label, Edit& edit, const wchar_t* text) {
        label.create(*this, text);
        Edit::Options limited;
        limited.maxLength = 200;
        edit.create(*this, {}, limited);
        edit.onChange = [this] { fieldsChanged(); };
        return rows({label, edit}, kNear);
    };
    std::vector<Box> boxes;
    if (mode.name)
        boxes.push_back(field(lblName, txtName, mode.name));
    boxes.push_back(field(lblText, txtText, mode.text));
    cmdAdd.create(*this, L"&Add", [this] { take(true); });
    cmdChange.create(*this, L"&Change", [this] { take(false); });
    tips_.add(cmdAdd, L"Adds what is typed here as a new entry");
    tips_.add(cmdChange, L"Puts what is typed here in the place of the chosen entry");
    if (!mode.name) {
        lblPreview.create(*this, L"As it will look:");
        lblSample.create(*this, L"");
        boxes.push_back(rows({lblPreview, lblSample}, kNear));
    }
    boxes.push_back(buttonRow({cmdAdd, cmdChange}));
    return rows(boxes);
}

void frmEditor::refresh(int select)
{
    lstEntries.setRowCount(static_cast<int>(model_.entries().size()));
    lstEntries.refresh();
    lstEntries.select(select);
    showEntry();
}

void frmEditor::showEntry()
{
    const int at = lstEntries.selected();
    const EditorEntry entry =
        at < 0 ? EditorEntry() : model_.entries()[static_cast<std::size_t>(at)];
    filling_ = true;
    if (model_.hasNames())
        txtName.setText(entry.name);
    txtText.setText(entry.text);
    filling_ = false;
    cmdRemove.enable(at >= 0);
    cmdUp.enable(at > 0);
    cmdDown.enable(at >= 0 && at + 1 < lstEntries.rowCount());
    cmdUse.enable(at >= 0 && entry.text != model_.current());
    fieldsChanged();
}

void frmEditor::fieldsChanged()
{
    if (filling_)
        return;
    const int at = lstEntries.selected();
    cmdAdd.enable(dirty());
    cmdChange.enable(dirty() && at >= 0);
    // Enter takes over what is being typed before it closes the window.
    setDefaultButton(!dirty() ? cmdOK : at >= 0 ? cmdChange : cmdAdd);
    if (!model_.hasNames()) {
        const std::wstring name =
            list() == EditorList::Hugs ? signedOnScreenName() : std::wstring(L"{S welcome}");
        const std::wstring style = txtText.text();
        const std::wstring sample = style.empty() ? L"" : hugText(style, name);
        lblSample.setText(replaceAll(sample, L"&", L"&&"));
    }
}

EditorEntry frmEditor::typed() const
{
    return {model_.hasNames() ? trim(txtName.text()) : std::wstring(), trim(txtText.text())};
}

bool frmEditor::dirty() const
{
    const int at = lstEntries.selected();
    const EditorEntry entry = typed();
    if (at >= 0)
        return entry != model_.entries()[static_cast<std::size_t>(at)];
    return !entry.name.empty() || !entry.text.empty();
}

bool frmEditor::take(bool asNew)
{
    const int at = asNew ? -1 : lstEntries.selected();
    const EditorEntry entry = typed();
    const std::wstring fault = model_.fault(entry, at);
    if (!fault.empty()) {
        MsgBoxEx(fault, kMsgExclamation, modeOf(list()).title);
        return false;
    }
    if (at < 0)
        model_.add(entry);
    else
        model_.replace(at, entry);
    // Ready for the next one.
    refresh(-1);
    (model_.hasNames() ? txtName : txtText).focus();
    return true;
}

void frmEditor::removeEntry()
{
    const int at = lstEntries.selected();
    if (model_.remove(at))
        refresh(std::min(at, static_cast<int>(model_.entries().size()) - 1));
}

void frmEditor::moveEntry(int by)
{
    refresh(model_.move(lstEntries.selected(), by));
}

void frmEditor::makeCurrent()
{
    const int at = lstEntries.selected();
    if (model_.makeCurrent(at))
        refresh(at);
}

void frmEditor::ok()
{
    if (dirty() && !take(lstEntries.selected() < 0))
        return;
    try {
        saveEditorList(list(), folder_, model_.entries());
        setCurrentStyle(list(), model_.current());
    } catch (const std::exception&) {
        reportCurrentException(kModule, "ok");
        MsgBoxEx(L"~B~CRYour changes cannot be saved!~B~CN~N ~NThe window stays open so that "
                 L"nothing is lost.",
                 kMsgExclamation, modeOf(list()).title);
        return;
    }
    saved_ = true;
    close();
}

bool frmEditor::mayGo()
{
    return saved_ || (!model_.changed() && !dirty())
           || MsgBoxEx(L"~BDo you want to leave the " + std::wstring(modeOf(list()).title)
                           + L" without saving?~B~N ~NYour changes will be ~CRlost~CN.",
                       kMsgYesNo | kMsgQuestion | kMsgSecondDefault, modeOf(list()).title)
                  == kAnswerYes;
}

bool frmEditor::onClose(CloseReason reason)
{
    if (reason == CloseReason::user && !mayGo())
        return false;
    rememberPlace(modeOf(list()).section, place(), L"EditorPosition");
    return true;
}

} // namespace velora
