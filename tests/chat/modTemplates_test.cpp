#include "chat/modQuote.h"
#include "chat/modTemplates.h"
#include "settings/Options.h"
#include "support/memory_store.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE_FIXTURE(StoreScope, "missing templates are made, the user's own stay")
{
    writeSetting(L"Templates\\2", L"Header", L"Mine");
    MakeDefaultTemplates();
    CHECK(readSetting(L"Templates\\1", L"Char HTML", L"") == builtInTemplates()[0].CharHtml);
    CHECK(readSetting(L"Templates\\1", L"Header", L"") == builtInTemplates()[0].Header);
    CHECK(readSetting(L"Templates\\2", L"Header", L"") == L"Mine");
    CHECK(readSetting(L"Templates\\2", L"Char HTML", L"none") == L"none");
    CHECK(readSetting(L"Templates\\3", L"Char HTML", L"") == builtInTemplates()[2].CharHtml);
}

TEST_CASE_FIXTURE(StoreScope, "templates are read with the built-in ones behind them")
{
    CHECK(TemplateSet::load().templates == builtInTemplates());
    CHECK(TemplateSet::load().chosen == 1);
    for (const long wrong : {0L, 4L, -1L}) {
        opt::Templates::Default.set(wrong);
        CHECK(defaultTemplate() == 1);
    }
    TemplateSet set = TemplateSet::load();
    const TemplateSet before = set;
    set.templates[2] = {L"Mine", L""};
    set.chosen = 3;
    set.save(before);
    CHECK(TemplateSet::load() == set);
    CHECK(settingValues(L"Templates\\1").empty()); // what was not changed is not written
}

TEST_CASE("template captions are one short line")
{
    CHECK(templateCaption({L" a\nb ", L""}, 1) == L"a b");
    CHECK(templateCaption({L" \t", L""}, 2) == L"Template 2");
    CHECK(templateCaption({std::wstring(61, L'x'), L""}, 1) == std::wstring(60, L'x') + L"...");
}

TEST_CASE_FIXTURE(StoreScope, "mails and boards have options of their own")
{
    opt::Templates::MailQuoteEnabled.set(false);
    opt::Templates::BoardStripReturn.set(true);
    CHECK_FALSE(quoteRules(false).enabled);
    CHECK(quoteRules(true).enabled);
    CHECK(quoteRules(true).stripReturns);
    CHECK_FALSE(quoteRules(false).stripReturns);
    CHECK_FALSE(quoteRules(true).includeHead);
}
