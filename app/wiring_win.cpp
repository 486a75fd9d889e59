#include "app/wiring_win.h"

#include "chat/ToolbarRoutes.h"
#include "chat/clsChatLogger.h"
#include "chat/frmHotAlert.h"
#include "chat/frmTemplates.h"
#include "chat/frmToolbar.h"
#include "chat/modEditorLists.h"
#include "chat/modInstallScheme.h"
#include "chat/modQuotesMenu_win.h"
#include "chat/modSchemeFiles.h"
#include "chat/modTemplates.h"
#include "core/MsgBoxEx.h"
#include "core/frmOptions.h"
#include "core/modAOL.h"
#include "hook/AgentLink.h"
#include "im_mail/modIMServices.h"
#include "im_mail/modIM_Manager.h"
#include "im_mail/modMailTools.h"
#include "sounds/modDescriptions.h"
#include "sounds/modSounds.h"
#include "sounds/modWavLibrary.h"

namespace velora {
namespace {

void quoteReply()
{
    frmToolbar* const toolbar = frmToolbar::instance();
    if (!toolbar || !toolbar->quoteReply())
        MsgBoxEx(L"~B~CRNo E-Mail is being read!~B~CN~N ~NPlease open the E-Mail that you want to "
                 L"answer and try this operation again.",
                 kMsgExclamation, L"Mail");
}

/// There is no update service: the user learns which version this is and how updates come.
void liveUpdate()
{
    MsgBoxEx(
        L"~BVelora " VELORA_VERSION L"~B is installed.~N ~NUpdates come as a new set-up program. "
        L"Run it to bring this installation up to date; your settings, logs and lists are kept.",
        kMsgInformation, L"Live Update");
}

} // namespace

StartupServices startupServices()
{
    StartupServices services;
    services.openDatabase = openWavDatabase;
    services.installFadeScheme = [](const std::wstring& file) {
        return InstallScheme(file, AppPath());
    };
    services.liveUpdate = liveUpdate;
    services.makeDefaultTemplates = MakeDefaultTemplates;
    services.loadCategories = loadWavCategories;
    services.loadToolbar = [] {
        prepareFader(AppPath());
        frmToolbar::load();
        startIMs();
    };
    services.releaseAol = [] {
        endIMs();
        endIMServices();
        if (frmToolbar* const toolbar = frmToolbar::instance())
            toolbar->UnhookSubclasses();
        aolLink().disconnect();
    };
    return services;
}

void fillToolbarRoutes()
{
    ToolbarRoutes& routes = toolbarRoutes();
    routeSounds(routes);
    routeDescriptions();
    routeMail(routes);
    routes.checkForAlias = CheckForAlias;
    routes.logLine = [](const std::wstring& name, const std::wstring& message) {
        clsChatLogger::instance().AppendChatLog(name, message);
    };
    routes.roomEntered = [](const std::wstring& caption) {
        clsChatLogger::instance().enterRoom(caption);
    };
    routes.roomLeft = [] { clsChatLogger::instance().leaveRoom(); };
    routes.logNote = [](const std::wstring& note) { clsChatLogger::instance().note(note); };
    routes.hotWord = frmHotAlert::alert;
    routes.quotesMenu = LoadQuotesMenu;
    routes.quoteReply = quoteReply;
    routes.editTemplates = frmTemplates::showWindow;
    routeIMs(routes);
    startIMServices({.focusIM = [](WindowId im) { focusIM(reinterpret_cast<HWND>(im)); },
                     .adjustIMWindow = ShowButtons_AU});
    routes.imSwitch = imRoutes().imSwitch;
    routes.ignoreMember = imRoutes().addToIgnore;
    routes.ignoredNames = imRoutes().ignoredNames;
    routes.autoAnswer = imRoutes().autoAnswer;
    routes.showOptions = [] { frmOptions::showOptions(); };
    imRoutes().showOptions = [] { frmOptions::showOptions(L"Instant Messages"); };
    routes.checkUpdate = liveUpdate;
    routes.exitProgram = [] { UnloadAllForms(true); };
    routes.aolEnded = [] { UnloadAllForms(false); };
}

void closeDatabase()
{
    closeWavDatabase();
}

void giveAolBack() noexcept
{
    aolLink().disconnect();
}

} // namespace velora
