#include "im_mail/frmAnswered.h"

#include "base/clock.h"
#include "base/trap.h"
#include "core/modWindowPlace.h"

namespace velora {
namespace {
constexpr char kModule[] = "frmAnswered";
constexpr wchar_t kPlaceKey[] = L"AnsweredPosition";
constexpr int kMostLines = 500;
} // namespace

void frmAnswered::add(const std::wstring& screenName)
{
    trap(kModule, [&] {
        frmAnswered* form = find<frmAnswered>();
        if (!form) {
            form = &open<frmAnswered>();
            form->show();
        }
        const DateTime when = now();
        form->lstNames.add(shortDate(when) + L" " + mediumTime(when) + L"   " + screenName);
        if (form->lstNames.count() > kMostLines)
            form->lstNames.remove(0);
        form->lstNames.select(form->lstNames.count() - 1);
    });
}

FormOptions frmAnswered::options() const
{
    FormOptions options;
    options.title = L"Velora - Answered IMs";
    options.kind = FormKind::tool;
    options.activates = false;
    options.place = rememberedPlace(L"IM", kPlaceKey);
    return options;
}

void frmAnswered::onCreate()
{
    lblNames.create(*this, L"While you were away these IMs were answered:");
    lstNames.create(*this);
    lstNames.setPreferredSize({270, 120});
    cmdClose.create(*this, L"Close", [this] { close(CloseReason::user); });
    setCancelButton(cmdClose);
    setLayout(rows({lblNames, grow(lstNames), buttonRow({cmdClose})}).margins());
}

void frmAnswered::onDestroy()
{
    rememberPlace(L"IM", place(), kPlaceKey);
}

} // namespace velora
