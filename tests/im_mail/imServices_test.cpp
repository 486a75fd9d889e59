// What stands around the IM manager, as far as it needs no window: ignore files, answer messages,
// the decision to answer, the alert's rules, the look of a message.
#include "base/clsFileOp.h"
#include "base/files.h"
#include "base/text.h"
#include "im_mail/modAlertRules.h"
#include "im_mail/modAnswerLook.h"
#include "im_mail/modAnswerMessages.h"
#include "im_mail/modIMAnswer.h"
#include "im_mail/modIgnoreFiles.h"
#include "support/tempdir.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {

constexpr long kToday = 45000;

/// Sources that know one exception, one note and some messages, and count what they are asked.
struct Sources {
    std::wstring personal, general = L"general {%}", preset = L"default {%}";
    bool hasPersonal = false;
    int asked = 0;
    AnswerSources table()
    {
        return {.inExceptions =
                    [this](const auto& name) {
                        ++asked;
                        return screenNameKey(name) == L"listed";
                    },
                .hasNote =
                    [this](const auto& name) {
                        ++asked;
                        return screenNameKey(name) == L"noted";
                    },
                .personalised = [this](const auto&) -> std::optional<std::wstring> {
                    return hasPersonal ? std::optional(personal) : std::nullopt;
                },
                .general = [this](const auto& title) { return title == L"t" ? general : L""; },
                .defaultText = [this] { return preset; },
                .nameFor = [](const auto& name) { return name; }};
    }
};

std::optional<PreparedAnswer> answerTo(Sources& sources, const std::wstring& caption,
                                       const AnswerPolicy& policy)
{
    clsAnswered answered;
    return prepareAnswer(caption, 0, 6, policy, answered, 0, sources.table());
}

} // namespace

TEST_CASE("a name is ignored for good or for days, never twice, and comes off again")
{
    TempDir temp;
    const std::wstring data = joinPath(temp.path(), L"data");
    CHECK(addIgnored(data, L"Joe Smith", 0, kToday) == IgnoreResult::added);
    CHECK(addIgnored(data, L"joesmith", 3, kToday) == IgnoreResult::exists);
    CHECK(addIgnored(data, L"Ann", 3, kToday) == IgnoreResult::added);
    CHECK(addIgnored(data, L"ANN", 0, kToday) == IgnoreResult::exists);
    CHECK(clsFileOp::ReadTextFromFile(joinPath(data, L"ignore.dat")) == L"Joe Smith\r\n");
    CHECK(clsFileOp::ReadTextFromFile(joinPath(data, L"ignoretemp.dat")) == L"Ann\t45003\r\n");
    CHECK(ignoredNames(data, kToday) == std::vector<IgnoredName>{{L"Joe Smith", 0}, {L"Ann", 3}});
    CHECK(ignoredNames(data, kToday + 2).back() == IgnoredName{L"Ann", 1});

    SUBCASE("an expired line goes when the list is written, and its name may be added anew")
    {
        CHECK(ignoredNames(data, kToday + 3).size() == 1);
        CHECK(addIgnored(data, L"Bob", 1, kToday + 3) == IgnoreResult::added);
        CHECK(clsFileOp::ReadTextFromFile(joinPath(data, L"ignoretemp.dat")) == L"Bob\t45004\r\n");
        CHECK(addIgnored(data, L"Ann", 1, kToday + 3) == IgnoreResult::added);
    }
    SUBCASE("taken off, the former list is kept as a copy")
    {
        removeIgnored(data, L"JOESMITH");
        removeIgnored(data, L"ann");
        CHECK(ignoredNames(data, kToday).empty());
        CHECK(clsFileOp::ReadTextFromFile(joinPath(data, L"ignore.dat.1")) == L"Joe Smith\r\n");
    }
    SUBCASE("names that are none")
    {
        for (const wchar_t* name : {L"", L"  ", L"\t\r\n"})
            CHECK(addIgnored(data, name, 0, kToday) == IgnoreResult::noName);
        CHECK(addIgnored(data, std::wstring(65, L'x'), 0, kToday) == IgnoreResult::noName);
        CHECK(addIgnored(data, L"Eve\t1\r\nMallory", 0, kToday) == IgnoreResult::added);
        CHECK(ignoredNames(data, kToday).size() == 3);
    }
}

TEST_CASE("days as typed")
{
    CHECK(ignoreDaysOf(L"") == 0);
    CHECK(ignoreDaysOf(L" 7 ") == 7);
    CHECK(ignoreDaysOf(L"-2") == 0);
    CHECK(ignoreDaysOf(L"999999") == kMostIgnoredDays);
    CHECK(ignoreDaysOf(L"x") == -1);
    CHECK(ignoreDaysOf(L"99999999999999999999") == -1);
}

