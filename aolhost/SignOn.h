#pragma once
#include "aolhost/Document.h"

namespace aolhost {

/// The sign-on screen, which after signing off says goodbye in its caption.
class SignOn final : public Document {
public:
    explicit SignOn(bool goodbye);

protected:
    void build() override;
    void layout(int width, int height) override;
    void paint(HDC dc, const RECT& area) override;
    HWND firstFocus() const override;

private:
    void signOn();
    bool goodbye_;
    Control *nameLabel_ = nullptr, *names_ = nullptr, *passwordLabel_ = nullptr,
            *password_ = nullptr, *placeLabel_ = nullptr, *places_ = nullptr;
    IconButton *setup_ = nullptr, *access_ = nullptr, *signOn_ = nullptr, *help_ = nullptr;
};

/// "Welcome, NAME!"
class Welcome final : public Document {
public:
    Welcome();

protected:
    void build() override;
    void layout(int width, int height) override;
    void paint(HDC dc, const RECT& area) override;

private:
    Glyph* glyph_ = nullptr;
    IconButton *mail_ = nullptr, *chat_ = nullptr, *buddies_ = nullptr;
    Control* today_ = nullptr;
};

} // namespace aolhost
