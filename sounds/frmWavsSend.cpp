// The wav list: sending and hearing, and the descriptions that go with it.
#include "base/text.h"
#include "base/trap.h"
#include "chat/frmEditor.h"
#include "core/ColourWell.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modMain.h"
#include "settings/Options.h"
#include "sounds/frmTagEdit.h"
#include "sounds/frmWavs.h"
#include "sounds/modPlayback.h"
#include "sounds/modSendSound.h"
#include "sounds/modSoundLine.h"

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmWavs";

} // namespace

std::wstring frmWavs::soundLine(const std::wstring& name)
{
    const std::wstring command = soundCommand(name, opt::WavList::UseUpperWavTrigger.get());
    if (!chkFancy.checked())
        return command;
    std::wstring style = opt::Glintune::Current.get();
    if (chkRandom.checked()) {
        lstFancyRnd.clear();
        for (const EditorEntry& entry : loadEditorList(EditorList::Glintunes, AppPath()))
            lstFancyRnd.push_back(entry.text);
        if (!lstFancyRnd.empty())
            style = randomGlintune(lstFancyRnd, random_);
    }
    const Glintune tune = decorate(style, command);
    if (tune.newStyle)
        opt::Glintune::Current.set(*tune.newStyle);
    return tune.line;
}

void frmWavs::cmdSend_Click()
{
    trap(kModule, [&] {
        const auto sound = chosenOrTold(kNoWavSelected);
        if (!sound)
            return;
        SoundToSend send{soundLine(sound->name), {}};
        if (opt::Descriptions::SendToRoom.get())
            if (const auto described = description(sound->path))
                send.description = descriptionLine(
                    descriptionText(*described, opt::Descriptions::DescripField1.get(),
                                    opt::Descriptions::DescripField2.get()),
                    opt::Descriptions::TrimDescrip.get());
        if (sendSound(send) && isOpen())
            showStatus(L"Sent " + send.line);
    });
}

void frmWavs::cmdPlain_Click()
{
    trap(kModule, [&] {
        const auto sound = chosenOrTold(kNoWavSelected);
        if (!sound)
            return;
        const std::wstring line = soundCommand(sound->name, opt::WavList::UseUpperWavTrigger.get());
        if (sendSound({line, {}, true}) && isOpen())
            showStatus(L"Sent " + line);
    });
}

void frmWavs::cmdPreview_Click()
{
    trap(kModule, [&] {
        const auto sound = chosenOrTold(kNoWavSelected);
        if (!sound || !fileThere(*sound))
            return;
        if (PlaySoundEx(sound->path) && isOpen())
            showStatus(L"Previewing " + sound->name);
    });
}

void frmWavs::lstWav_DblClick()
{
    const bool sends = equalNoCase(opt::WavList::DoubleClick.get(), L"Send")
                       && (AOL_FindChat() || soundEditInFront());
    if (sends)
        cmdSend_Click();
    else
        cmdPreview_Click();
}

void frmWavs::enterPressed()
{
    if (rollUp())
        return;
    for (Button* button : {&cmdSend, &cmdPlain, &cmdPreview, &cmdStop, &cmdGlintunes})
        if (button->focused())
            return button->click();
    for (ImageButton* button : {&mnuSound, &mnuCategory, &mnuList, &mnuView, &mnuOptions})
        if (button->focused())
            return button->click();
    lstWav_DblClick();
}

void frmWavs::chkFancy_Click()
{
    opt::Glintune::On.set(chkFancy.checked());
    chkRandom.enable(chkFancy.checked());
}

void frmWavs::editGlintunes()
{
    frmEditor::openEditor(EditorList::Glintunes, AppPath());
}

void frmWavs::showPlayed(const std::wstring& name)
{
    showStatus(name + L" played");
}

