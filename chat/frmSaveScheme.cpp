#include "chat/frmSaveScheme.h"

#include "base/text.h"

namespace velora {
namespace {
constexpr int kLongestName = 60, kLongestText = 250;
constexpr Size kField{250, 0};
} // namespace

std::optional<SchemeLabel> frmSaveScheme::ask()
{
    return runModal() == IDOK ? std::optional(label_) : std::nullopt;
}

FormOptions frmSaveScheme::options() const
{
    FormOptions options;
    options.title = L"Velora - Save Scheme";
    return options;
}

void frmSaveScheme::onCreate()
{
    const auto field = [this](Label& label, const wchar_t* caption, Edit& edit,
                              const std::wstring& text, int longest) {
        label.create(*this, caption);
        edit.create(*this, text, {.maxLength = longest});
        edit.setPreferredSize(kField);
        return columns({Box(label).align(Align::middle), space(), Box(edit)});
    };
    const Box fields =
        rows({field(lblName, L"&Name:", txtName, label_.name, kLongestName),
              field(lblAuthor, L"&Author:", txtAuthor, label_.author, kLongestText),
              field(lblComments, L"&Comments:", txtComments, label_.comments, kLongestText)});
    cmdOK.create(*this, L"OK", [this] {
        label_ = {trim(txtName.text()), trim(txtAuthor.text()), trim(txtComments.text())};
        endModal(IDOK);
    });
    cmdCancel.create(*this, L"Cancel", [this] { endModal(IDCANCEL); });
    txtName.onChange = [this] { cmdOK.enable(!trim(txtName.text()).empty()); };
    cmdOK.enable(!trim(label_.name).empty());
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    setFirstFocus(txtName);
    setLayout(rows({fields, buttonRow({cmdOK, cmdCancel})}).margins());
}

} // namespace velora
