#include "base/text.h"
#include "base/trap.h"
#include "chat/ToolbarRoutes.h"
#include "chat/frmEditor.h"
#include "chat/frmFade.h"
#include "chat/frmMultiLine.h"
#include "chat/modChatCommands.h"
#include "chat/modKeyword.h"
#include "chat/modRoomText.h"
#include "chat/modShellOpen.h"
#include "core/MsgBoxEx.h"
#include "core/modAOL.h"
#include "core/modMain.h"
#include "core/modScreenNames.h"
#include "hook/aolSend.h"
#include "settings/Options.h"

namespace velora {
namespace {

constexpr char kModule[] = "modChatCommands";
constexpr DWORD kAdvertiseEvery = 60000;
constexpr wchar_t kAdvertisement[] =
    L"I'm chatting with Velora: sounds, faded text and chat tools for AOL :-)";
constexpr std::size_t kLongestMailAddress = 250;

bool imSwitch(bool on)
{
    const auto& route = toolbarRoutes().imSwitch;
    return openRoute(route ? [on] { toolbarRoutes().imSwitch(on); } : std::function<void()>(),
                     L"IM Manager");
}

bool setFader(bool on)
{
    opt::Fader::On.set(on);
    return true;
}

bool profile(const std::wstring& name)
{
    if (!name.empty())
        return showProfile(name);
    MsgBoxEx(L"~B~CRNo screen name entered!~B~CN~N ~NA screen name must be given to use the "
             L"~B~CBProfile keyword~B~CN~N ~N~BExample: /profile:~CR"
                 + literal(screenNameKey(signedOnScreenName())) + L"~B~CN",
             kMsgExclamation, L"Chat Keywords");
    return false;
}

bool logNote(const std::wstring& note)
{
    if (opt::General::ChatLog.get() && toolbarRoutes().logNote)
        toolbarRoutes().logNote(note);
    return true;
}

bool done(void (*action)())
{
    action();
    return true;
}

struct Action {
    Keyword keyword;
    bool (*run)(const std::wstring& argument);
};

using Text = const std::wstring&;

constexpr Action kActions[] = {
    {Keyword::Hushkit, [](Text) { return done(hushkit); }},
    {Keyword::ImOff, [](Text) { return imSwitch(false); }},
    {Keyword::ImOn, [](Text) { return imSwitch(true); }},
    {Keyword::Help, [](Text) { return openHelp(kHelpContents); }},
    {Keyword::WavList, [](Text) { return openRoute(toolbarRoutes().openWavs, L"Wav List"); }},
    {Keyword::Advertise, [](Text) { return advertise(); }},
    {Keyword::Update, [](Text) { return openRoute(toolbarRoutes().checkUpdate, L"update check"); }},
    {Keyword::ChangeHug, [](Text) { return done(changeHug); }},
    {Keyword::ShowFade, [](Text) { return done([] { frmFade::showPanel(AppPath()); }); }},
    {Keyword::HideFade, [](Text) { return done(frmFade::hidePanel); }},
    {Keyword::FadeOn, [](Text) { return setFader(true); }},
    {Keyword::FadeOff, [](Text) { return setFader(false); }},
    {Keyword::Options,
     [](Text) { return openRoute(toolbarRoutes().showOptions, L"options window"); }},
    {Keyword::EditKeywords,
     [](Text) { return frmEditor::openEditor(EditorList::Commands, AppPath()); }},
    {Keyword::EditGlintunes,
     [](Text) { return frmEditor::openEditor(EditorList::Glintunes, AppPath()); }},
    {Keyword::MultiLine, [](Text) { return done(frmMultiLine::showWindow); }},
    {Keyword::Profile, profile},
    {Keyword::Email, mailTo},
    {Keyword::Im, imTo},
    {Keyword::Log, logNote},
    {Keyword::Other, runUserCommand},
};

} // namespace

bool ActivateCommand(const std::wstring& text)
{
    return trap(
        kModule,
        [&] {
            const KeywordText keyword = parseKeyword(text);
            for (const Action& action : kActions)
                if (action.keyword == keyword.keyword)
                    return action.run(keyword.argument);
            return false;
        },
        false);
}

bool openRoute(const std::function<void()>& route, std::wstring_view name)
{
    if (route) {
        route();
        return true;
    }
    MsgBoxEx(L"~B~CRThe " + std::wstring(name)
                 + L" cannot be opened!~B~CN~N ~NIt is no part of this version of Velora.",
             kMsgExclamation);
    return false;
}

bool runUserCommand(const std::wstring& word)
{
    if (word.empty())
        return true;
    const std::wstring target = commandTarget(word);
    return isWebAddress(target) ? openInBrowser(target) : openAolKeyword(target);
}

bool advertise()
{
    static std::optional<DWORD> last;
    if (!requireRoom())
        return false;
    if (last && GetTickCount() - *last < kAdvertiseEvery) {
        MsgBoxEx(L"You have told the room about Velora just now.~N ~NPlease wait a ~Bminute~B "
                 L"before you do it again.",
                 kMsgInformation, L"Advertise");
        return false;
    }
    if (!sayInRoom(asTheyLeave(kAdvertisement)))
        return false;
    last = GetTickCount();
    return true;
}

void changeHug()
{
    const auto styles = loadEditorList(EditorList::Hugs, AppPath());
    if (styles.empty())
        return;
    const std::wstring current = opt::Hugs::Current.get();
    std::size_t next = 0;
    for (std::size_t i = 0; i < styles.size(); ++i)
        if (styles[i].text == current)
            next = (i + 1) % styles.size();
    opt::Hugs::Current.set(styles[next].text);
    MsgBoxEx(L"~BYour hug style is now:~B~N ~N~CB"
                 + literal(hugText(styles[next].text, signedOnScreenName())) + L"~CN",
             kMsgInformation, L"Hugs");
}

void hushkit()
{
    const bool hears = !opt::General::WavDetect.get();
    if (!hears && toolbarRoutes().stopSounds)
        toolbarRoutes().stopSounds();
    opt::General::WavDetect.set(hears);
    MsgBoxEx(hears ? L"~BHushkit is ~CGoff~CN.~B~N ~NSounds that are said in the room are played "
                     L"again."
                   : L"~BHushkit is ~CRon~CN.~B~N ~NSounds that are said in the room are not "
                     L"played.  Use ~B/hushkit~B again to hear them.",
             kMsgInformation, L"Hushkit");
}

bool mailTo(const std::wstring& address)
{
    return trap(
        kModule,
        [&] {
            if (!RequireAOLOnline())
                return false;
            const MailWindow mail = AOL_OpenEMail();
            return mail && setAolText(mail.to, address.substr(0, kLongestMailAddress));
        },
        false);
}

bool imTo(const std::wstring& screenName)
{
    return trap(
        kModule,
        [&] {
            if (!screenName.empty() && !IsScreenName(screenName)) {
                MsgBoxEx(L"~B~CRThis is no screen name!~B~CN~N ~N" + literal(screenName),
                         kMsgExclamation, L"Chat Keywords");
                return false;
            }
            return RequireAOLOnline() && AOL_OpenKeyword(L"aol://9293:" + screenName);
        },
        false);
}

bool showProfile(const std::wstring& screenName)
{
    return trap(
        kModule,
        [&] {
            if (!RequireAOLOnline())
                return false;
            if (AOL_GetProfile(screenName))
                return true;
            MsgBoxEx(L"~B~CRCannot open the profile!~B~CN~N ~NAOL shows no profile of ~B~CB"
                         + literal(screenName.substr(0, 100)) + L"~B~CN.",
                     kMsgExclamation, L"Profile");
            return false;
        },
        false);
}

} // namespace velora
