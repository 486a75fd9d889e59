#include "im_mail/clsIMs.h"
#include "im_mail/modAnswerRules.h"
#include "im_mail/modIMRules.h"
#include "im_mail/modIgnore.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("one person is one IM however the name is written")
{
    clsIMs ims;
    CHECK(ims.Add(L"Joe Smith", 1));
    CHECK_FALSE(ims.Add(L"joesmith", 2));
    CHECK_FALSE(ims.Add(L"Other", 1));
    CHECK_FALSE(ims.Add(L"Nobody", 0));
    CHECK(ims.CheckForDuplicate(L"JOE SMITH"));
    CHECK(ims.Count() == 1);
}

TEST_CASE("closing an IM selects its neighbour; a new one never takes the selection")
{
    clsIMs ims;
    CHECK(ims.SelectedIM() == 0);
    for (WindowId w = 1; w <= 4; ++w)
        ims.Add(std::wstring(1, static_cast<wchar_t>(L'a' + w)), w);
    CHECK(ims.SelectedIM() == 1);
    ims.SetSelectedNick(L"D");
    CHECK(ims.SelectedIM() == 3);
    ims.SetSelectedIM(99);
    CHECK(ims.SelectedIM() == 3);
    CHECK(ims.markUnread(4));
    CHECK_FALSE(ims.markUnread(4));
    CHECK_FALSE(ims.markUnread(3));
    ims.Remove(1);
    CHECK(ims.SelectedIM() == 3);
    ims.Remove(3);
    CHECK(ims.SelectedIM() == 4);
    CHECK(ims.unreadCount() == 0);
    ims.Remove(4);
    CHECK(ims.SelectedIM() == 2);
    CHECK(ims.Remove(2));
    CHECK_FALSE(ims.Remove(2));
    CHECK(ims.SelectedNick().empty());
}

TEST_CASE("which captions are IM windows")
{
    struct Row {
        const wchar_t* caption;
        int edition, version;
        bool im;
    };
    for (const Row& row :
         {Row{L"IM From: Joe", 0, 6, true}, Row{L">IM From: Joe", 0, 7, true},
          Row{L"IM From: Joe", 0, 5, false}, Row{L"Instant Message To: Joe", 1, 5, true},
          Row{L"Internet Message From: x", 3, 6, true},
          Row{L"Internet Message From: x", 3, 5, false}, Row{L"im from: Joe", 0, 6, false},
          Row{L"Telegramm an: X", 4, 6, true}, Row{L"Telegramm an: X", 4, 5, false},
          Row{L"Telegramm von: X", 4, 5, true}, Row{L"Internet Message From: x", 5, 6, false},
          Row{L"Message \u00E9"
              L"clair de: X",
              5, 6, true},
          Row{L"", 0, 6, false}}) {
        CAPTURE(row.caption);
        CAPTURE(row.edition);
        CAPTURE(row.version);
        CHECK(isImCaption(row.caption, row.edition, row.version) == row.im);
    }
    CHECK(isUnreadImCaption(L">IM From: Joe", 0, 6));
    CHECK_FALSE(isUnreadImCaption(L"IM From: Joe", 0, 6));
    CHECK(isUnreadImCaption(L"> Telegramm von: X", 4, 6));
    CHECK_FALSE(isUnreadImCaption(L">Message \u00E9"
                                  L"clair de: X",
                                  5, 6));
    CHECK(isUnreadImCaption(L">Message Eclair de : X", 5, 6));
}

