#include "aolhost/ChatRoom.h"

#include "aolhost/Aol.h"
#include "aolhost/MenuCommands.h"
#include "aolhost/Menus.h"
#include "aolhost/Text.h"

#include <algorithm>

namespace aolhost {
namespace {

constexpr const wchar_t* kHost = L"OnlineHost";
constexpr int kSide = 214;
constexpr int kTool = 66;
constexpr COLORREF kHostColor = RGB(0, 0, 160);

} // namespace

ChatRoom::Line ChatRoom::numbered(long number)
{
    return {L"Member" + std::to_wstring(number % 20 + 10), L"line " + std::to_wstring(number)};
}

ChatRoom::ChatRoom(const std::wstring& name) : name_(name), people_{aol().name}
{
    open(name, {720, 420}, Arrival::toFront,
         aol().options.chatForm ? L"AOL_CHAT_FORM" : L"AOL Child");
    announce();
}

void ChatRoom::announce()
{
    host(L"*** You are in \"" + name_ + L"\". ***");
}

void ChatRoom::move(const std::wstring& name)
{
    name_ = name;
    people_ = {aol().name};
    setText(name);
    if (built()) {
        list_->send(LB_RESETCONTENT);
        list_->addItem(aol().name);
        showCount();
    }
    announce();
}

void ChatRoom::build()
{
    const Options& options = aol().options;
    const Words& words = aol().words;
    display_ = new RichText(hwnd(), RichText::Use::display, options.version >= 7);
    fonts_ = new Control(hwnd(), Control::Kind::fontCombo);
    fonts_->addItem(L"Arial");
    fonts_->choose(0);
    for (const Picture picture :
         {Picture::colors, Picture::bold, Picture::italic, Picture::underline})
        styles_.push_back(new IconButton(hwnd(), L"", picture, IconLook::small));
    input_ = new RichText(hwnd(), RichText::Use::input);
    input_->enterOn = options.enter;
    input_->onEnter = [this] { sendTyped(); };
    send_ = new IconButton(hwnd(), words.send(), Picture::none, IconLook::push);
    send_->onClick = [this] { sendTyped(); };
    count_ = new Control(hwnd(), Control::Kind::text, {}, true);
    here_ = new Control(hwnd(), Control::Kind::text, words.tr(L"people here"));
    list_ = new Control(hwnd(), Control::Kind::list);
    rooms_ = new Control(hwnd(), Control::Kind::combo);
    for (const wchar_t* room : {L"Chat Rooms", L"Find a Chat", L"Private Chat"})
        rooms_->addItem(words.tr(room));
    rooms_->choose(0);
    for (const auto& [caption, picture] : {std::pair{L"Find a Chat", Picture::find},
                                           {L"Private Chat", Picture::door},
                                           {L"Notify AOL", Picture::bell}})
        tools_.push_back(new IconButton(hwnd(), words.tr(caption), picture, IconLook::action));
    tools_.front()->onClick = [] { runMenuCommand(kFindChat); };
    for (const std::wstring& who : people_)
        list_->addItem(who);
    showCount();
    for (const Line& line : std::exchange(waiting_, {}))
        show(line);
}

void ChatRoom::layout(int width, int height)
{
    const int side = width - kSide;
    const int inputTop = height - 34;
    display_->place(8, 30, side - 16, inputTop - 62);
    fonts_->place(8, inputTop - 27, 130, 200);
    int x = 146;
    for (IconButton* style : styles_) {
        style->place(x, inputTop - 28, 24, 24);
        x += 26;
    }
    input_->place(8, inputTop, side - 90, 26);
    send_->place(side - 76, inputTop, 68, 26);
    count_->place(side + 4, 10, 26, 16);
    here_->place(side + 30, 10, kSide - 38, 16);
    list_->place(side + 4, 30, kSide - 12, height - 30 - 98);
    rooms_->place(side + 4, height - 90, kSide - 12, 200);
    x = side + 4;
    for (IconButton* tool : tools_) {
        tool->place(x, height - 58, kTool, 52);
        x += kTool;
    }
}

void ChatRoom::paint(HDC dc, const RECT& area)
{
    RECT band = area;
    band.bottom = 24;
    band.right = area.right - kSide;
    fillGradient(dc, band, palette::kBlue, palette::kPage, false);
    band.left = 10;
    drawText(dc, band, name_, Face::bold, RGB(255, 255, 255), DT_VCENTER | DT_SINGLELINE);
}

void ChatRoom::say(const std::wstring& who, const std::wstring& html)
{
    aol().transcript.add(L"said", who, html);
    addLine({who, html});
}

void ChatRoom::host(const std::wstring& text)
{
    aol().transcript.add(L"host", kHost, text);
    addLine({kHost, text});
}

void ChatRoom::burstLine(long number)
{
    addLine(numbered(number));
}

void ChatRoom::fill(long lines)
{
    if (!built())
        return;
    display_->clear();
    // In pieces: the rich edit's time for one text grows faster than the text.
    constexpr long piece = 100;
    std::wstring text;
    for (long i = 1; i <= lines; ++i) {
        const Line line = numbered(i);
        text += (i == 1 ? L"" : L"\r\n") + line.who + L":\t" + line.html;
        if (i % piece == 0 || i == lines)
            display_->append({{.text = std::exchange(text, {})}});
    }
    display_->notifyChanged(aol().options.notice);
}

void ChatRoom::addLine(const Line& line)
{
    if (built())
        show(line);
    else
        waiting_.push_back(line);
}

void ChatRoom::show(const Line& line)
{
    const bool host = line.who == kHost;
    std::vector<Run> runs{{.text = (display_->length() > 0 ? L"\r\n" : L"") + line.who + L":",
                           .color = host ? kHostColor : palette::kText,
                           .bold = true}};
    runs.push_back({.text = L"\t"});
    for (Run& run : parseMarkup(line.html, false)) {
        if (host)
            run.color = kHostColor;
        runs.push_back(std::move(run));
    }
    display_->append(runs);
    const long limit = aol().options.trimAt;
    if (limit > 0 && display_->length() > limit)
        display_->trimTo(limit - limit / 4);
    display_->notifyChanged(aol().options.notice);
}

void ChatRoom::sendTyped()
{
    const std::wstring typed = input_->text();
    if (trimmed(typed).empty() || aol().options.closed)
        return;
    input_->clear();
    aol().sent.push_back(typed);
    aol().transcript.add(L"sent", aol().name, typed);
    addLine({aol().name, typed});
}

void ChatRoom::clearDisplay()
{
    waiting_.clear();
    if (!built())
        return;
    display_->clear();
    display_->notifyChanged(aol().options.notice);
}

void ChatRoom::add(const std::wstring& who)
{
    people_.push_back(who);
    if (built())
        list_->addItem(who);
    showCount();
}

void ChatRoom::remove(const std::wstring& who)
{
    std::erase_if(people_, [&](const std::wstring& name) { return sameNoCase(name, who); });
    if (built())
        list_->removeItem(who);
    showCount();
}

void ChatRoom::showCount()
{
    if (!count_)
        return;
    // A form of the class of its own says no bare number: its class is what it is known by.
    const std::wstring count = std::to_wstring(people_.size());
    count_->setText(aol().options.chatForm ? count + L":" : count);
}

std::wstring ChatRoom::displayText() const
{
    return display_ ? display_->text() : std::wstring();
}

} // namespace aolhost
