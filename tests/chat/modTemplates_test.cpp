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
