#include "chat/modCurrentFade.h"
#include "chat/modUseScheme.h"
#include "core/MsgBoxEx.h"
#include "settings/Options.h"

namespace velora {

bool useScheme(const clsSchemes& schemes, const std::wstring& name)
{
    const auto scheme = schemes.load(name);
    if (!scheme) {
        MsgBoxEx(L"~B~CRCannot load the Scheme!~B~CN~N ~NThe file of ~B~CB" + literal(name)
                     + L"~B~CN is damaged or gone.  Your fade stays as it is.",
                 kMsgExclamation, L"Fader");
        return false;
    }
    // The options of the fade move to the scheme's own section.
    opt::Fader::Default.set(name);
    LoadFadeScheme();
    setCurrentFade(scheme->fade);
    return true;
}

} // namespace velora
