#include "im_mail/frmIgnored.h"

#include "base/clock.h"
#include "base/files.h"
#include "base/text.h"
#include "base/trap.h"
#include "core/MsgBoxEx.h"
#include "core/frmInpBox.h"
#include "core/modWindowPlace.h"
#include "im_mail/clsIMSession.h"

namespace velora {
namespace {

constexpr char kModule[] = "frmIgnored";
constexpr wchar_t kPlaceKey[] = L"IgnoredPosition";

std::wstring dataFolder()
{
    return joinPath(imProgramFolder(), L"data");
}

/// What the user answers; absent when cancelled or no number.
std::optional<long> askDays(const std::wstring& screenName)
{
    frmInpBox box(
        L"Please enter the number of days you would like to ignore IMs from this screen name.~N "
        L"~N~B"
            + literal(screenName) + L"~B (nothing or 0: for good)",
        L"Velora - Ignore", L"", {.maxLength = 6});
    const auto typed = box.answer();
    if (!typed)
        return std::nullopt;
    const long days = ignoreDaysOf(*typed);
    if (days < 0) {
        MsgBoxEx(L"Please enter the number of days as a whole number.", kMsgExclamation, L"Ignore");
        return std::nullopt;
    }
    return days;
}

bool shutOut(const std::wstring& screenName)
{
    for (const IgnoredName& present : ignoredNames(dataFolder(), dateSerial(now())))
        if (screenNameKey(present.name) == screenNameKey(screenName))
            return true;
    return false;
}

void tellExists()
{
    MsgBoxEx(L"~B~CRName already exists in list!~B~CN~N ~NThis screen name cannot be added because "
             L"it already exists in your ignore list!",
             kMsgExclamation, L"Ignore");
}

} // namespace

void AddToIgnore(const std::wstring& screenName)
{
    trap(kModule, [&] {
        if (screenNameKey(screenName).empty())
            return;
        if (shutOut(screenName))
            return tellExists();
        const auto days = askDays(screenName);
        if (!days)
            return;
        IgnoreResult result;
        try {
            result = addIgnored(dataFolder(), screenName, *days, dateSerial(now()));
        } catch (...) {
            reportCurrentException(kModule, "AddToIgnore");
            MsgBoxEx(L"The ignore list could not be written. The name was not added.", kMsgCritical,
                     L"Ignore");
            return;
        }
        if (result == IgnoreResult::exists)
            tellExists();
        else if (result == IgnoreResult::noName)
            MsgBoxEx(L"This is no screen name: ~B" + literal(screenName.substr(0, 100)) + L"~B",
                     kMsgExclamation, L"Ignore");
        if (frmIgnored* const list = Form::find<frmIgnored>())
            list->refresh();
    });
}

void frmIgnored::openList()
{
    trap(kModule, [] {
        if (frmIgnored* const present = find<frmIgnored>())
            return present->bringToFront();
        open<frmIgnored>().show();
    });
}

FormOptions frmIgnored::options() const
{
    FormOptions options;
    options.title = L"Velora - Ignored Screen Names";
    options.kind = FormKind::sizable;
    options.place = rememberedPlace(L"IM", kPlaceKey);
    return options;
}

void frmIgnored::onCreate()
{
    lblNames.create(*this, L"Instant messages from these screen names are closed unread:");
    lstNames.create(*this, L"Ignored screen names", {{L"Screen name", 170}, {L"Ignored", 120}});
    lstNames.setPreferredSize({310, 190});
    lstNames.getText = [this](int row, int column) { return cell(row, column); };
    lstNames.onSelect = [this] { cmdRemove.enable(lstNames.selectedCount() > 0); };
    lstNames.onKey = [this](UINT key) {
        if (key == VK_DELETE)
            remove();
    };
    cmdAdd.create(*this, L"&Add...", [this] { add(); });
    cmdRemove.create(*this, L"&Remove", [this] { remove(); });
    cmdClose.create(*this, L"Close", [this] { close(CloseReason::user); });
    setCancelButton(cmdClose);
    tips.add(cmdAdd, L"Shut out a screen name, for good or for some days");
    tips.add(cmdRemove, L"Let IMs from the selected screen names in again");
    setLayout(rows({lblNames, grow(lstNames), buttonRow({cmdAdd, cmdRemove, cmdClose})}).margins());
    setFirstFocus(lstNames);
    refresh();
}

void frmIgnored::onDestroy()
{
    rememberPlace(L"IM", place(), kPlaceKey);
}

void frmIgnored::refresh()
{
    names_ = ignoredNames(dataFolder(), dateSerial(now()));
    lstNames.setRowCount(static_cast<int>(names_.size()));
    lstNames.refresh();
    cmdRemove.enable(lstNames.selectedCount() > 0);
}

std::wstring frmIgnored::cell(int row, int column) const
{
    if (row < 0 || static_cast<std::size_t>(row) >= names_.size())
        return {};
    const IgnoredName& name = names_[static_cast<std::size_t>(row)];
    if (column == 0)
        return name.name;
    if (name.daysLeft == 0)
        return L"for good";
    return name.daysLeft == 1 ? L"today" : L"for " + std::to_wstring(name.daysLeft) + L" days";
}

void frmIgnored::add()
{
    const std::wstring name = InputBoxEx(L"Please enter the screen name to ignore.", L"Ignore", {},
                                         {.maxLength = static_cast<int>(kMostIgnoredName)});
    if (!trim(name).empty())
        AddToIgnore(trim(name));
}

void frmIgnored::remove()
{
    try {
        for (const int row : lstNames.selection())
            removeIgnored(dataFolder(), names_.at(static_cast<std::size_t>(row)).name);
    } catch (...) {
        reportCurrentException(kModule, "remove");
        MsgBoxEx(L"The ignore list could not be written.", kMsgCritical, L"Ignore");
    }
    if (!isOpen())
        return;
    lstNames.select(-1);
    refresh();
}

} // namespace velora