TEST_CASE("senders, reply buttons, Send icons")
{
    CHECK(senderFromCaption(L">IM From:  Joe S. Smith ") == L"Joe S Smith");
    CHECK(senderFromCaption(L"IM From: a:b") == L"a:b");
    CHECK(senderFromCaption(L"nothing").empty());
    CHECK(isReplyCaption(L"R\u00C9PONDRE"));
    CHECK(isReplyCaption(L"Click here to reply"));
    CHECK_FALSE(isReplyCaption(L"Reply"));
    struct Row {
        int edition, version, index;
    };
    for (const Row& row : {Row{0, 3, 0}, Row{0, 4, 0}, Row{0, 5, 8}, Row{0, 6, 9}, Row{4, 7, 9},
                           Row{3, 5, 9}, Row{3, 6, 10}, Row{3, 4, 0}}) {
        CAPTURE(row.edition);
        CAPTURE(row.version);
        CHECK(sendIconIndex(row.edition, row.version) == row.index);
    }
    CHECK(isImSwitchAnswer(L" Joe is not online? "));
    CHECK(isInternetSenderText(L"(Internet user)"));
}

TEST_CASE("a log note loses the first five characters wherever the command stands")
{
    CHECK(logNoteOf(L"/log:x") == L"x");
    CHECK(logNoteOf(L"hello /log:x") == L" /log:x");
    CHECK_FALSE(logNoteOf(L"/Log:x").has_value());
    CHECK(logNoteText(L"x") == L"\r\nLog Note:\tx");
}

TEST_CASE("when an alert is raised")
{
    AlertSituation now;
    CHECK(raisesAlert(now));
    now.aolInFront = true;
    CHECK_FALSE(raisesAlert(now));
    now.aolMinimised = true;
    CHECK(raisesAlert(now));
    now.alertIfMinimised = false;
    CHECK_FALSE(raisesAlert(now));
    CHECK_FALSE(raisesAlert({.lookingAtThisIm = true}));
    CHECK_FALSE(raisesAlert({.quiet = true}));
    CHECK_FALSE(raisesAlert({.displayAlert = false}));
    CHECK(ContrastingColor(0xC0C0FF) == 0);
    CHECK(ContrastingColor(0x800000) == 0xFFFFFF);
}

TEST_CASE("ignore lists: for good, for days, expired, damaged")
{
    const wchar_t* list = L"Joe Smith\r\nann\t100\nbob\t99\ncarl\tx\n\t5\n\n";
    CHECK(isIgnored(list, L"joesmith", 99));
    CHECK(isIgnored(list, L"Ann", 99));
    CHECK_FALSE(isIgnored(list, L"Ann", 100));
    CHECK_FALSE(isIgnored(list, L"bob", 99));
    CHECK(isIgnored(list, L"carl", 99));
    CHECK_FALSE(isIgnored(list, L"", 0));
    CHECK(isListed(list, L"Bob"));
    CHECK(withIgnored(list, L"ANN", 99, 120) == L"Joe Smith\r\ncarl\tx\r\nANN\t120\r\n");
    CHECK(withIgnored(L"", L"a\tb\r\nc", 1) == L"abc\r\n");
    CHECK(withoutIgnored(L"a\r\nb\r\n", L"A") == L"b\r\n");
}

TEST_CASE("a name in an answer and in its file brings no markup and no path")
{
    CHECK(fillAnswer(L"Hi {%} {%}", L"{%}<b>") == L"Hi {%}&lt;b&gt; {%}&lt;b&gt;");
    CHECK(personalisedFileName(L"Joe Smith") == L"joesmith.dat");
    CHECK(personalisedFileName(L"..\\x") == L"%2E.%5Cx.dat");
}

TEST_CASE("once for each sender, and never more than five an hour")
{
    clsAnswered answered(5);
    const std::uint32_t start = 0xFFFFFF00u; // the tick count wraps during the hour
    for (std::uint32_t i = 0; i < 5; ++i) {
        CHECK(answered.mayAnswer(L"Joe", start + i * 100, false));
        answered.add(L"J O E", start + i * 100);
    }
    CHECK_FALSE(answered.mayAnswer(L"joe", start + 1000, false));
    CHECK(answered.mayAnswer(L"ann", start + 1000, true));
    CHECK(answered.mayAnswer(L"joe", start + 3600000, false));
    CHECK_FALSE(answered.mayAnswer(L"joe", start + 3600000, true));
    answered.clear();
    CHECK(answered.mayAnswer(L"joe", start, true));
}
