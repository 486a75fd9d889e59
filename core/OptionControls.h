#pragma once
// The controls of the options window: one object for each field, whatever it is made of. It shows
// the field's text and tells when the user has changed it.
#include "core/modOptionPages.h"
#include "ui/Controls.h"
#include "ui/Form.h"
#include "ui/ToolTip.h"

#include <functional>
#include <memory>
#include <string>

namespace velora {

class OptionControl {
public:
    OptionControl() = default;
    virtual ~OptionControl() = default;
    OptionControl(const OptionControl&) = delete;
    OptionControl& operator=(const OptionControl&) = delete;

    virtual Box create(Form& page, const OptionField& field, ToolTip& tips) = 0;
    /// Does not call onChange.
    void show(const std::wstring& text);
    virtual void enable(bool enabled) = 0;
    virtual void focus() = 0;
    /// The label in front; those of a group get one width.
    virtual Label* label() { return nullptr; }
    /// Takes over what has been typed and not been taken yet.
    virtual void commit() {}
    std::function<void(const std::wstring& text)> onChange;
    /// The user has put other settings in the place of all.
    std::function<void()> onReplaced;

protected:
    virtual void display(const std::wstring& text) = 0;
    /// The user has changed it.
    void changed(const std::wstring& text);

private:
    std::wstring shown_;
    bool filled_ = false, filling_ = false;
};

std::unique_ptr<OptionControl> makeOptionControl(FieldKind kind);

} // namespace velora
