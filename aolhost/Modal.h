#pragma once
// "_AOL_Modal": AOL's own dialogs, top-level windows that hold AOL's frame while they are open.
#include "aolhost/Page.h"

#include <string>
#include <vector>

namespace aolhost {

class Modal : public Page {
public:
    static void registerClasses();

protected:
    void open(const std::wstring& caption, SIZE clientSize);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;
};

/// A picture, a few words and OK.
class MessageModal final : public Modal {
public:
    MessageModal(const std::wstring& caption, const std::wstring& message, Picture picture);
    static void about();

protected:
    void paint(HDC dc, const RECT& area) override;

private:
    std::wstring message_;
    Glyph* glyph_;
    Control* text_;
    IconButton* ok_;
};

/// The files that go with a mail.
class AttachmentsModal final : public Modal {
public:
    explicit AttachmentsModal(std::vector<std::wstring>& files);

private:
    void attach();
    void detach();
    std::vector<std::wstring>& files_;
    Control* list_;
    IconButton *attach_, *detach_, *ok_;
};

} // namespace aolhost