TEST_CASE("messages are kept under their titles, whatever these hold")
{
    TempDir temp;
    const clsAnswerMessages messages(temp.path());
    CHECK(messages.titles(AnswerKind::general).empty());
    for (const wchar_t* title : {L"Lunch", L"a/b\\c:d", L"..", L"CON", L"50% off", L"Za"})
        messages.save(AnswerKind::general, title, std::wstring(L"text of ") + title);
    CHECK(messages.titles(AnswerKind::general)
          == std::vector<std::wstring>{L"..", L"50% off", L"a/b\\c:d", L"CON", L"Lunch", L"Za"});
    CHECK(messages.read(AnswerKind::general, L"a/b\\c:d") == L"text of a/b\\c:d");
    CHECK_FALSE(messages.read(AnswerKind::general, L"none"));

    CHECK_FALSE(messages.rename(AnswerKind::general, L"Lunch", L"Za"));
    CHECK(messages.rename(AnswerKind::general, L"Lunch", L"Dinner"));
    CHECK(messages.read(AnswerKind::general, L"Dinner") == L"text of Lunch");
    CHECK_FALSE(messages.exists(AnswerKind::general, L"Lunch"));
    messages.remove(AnswerKind::general, L"Dinner");
    CHECK_FALSE(messages.exists(AnswerKind::general, L"Dinner"));

    messages.save(AnswerKind::personalised, L"Joe Smith", L"hi joe");
    CHECK(messages.read(AnswerKind::personalised, L"JOESMITH") == L"hi joe");
    CHECK(messages.titles(AnswerKind::personalised) == std::vector<std::wstring>{L"joesmith"});
    // A file that the user put there by hand.
    replaceFile(joinPath(joinPath(joinPath(temp.path(), L"im"), L"general"), L"90%.dat"), "x");
    CHECK(messages.read(AnswerKind::general, L"90%") == L"x");

    CHECK(messages.defaultText().empty());
    messages.saveDefault(L"d");
    CHECK(messages.defaultText() == L"d");
}

TEST_CASE("the exceptions list")
{
    TempDir temp;
    const clsAnswerMessages messages(temp.path());
    CHECK(messages.addException(L" Joe Smith "));
    CHECK_FALSE(messages.addException(L"joesmith"));
    CHECK_FALSE(messages.addException(L" \r\n"));
    CHECK(messages.addException(L"x\r\nEve"));
    CHECK(messages.exceptions() == std::vector<std::wstring>{L"Joe Smith", L"xEve"});
    CHECK(messages.inExceptions(L"JOE smith"));
    CHECK_FALSE(messages.inExceptions(L"Eve"));
    messages.removeException(L"joesmith");
    CHECK_FALSE(messages.inExceptions(L"Joe Smith"));
}

TEST_CASE("who said what in a conversation")
{
    const wchar_t* text = L"Begin IM - x\r\nJoe S. Smith:\tone\r\nMe:\ttwo\r\nJoeS Smith: three: 3";
    CHECK(lastMessageOf(text, L"joe s smith") == L"three: 3");
    CHECK(lastMessageOf(text, L"Me") == L"two");
    CHECK(lastMessageOf(text, L"Ann").empty());
    CHECK(lastMessageOf(text, L"").empty());
    CHECK(hearsFrom(text, L"JoeSSmith"));
    CHECK_FALSE(hearsFrom(L"Me:\tJoe:\tx", L"Joe"));
    CHECK_FALSE(hearsFrom(L"joe", L"Joe"));
    CHECK(soundNamedBy(L"Me:\t{S own}\r\nJoe:\thi\r\nJoe:\t{s Drop} {S x}", L"Joe") == L"Drop");
    CHECK(soundNamedBy(L"Joe:\t{S never ends", L"Joe").empty());
}

