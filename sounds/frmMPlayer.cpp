#include "sounds/frmMPlayer.h"

#include "base/trap.h"

#include <oleauto.h>

#include <algorithm>

namespace velora {
namespace {

constexpr char kModule[] = "frmMPlayer";
/// What the control's PlayState says. Between playing and closed it waits for the file, scans or
/// skips.
constexpr long kPaused = 1, kClosed = 8;

} // namespace

frmMPlayer::frmMPlayer() : Form(kModule) {}

frmMPlayer::~frmMPlayer() = default;

frmMPlayer* frmMPlayer::player()
{
    frmMPlayer* form = instance();
    if (!form)
        form = &open<frmMPlayer>();
    if (form->control_)
        return form;
    form->close();
    return nullptr;
}

FormOptions frmMPlayer::options() const
{
    FormOptions options;
    options.title = L"Velora - Media Player";
    options.kind = FormKind::tool;
    options.activates = false;
    options.client = {16, 16};
    return options;
}

void frmMPlayer::onCreate()
{
    control_ = LateObject::create(kProgramId);
    if (control_)
        site_.attach(control_.get(), hwnd());
}

void frmMPlayer::onDestroy()
{
    if (!control_)
        return;
    trap(kModule, [&] { stop(); });
    site_.detach();
    control_ = {};
}

void frmMPlayer::play(const std::wstring& path)
{
    control_.put(L"FileName", path);
    try {
        control_.call(L"Play");
    } catch (const LateError&) {
        // While it still opens the file it takes no command; it begins by itself then.
        if (!busy())
            throw;
    }
}

void frmMPlayer::pause()
{
    control_.call(state() == kPaused ? L"Play" : L"Pause");
}

void frmMPlayer::stop()
{
    control_.call(L"Stop");
    // Without a file name the control lets go of the file.
    control_.put(L"FileName", L"");
}

long frmMPlayer::state()
{
    return control_.get(L"PlayState").number();
}

bool frmMPlayer::busy()
{
    const long present = state();
    return present > 0 && present < kClosed;
}

double frmMPlayer::seconds(const wchar_t* property)
{
    const LateValue value = control_.get(property);
    LateValue converted;
    if (FAILED(
            VariantChangeType(converted.out(), const_cast<VARIANT*>(&value.variant()), 0, VT_R8)))
        return 0;
    // A length that is not known yet is -1.
    return std::max(0.0, converted.variant().dblVal);
}

} // namespace velora
