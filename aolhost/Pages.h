#pragma once
// Smaller windows that keywords and buttons open.
#include "aolhost/Document.h"
#include "aolhost/RichText.h"

namespace aolhost {

/// A titled text: a member's profile, or the place of a keyword that the stand-in does not have.
class TextPage final : public Document {
public:
    TextPage(const std::wstring& caption, const std::wstring& html);

protected:
    void build() override;
    void layout(int width, int height) override;
    void paint(HDC dc, const RECT& area) override;

private:
    std::wstring html_;
    RichText* text_ = nullptr;
};

/// The list of rooms to go to.
class FindChat final : public Document {
public:
    FindChat();

protected:
    void build() override;
    void layout(int width, int height) override;

private:
    void enter();
    Control* list_ = nullptr;
    IconButton* go_ = nullptr;
};

} // namespace aolhost
