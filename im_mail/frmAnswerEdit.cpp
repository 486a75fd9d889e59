#include "im_mail/frmAnswerEdit.h"

#include "core/MsgBoxEx.h"
#include "im_mail/modAnswerRules.h"

namespace velora {
namespace {
constexpr char kModule[] = "frmAnswerEdit";
constexpr Size kTextSize{400, 150};
constexpr int kMostTyped = 4000; // a message over the limit can be shortened here
} // namespace

frmAnswerEdit::frmAnswerEdit(std::wstring heading, std::wstring text)
    : Form(kModule), heading_(std::move(heading)), text_(std::move(text))
{
}

std::optional<std::wstring> frmAnswerEdit::ask()
{
    if (runModal() != IDOK)
        return std::nullopt;
    return text_;
}

FormOptions frmAnswerEdit::options() const
{
    FormOptions options;
    options.title = L"Velora - IM Answer Message";
    options.kind = FormKind::sizable;
    return options;
}

void frmAnswerEdit::onCreate()
{
    lblHeading.create(*this, heading_);
    txtMessage.create(*this, text_,
                      {.multiline = true, .wantsReturn = true, .maxLength = kMostTyped});
    txtMessage.setPreferredSize(kTextSize);
    txtMessage.onChange = [this] { showCount(); };
    rchLook.create(*this, {.readOnly = true});
    rchLook.setPreferredSize(kTextSize);
    rchLook.show(false);
    lblCount.create(*this, L"");
    chkHtml.create(*this, L"&HTML Format", true);
    chkHtml.onChange = [this] { showFormat(); };
    cmdLink.create(*this, L"&Edit Hyperlink...", [this] { editHyperlink(); });
    cmdName.create(*this, L"&Name", [this] { insertName(); });
    cmdCount.create(*this, L"&Count", [this] { tellCount(); });
    cmdOK.create(*this, L"OK", [this] { accept(); });
    cmdCancel.create(*this, L"Cancel", [this] { endModal(IDCANCEL); });
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    tips.add(chkHtml, L"Checked: the message with its markup, to be edited. Not checked: as the "
                      L"other member will see it");
    tips.add(cmdLink, L"Makes a link of the selected text");
    tips.add(cmdName, L"Inserts {%}, which becomes the sender's name");
    tips.add(cmdCount, L"Tells the message's length and AOL's limit");
    setLayout(
        rows({lblHeading, grow(txtMessage), grow(rchLook),
              columns({Box(chkHtml).align(Align::middle), space(), cmdLink, cmdName, cmdCount}),
              columns({Box(lblCount).align(Align::middle).grow(), buttonRow({cmdOK, cmdCancel})})})
            .margins());
    setFirstFocus(txtMessage);
    showCount();
}

void frmAnswerEdit::showFormat()
{
    const bool html = chkHtml.checked();
    if (!html) {
        rchLook.select(0, -1);
        rchLook.replaceSelection(L"");
        for (const LookRun& run : answerLook(txtMessage.text()))
            rchLook.append(run.text, {.colour = run.link ? RGB(0, 0, 192) : RGB(0, 0, 0),
                                      .bold = run.bold,
                                      .italic = run.italic,
                                      .underline = run.underline || run.link});
    }
    txtMessage.show(html);
    rchLook.show(!html);
    cmdLink.enable(html);
    cmdName.enable(html);
    relayout();
}

void frmAnswerEdit::showCount()
{
    const std::size_t length = txtMessage.text().size();
    lblCount.setText(std::to_wstring(length) + L" of " + std::to_wstring(kMostImCharacters)
                     + L" characters");
    lblCount.setColours(length > kMostImCharacters ? RGB(192, 0, 0) : GetSysColor(COLOR_BTNTEXT),
                        GetSysColor(COLOR_BTNFACE));
    lblCount.redraw();
}

void frmAnswerEdit::editHyperlink()
{
    const auto [from, to] = txtMessage.selection();
    const std::wstring chosen = txtMessage.text().substr(static_cast<std::size_t>(from),
                                                         static_cast<std::size_t>(to - from));
    const std::wstring address = InputBoxEx(L"Please enter the address that the link leads to.",
                                            L"Edit Hyperlink", L"http://", {.maxLength = 300});
    if (!isOpen() || address.empty())
        return;
    txtMessage.select(from, to);
    txtMessage.replaceSelection(hyperlink(address, chosen));
    txtMessage.focus();
}

void frmAnswerEdit::insertName()
{
    txtMessage.replaceSelection(L"{%}");
    txtMessage.focus();
}

void frmAnswerEdit::tellCount()
{
    MsgBoxEx(L"This message contains ~B" + std::to_wstring(txtMessage.text().size())
                 + L"~B characters.~N ~NThe outgoing IM character limit is ~B512~B characters.~N "
                   L"~NBoth counts include HTML markup.",
             kMsgInformation, L"Auto-Answer");
}

void frmAnswerEdit::accept()
{
    // A message that AOL doesn't take would never be sent: it is shortened here, not lost.
    if (txtMessage.text().size() > kMostImCharacters)
        return tellCount();
    text_ = txtMessage.text();
    endModal(IDOK);
}

} // namespace velora
