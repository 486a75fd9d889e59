#pragma once
// The hidden window that the Media Player control lives on. It plays mp3 files.
#include "sounds/LateObject.h"
#include "sounds/clsControlSite.h"
#include "ui/Form.h"

#include <string>

namespace velora {

class frmMPlayer final : public Form {
public:
    frmMPlayer();
    ~frmMPlayer() override;

    /// Under this name the control is registered.
    static constexpr wchar_t kProgramId[] = L"MediaPlayer.MediaPlayer.1";

    /// The open window; made when there is none. Null when the control cannot be created.
    static frmMPlayer* player();
    static frmMPlayer* instance() { return find<frmMPlayer>(); }

    /// All throw LateError where the control does not take the call.
    void play(const std::wstring& path);
    void pause();
    void stop();
    bool busy();
    /// Seconds; 0 when not known.
    double length() { return seconds(L"Duration"); }
    double position() { return seconds(L"CurrentPosition"); }

protected:
    FormOptions options() const override;
    void onCreate() override;
    void onDestroy() override;

private:
    double seconds(const wchar_t* property);
    long state();

    LateObject control_;
    clsControlSite site_;
};

} // namespace velora
