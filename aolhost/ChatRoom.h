#pragma once
#include "aolhost/Document.h"
#include "aolhost/RichText.h"

#include <vector>

namespace aolhost {

class ChatRoom final : public Document {
public:
    explicit ChatRoom(const std::wstring& name);

    const std::wstring& name() const { return name_; }
    /// The same window becomes another room.
    void move(const std::wstring& name);
    void say(const std::wstring& who, const std::wstring& html);
    void host(const std::wstring& text);
    /// One numbered line of changing members: "Member11:" TAB "line 1".
    void burstLine(long number);
    /// The display holds that many of them, put in at once with one notice.
    void fill(long lines);
    void clearDisplay();
    void add(const std::wstring& who);
    void remove(const std::wstring& who);
    const std::vector<std::wstring>& people() const { return people_; }
    /// Empty until the window is built.
    std::wstring displayText() const;
    long notices() const { return display_ ? display_->notices() : 0; }
    HWND displayWindow() const { return display_ ? display_->hwnd() : nullptr; }
    HWND inputWindow() const { return input_ ? input_->hwnd() : nullptr; }

protected:
    void build() override;
    void layout(int width, int height) override;
    void paint(HDC dc, const RECT& area) override;
    HWND firstFocus() const override { return inputWindow(); }

private:
    struct Line {
        std::wstring who, html;
    };
    static Line numbered(long number);
    void addLine(const Line& line);
    void show(const Line& line);
    void announce();
    void sendTyped();
    void showCount();
    std::wstring name_;
    std::vector<std::wstring> people_;
    std::vector<Line> waiting_; ///< said before the window was built
    RichText *display_ = nullptr, *input_ = nullptr;
    IconButton* send_ = nullptr;
    Control *fonts_ = nullptr, *count_ = nullptr, *here_ = nullptr, *list_ = nullptr,
            *rooms_ = nullptr;
    std::vector<IconButton*> styles_, tools_;
};

} // namespace aolhost
