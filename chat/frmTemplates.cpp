#include "chat/frmTemplates.h"

#include "base/trap.h"
#include "chat/modFadePreview_win.h"
#include "chat/modQuoteRuns.h"
#include "core/MsgBoxEx.h"
#include "core/modWindowPlace.h"
#include "ui/WinGeometry.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmTemplates";
constexpr wchar_t kTitle[] = L"Reply Templates";
constexpr wchar_t kSection[] = L"Templates";
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr int kLongestName = 60, kLongestHtml = 8000;

} // namespace

frmTemplates::frmTemplates() : Form(kModule) {}

void frmTemplates::showWindow()
{
    trap(kModule, [] {
        frmTemplates* form = find<frmTemplates>();
        if (!form)
            form = &open<frmTemplates>();
        form->bringToFront();
    });
}

FormOptions frmTemplates::options() const
{
    FormOptions options;
    options.title = L"Velora - Reply Templates";
    options.kind = FormKind::sizable;
    options.place = rememberedPlace(kSection);
    return options;
}

void frmTemplates::onCreate()
{
    before_ = now_ = TemplateSet::load();
    current_ = static_cast<std::size_t>(now_.chosen - 1);
    lblTemplates.create(*this, L"&Templates:");
    lstTemplates.create(*this);
    lstTemplates.setPreferredSize({220, 120});
    lstTemplates.onSelect = [this] { choose(); };
    cmdDefault.create(*this, L"Use as De&fault", [this] { useAsDefault(); });
    tips_.add(cmdDefault, L"Replies open with the chosen template from now on");
    cmdRestore.create(*this, L"&Restore Built-in", [this] { restore(); });
    tips_.add(cmdRestore, L"Gives the chosen template the text that came with Velora");
    const Box left = rows({lblTemplates, grow(lstTemplates), cmdDefault, cmdRestore});
    const Box right = editors();
    cmdOK.create(*this, L"OK", [this] {
        if (keep())
            close();
    });
    cmdCancel.create(*this, L"Cancel", [this] { close(CloseReason::user); });
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    setLayout(rows({grow(columns({left, grow(right)}, 2 * kGap)), buttonRow({cmdOK, cmdCancel})})
                  .margins());
    fillList();
    choose();
}

Box frmTemplates::editors()
{
    lblName.create(*this, L"&Name:");
    Edit::Options name;
    name.maxLength = kLongestName;
    txtName.create(*this, {}, name);
    txtName.onChange = [this] { changed(); };
    lblHtml.create(*this, L"Text above the &quote, as HTML:");
    Edit::Options html;
    html.multiline = true;
    html.wantsReturn = true;
    html.maxLength = kLongestHtml;
    txtHtml.create(*this, {}, html);
    txtHtml.setPreferredSize({400, 84});
    txtHtml.onChange = [this] { changed(); };
    cmdSender.create(*this, L"Add &Sender", [this] { insertVariable(L"{SN}"); });
    cmdDate.create(*this, L"Add &Date", [this] { insertVariable(L"{D}"); });
    cmdTime.create(*this, L"Add Ti&me", [this] { insertVariable(L"{T}"); });
    tips_.add(cmdSender, L"{SN}: the name of the one who is answered");
    tips_.add(cmdDate, L"{D}: the day on which the message was written");
    tips_.add(cmdTime, L"{T}: the time of day at which it was written");
    lblPreview.create(*this, L"As a reply will begin:");
    lblReply.createDrawn(*this, L"Preview", [this](HDC dc, const Rect& where) {
        drawFaded(dc, where, preview_, kWhite);
        RECT frame = toRECT(where);
        DrawEdge(dc, &frame, BDR_SUNKENOUTER, BF_RECT);
    });
    lblReply.setPreferredSize({400, 130});
    return rows({lblName, txtName, lblHtml, grow(txtHtml),
                 columns({cmdSender, cmdDate, cmdTime, space()}), lblPreview, grow(lblReply)});
}

QuoteTemplate& frmTemplates::current()
{
    return now_.templates[current_];
}

void frmTemplates::fillList()
{
    std::vector<std::wstring> captions;
    for (std::size_t i = 0; i < kTemplates; ++i) {
        const int number = static_cast<int>(i) + 1;
        captions.push_back(templateCaption(now_.templates[i], number)
                           + (number == now_.chosen ? L" (default)" : L""));
    }
    lstTemplates.setItems(captions);
    lstTemplates.select(static_cast<int>(current_));
}

void frmTemplates::choose()
{
    const int chosen = lstTemplates.selected();
    if (chosen < 0)
        return;
    current_ = static_cast<std::size_t>(chosen);
    filling_ = true;
    txtName.setText(current().Header);
    txtHtml.setText(current().CharHtml);
    filling_ = false;
    refresh();
}

void frmTemplates::changed()
{
    if (filling_)
        return;
    const std::wstring former = templateCaption(current(), 1);
    current() = {txtName.text(), txtHtml.text()};
    if (templateCaption(current(), 1) != former)
        fillList();
    refresh();
}

void frmTemplates::insertVariable(const wchar_t* variable)
{
    txtHtml.replaceSelection(variable);
    txtHtml.focus();
}

void frmTemplates::useAsDefault()
{
    now_.chosen = static_cast<int>(current_) + 1;
    fillList();
    refresh();
}

void frmTemplates::restore()
{
    current() = builtInTemplates()[current_];
    fillList();
    choose();
}

void frmTemplates::refresh()
{
    preview_ = quoteRuns(sampleReply(current().CharHtml));
    lblReply.redraw();
    cmdDefault.enable(now_.chosen != static_cast<int>(current_) + 1);
    cmdRestore.enable(current() != builtInTemplates()[current_]);
}

bool frmTemplates::keep()
{
    try {
        now_.save(before_);
    } catch (const Error&) {
        MsgBoxEx(L"~B~CRThe templates cannot be kept.~B~CN~N ~NWindows does not let Velora write "
                 L"its settings.",
                 kMsgExclamation, kTitle);
        return false;
    }
    before_ = now_;
    return true;
}

bool frmTemplates::onClose(CloseReason reason)
{
    if (reason == CloseReason::user && now_ != before_) {
        const int answer = MsgBoxEx(L"You have changed the templates.~N ~NDo you want to keep the "
                                    L"changes?",
                                    kMsgYesNoCancel | kMsgQuestion, kTitle);
        if (!isOpen())
            return true;
        if (answer == kAnswerCancel || (answer == kAnswerYes && !keep()))
            return false;
    }
    rememberPlace(kSection, place());
    return true;
}

} // namespace velora