TEST_CASE("the answer procedure, step by step")
{
    Sources sources;
    AnswerPolicy policy{.mode = 1};
    CHECK_FALSE(answerTo(sources, L"IM From: Joe", policy)); // read already
    CHECK_FALSE(answerTo(sources, L">IM From: ", policy));
    CHECK(answerTo(sources, L">IM From: Joe S.", policy)->text == L"default Joe S");
    policy.message = L"t";
    CHECK(answerTo(sources, L">IM From: Joe", policy)->text == L"general Joe");
    policy.message = L"gone";
    CHECK(answerTo(sources, L">IM From: Joe", policy)->text == fillAnswer(defaultAnswer(), L"Joe"));
    sources.hasPersonal = true;
    sources.personal = L"personal {%}";
    CHECK(answerTo(sources, L">IM From: Joe", policy)->text == L"personal Joe");
    policy.personal = false;
    policy.message = L"t";
    CHECK(answerTo(sources, L">IM From: Joe", policy)->text == L"general Joe");
    policy.mode = 0;
    CHECK_FALSE(answerTo(sources, L">IM From: Joe", policy));
    CHECK(sources.asked == 0); // neither list counts in these modes

    struct Row {
        int mode;
        bool listed, noted, other;
    };
    for (const Row& row : {Row{2, true, false, false}, Row{3, false, true, true},
                           Row{4, false, true, false}, Row{5, true, false, true}}) {
        CAPTURE(row.mode);
        policy.mode = row.mode;
        CHECK(answerTo(sources, L">IM From: Listed", policy).has_value() == row.listed);
        CHECK(answerTo(sources, L">IM From: No Ted", policy).has_value() == row.noted);
        CHECK(answerTo(sources, L">IM From: Other", policy).has_value() == row.other);
    }
}

TEST_CASE("an answer is never longer than AOL takes")
{
    Sources sources;
    const AnswerPolicy policy{.mode = 1};
    sources.preset = std::wstring(512, L'x');
    CHECK_FALSE(answerTo(sources, L">IM From: Joe", policy)->tooLong);
    sources.preset = std::wstring(513, L'x');
    auto answer = answerTo(sources, L">IM From: Joe", policy);
    CHECK(answer->tooLong);
    CHECK(answer->text == fillAnswer(defaultAnswer(), L"Joe"));
    // 512 characters with the variable: the name makes it longer.
    sources.preset = std::wstring(509, L'x') + L"{%}";
    answer = answerTo(sources, L">IM From: Joe Smith", policy);
    CHECK_FALSE(answer->tooLong);
    CHECK(answer->text == fillAnswer(defaultAnswer(), L"Joe Smith"));
    sources.preset = L"{%}";
    CHECK(answerTo(sources, L">IM From: " + std::wstring(64, L'<'), policy)->text.size() <= 512);
    CHECK_FALSE(answerTo(sources, L">IM From: " + std::wstring(65, L'x'), policy));
}

TEST_CASE("where the alert stands and how it flashes")
{
    const Rect screen{-100, 0, 900, 700};
    const Size size{200, 100};
    CHECK(alertPlace(0, screen, size) == Rect{688, 588, 888, 688});
    CHECK(alertPlace(1, screen, size) == Rect{-88, 588, 112, 688});
    CHECK(alertPlace(2, screen, size) == Rect{688, 12, 888, 112});
    CHECK(alertPlace(3, screen, size) == Rect{-88, 12, 112, 112});
    CHECK(alertPlace(77, screen, size) == alertPlace(0, screen, size));
    int flashes = 0;
    for (int tick = 0; tick < 100; ++tick)
        flashes += flashesAt(tick);
    CHECK(flashes == 4);
    CHECK_FALSE(flashesAt(7));
    CHECK(slideHeight(0, 10, 104) == 0);
    CHECK(slideHeight(10, 10, 104) == 104);
    CHECK(slideHeight(5, 0, 104) == 104);
}

TEST_CASE("what the alert says")
{
    CHECK(alertText(L"  a\r\n\tb\x01 c ") == L"a b c");
    CHECK(alertText(std::wstring(65536, L'x')).size() == kMostAlertText + 1);
    CHECK(alertCount(1, 1).empty());
    CHECK(alertCount(3, 1) == L"3 messages");
    CHECK(alertCount(200, 7) == L"200 messages from 7 members");
    CHECK(holdsAlertText(L"say Pizza now", L"pizza"));
    CHECK_FALSE(holdsAlertText(L"anything", L""));
    CHECK_FALSE(holdsAlertText(L"anything", L" "));
}

TEST_CASE("how a message looks, and links")
{
    CHECK(answerLook(L"a <B>b</B>&lt;<a href=x>l</A> 1 < 2 <font size=2>c<br>d&nope")
          == std::vector<LookRun>{{L"a "},
                                  {L"b", true},
                                  {L"<"},
                                  {L"l", false, false, false, true},
                                  {L" 1 < 2 c\r\nd&nope"}});
    CHECK(answerLook(L"<").size() == 1);
    CHECK(hyperlink(L" http://a.example ", L"here") == L"<a href=http://a.example>here</a>");
    CHECK(hyperlink(L"http://a/b c", L"") == L"<a href=\"http://a/b c\">http://a/b c</a>");
    CHECK(hyperlink(L"x\"><b>", L"y") == L"<a href=xb>y</a>");
    CHECK(hyperlink(L" ", L"y").empty());
}
