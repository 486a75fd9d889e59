#pragma once
#include "aolhost/Document.h"
#include "aolhost/FormatBar.h"
#include "aolhost/RichText.h"

#include <vector>

namespace aolhost {

/// An instant message: the conversation with one member.
class ImWindow final : public Document {
public:
    enum class Kind { from, to, internet };
    ImWindow(const std::wstring& who, Kind kind);

    const std::wstring& who() const { return who_; }
    /// The member says something; the caption's ">" marks it while it is unread.
    void receive(const std::wstring& html);
    void sendText(const std::wstring& html);
    std::wstring conversationText() const;

    /// The open conversation with that member; null when there is none.
    static ImWindow* with(const std::wstring& who);

protected:
    void build() override;
    void layout(int width, int height) override;
    void paint(HDC dc, const RECT& area) override;
    void activated() override { setUnread(false); }
    HWND firstFocus() const override;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Line {
        std::wstring who, html;
    };
    void buildReply();
    void buildButtons();
    void openReply();
    void showReply(bool visible);
    void setUnread(bool unread);
    void add(const Line& line);
    void show(const Line& line);
    void sendTyped();
    std::wstring caption() const;

    std::wstring who_;
    Kind kind_;
    bool unread_ = false;
    bool replyOpen_ = false;
    std::vector<Line> waiting_; ///< before the window was built
    RichText *conversation_ = nullptr, *reply_ = nullptr;
    FormatBar format_;
    IconButton *send_ = nullptr, *respond_ = nullptr, *profile_ = nullptr, *cancel_ = nullptr;
    Control* sender_ = nullptr;
};

/// "Send Instant Message" and its other names: the window in which one is begun.
class SendImWindow final : public Document {
public:
    explicit SendImWindow(const std::wstring& to = {});

protected:
    void build() override;
    void layout(int width, int height) override;
    HWND firstFocus() const override;

private:
    void sendTyped();
    std::wstring to_;
    Control *label_ = nullptr, *name_ = nullptr;
    RichText* text_ = nullptr;
    FormatBar format_;
    IconButton *send_ = nullptr, *available_ = nullptr, *cancel_ = nullptr;
};

} // namespace aolhost