void frmWavs::showProgress(const SoundProgress& progress)
{
    const bool visible = !progress.path.empty() && opt::WavList::ShowProgress.get();
    if (visible != pbarProgress.shown()) {
        pbarProgress.show(visible);
        relayout();
    }
    const int percent = static_cast<int>(progress.played * 100);
    if (visible)
        pbarProgress.setValue(percent);
    else if (lblStatus.text().starts_with(L"Previewing"))
        showStatus(L"");
    if (!visible || !opt::WavList::ShowProgressTooltip.get()) {
        progressTip_.reset();
        return;
    }
    if (!progressTip_) {
        progressTip_.emplace().create(*this, opt::WavList::ProgressTooltipBalloon.get());
        progressTip_->setColours(systemColour(opt::WavList::WpTipTextColor.get()),
                                 systemColour(opt::WavList::WpTipBackColor.get()));
    }
    progressTip_->add(pbarProgress, progress.path.substr(progress.path.find_last_of(L'\\') + 1)
                                        + L": " + std::to_wstring(percent) + L" %");
}

std::optional<WavDescription> frmWavs::description(clsWavListModel::Index row) const
{
    if (!wavDescriptions().find)
        return std::nullopt;
    return wavDescriptions().find(std::wstring(model().rows().fileName(row)));
}

std::optional<WavDescription> frmWavs::description(const std::wstring& path) const
{
    if (!wavDescriptions().find)
        return std::nullopt;
    return wavDescriptions().find(path.substr(path.find_last_of(L"\\/") + 1));
}

void frmWavs::descriptionsChanged()
{
    lblDescription.show(descriptionsShown() == Shown::line);
    setColumns();
    fitColumns();
    lstWav.refresh();
    relayout();
    showDescription();
}

// Under the list: the description of the chosen sound.
void frmWavs::showDescription()
{
    if (!lblDescription.shown())
        return;
    const auto sound = chosen();
    const auto described = sound ? description(sound->path) : std::nullopt;
    const std::wstring text =
        described ? descriptionTip(*described, shownFields()) : std::wstring();
    lblDescription.setText(replaceAll(replaceAll(text, L"\r\n", L"  "), L"&", L"&&"));
}

void frmWavs::showTip(int row)
{
    rowTip_.hideBalloon();
    if (row < 0 || row >= model().count() || descriptionsShown() != Shown::tip)
        return;
    const auto described = description(model().at(row));
    const std::wstring text =
        described ? descriptionTip(*described, shownFields()) : std::wstring();
    if (text.empty())
        return;
    POINT at;
    GetCursorPos(&at);
    rowTip_.setBalloonShape(opt::Descriptions::UseBalloon.get());
    rowTip_.setColours(systemColour(opt::Descriptions::Textcolor.get()),
                       systemColour(opt::Descriptions::Backcolor.get()));
    rowTip_.showBalloon(*this, {static_cast<int>(at.x), static_cast<int>(at.y)}, {},
                        model().name(row) + L"\r\n" + text, ToolTip::Sign::none, 10000);
}

void frmWavs::editTag()
{
    trap(kModule, [&] {
        const auto sound = chosenOrTold(kNoWavSelected);
        if (sound && fileThere(*sound) && EditTag(sound->path) && isOpen())
            Refresh(); // its size may have changed
    });
}

void frmWavs::editDescription()
{
    trap(kModule, [&] {
        const WavDescriptions& descriptions = wavDescriptions();
        const auto sound = chosenOrTold(kNoWavSelected);
        if (!sound || !descriptions.edit)
            return;
        if (descriptions.editorOpen && descriptions.editorOpen()) {
            MsgBoxEx(L"~B~CRCannot edit description!~B~CN~N ~NThe Descriptions Editor is already "
                     L"open.  Please edit the select description via the Descriptions Editor.",
                     kMsgExclamation, L"Wav List");
            return;
        }
        const std::wstring name = sources_[sound->source].name;
        const auto present =
            descriptions.categories ? descriptions.categories() : std::vector<std::wstring>{name};
        const bool there = std::any_of(present.begin(), present.end(),
                                       [&](const auto& one) { return equalNoCase(one, name); });
        if (!there) {
            if (!descriptions.createCategory
                || MsgBoxEx(L"The category ~B" + literal(name)
                                + L"~B does not exist in your Wav Descriptions database.~N "
                                  L"~NWould you like to create this category now?",
                            kMsgYesNo | kMsgQuestion, L"Wav List")
                       != kAnswerYes
                || !descriptions.createCategory(name))
                return;
        }
        if (descriptions.edit(sound->path, name) && isOpen())
            descriptionsChanged();
    });
}

} // namespace velora
