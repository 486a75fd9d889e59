#include "support/aolhost_win.h"

#include <doctest/doctest.h>

using namespace velora::test;

namespace {

struct ImCase {
    int edition, version;
    const wchar_t *from, *internet, *to, *respond;
    int sendIcon; ///< which of its icons is Send, from 1
};

HWND iconOf(HWND window, int which)
{
    return childOfClass(window, L"_AOL_Icon", which);
}

void press(HWND icon)
{
    PostMessageW(icon, WM_LBUTTONDOWN, 0, 0);
    PostMessageW(icon, WM_LBUTTONUP, 0, 0);
}

void setText(HWND window, const wchar_t* text)
{
    SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
}

} // namespace

TEST_CASE("instant messages by edition and version: captions, reply part, Send")
{
    const ImCase cases[] = {
        {0, 4, L">Instant Message From: Joe", L">Instant Message From: Ann",
         L"Instant Message To: Bob", L"Respond", 1},
        {0, 5, L">Instant Message From: Joe", L">Instant Message From: Ann",
         L"Instant Message To: Bob", L"Respond", 9},
        {1, 7, L">IM From: Joe", L">Internet Message From: Ann", L"IM To: Bob",
         L"Click here to reply", 10},
        {3, 5, L">Instant Message From: Joe", L">Instant Message From: Ann",
         L"Instant Message To: Bob", L"Respond", 10},
        {3, 6, L">IM From: Joe", L">Internet Message From: Ann", L"IM To: Bob",
         L"Click here to reply", 11},
        {4, 6, L"> Telegramm von: Joe", L"> Telegramm von: Ann", L"Telegramm an: Bob", L"Antworten",
         10},
        {5, 5, L">Message éclair de: Joe", L">Message éclair de: Ann", L"Message éclair de: Bob",
         L"Répondre", 9},
    };
    for (const ImCase& c : cases) {
        CAPTURE(c.edition);
        CAPTURE(c.version);
        AolHost::Options options;
        options.edition = c.edition;
        options.version = c.version;
        AolHost aol(options);
        aol.command(L"reply hidden");
        aol.command(L"im Joe: hello <b>you</b>");
        const HWND im = aol.document(L": Joe");
        REQUIRE(im);
        CHECK(textOf(im) == c.from);
        CHECK(textOf(childOfClass(im, L"RICHCNTL")) == L"Joe:\thello you");
        const HWND reply = childOfClass(im, L"RICHCNTL", 2);
        CHECK_FALSE(IsWindowVisible(reply));
        const HWND respond = childOfText(im, c.respond);
        REQUIRE(respond);
        press(respond);
        CHECK(waitFor([&] { return IsWindowVisible(reply) != 0; }));
        setText(reply, L"fine");
        press(iconOf(im, c.sendIcon));
        CHECK(waitFor([&] { return aol.status()[L"imsent"] == L"1"; }));
        CHECK(AolHost::listOf(aol.command(L"imsent")) == std::vector<std::wstring>{L"Joe: fine"});
        CHECK(AolHost::unescaped(aol.command(L"imtext Joe"))
              == L"Joe:\thello you\r\nOrv Tester:\tfine");

        aol.command(L"internetim Ann: hi");
        CHECK(textOf(aol.document(L": Ann")) == c.internet);

        const HWND form = reinterpret_cast<HWND>(std::stoul(aol.command(L"sendim"), nullptr, 16));
        setText(childOfClass(form, L"_AOL_Edit"), L"Bob");
        setText(childOfClass(form, L"RICHCNTL"), L"first");
        press(iconOf(form, c.sendIcon));
        CHECK(waitFor([&] { return aol.document(L": Bob") != nullptr; }));
        CHECK(textOf(aol.document(L": Bob")) == c.to);
        CHECK(waitFor([&] { return !IsWindow(form); }));
    }
}

TEST_CASE("the mark of an unread message goes when its window comes to the front")
{
    AolHost aol;
    aol.enterRoom();
    aol.command(L"im Joe: one");
    const HWND im = aol.document(L"Joe");
    CHECK(textOf(im) == L">Instant Message From: Joe");
    aol.command(L"activate Joe");
    CHECK(textOf(im) == L"Instant Message From: Joe");
    aol.command(L"activate Town Square");
    aol.command(L"im Joe: two");
    CHECK(textOf(im) == L">Instant Message From: Joe");
    CHECK(AolHost::unescaped(aol.command(L"imtext Joe")) == L"Joe:\tone\r\nJoe:\ttwo");
}

TEST_CASE("a reply part that is made only when asked for keeps the order of the icons")
{
    AolHost aol;
    aol.command(L"reply absent");
    aol.command(L"im Joe: hi");
    const HWND im = aol.document(L"Joe");
    CHECK_FALSE(childOfClass(im, L"RICHCNTL", 2));
    press(childOfText(im, L"Respond"));
    CHECK(waitFor([&] { return childOfClass(im, L"RICHCNTL", 2) != nullptr; }));
    setText(childOfClass(im, L"RICHCNTL", 2), L"yes");
    press(iconOf(im, 9));
    CHECK(waitFor([&] { return aol.status()[L"imsent"] == L"1"; }));
}

TEST_CASE("$im_off is answered in a window and keeps messages away until $im_on")
{
    for (const wchar_t* kind : {L"modal", L"child"}) {
        CAPTURE(kind);
        AolHost aol;
        aol.command(std::wstring(L"answer ") + kind);
        const HWND form = reinterpret_cast<HWND>(std::stoul(aol.command(L"sendim"), nullptr, 16));
        setText(childOfClass(form, L"_AOL_Edit"), L"$im_off");
        setText(childOfClass(form, L"RICHCNTL"), L"x");
        press(iconOf(form, 9));
        HWND answer = nullptr;
        CHECK(waitFor([&] {
            answer = kind[0] == L'm' ? aol.dialog() : aol.document(L"America Online");
            return answer != nullptr;
        }));
        // The window can be seen a moment before its words are there.
        CHECK(waitFor([&] {
            const HWND words = childOfClass(answer, kind[0] == L'm' ? L"_AOL_Static" : L"RICHCNTL");
            return textOf(words).find(L"check to see if") != std::wstring::npos;
        }));
        PostMessageW(answer, WM_CLOSE, 0, 0);
        CHECK(waitFor([&] { return !IsWindow(answer); }));
        CHECK(aol.command(L"im Joe: hi") == L"refused");
        CHECK_FALSE(aol.document(L"Joe"));
        setText(childOfClass(form, L"_AOL_Edit"), L"$im_on");
        press(iconOf(form, 9));
        CHECK(waitFor([&] { return aol.status()[L"imson"] == L"1"; }));
    }
}
