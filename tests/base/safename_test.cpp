#include "base/safename.h"
#include "base/wildcard.h"

#include <doctest/doctest.h>
#include <set>

using namespace velora;

TEST_CASE("names from outside become harmless file names")
{
    CHECK(safeFileName(L"Joe Smith") == L"Joe Smith");
    CHECK(safeFileName(L"..\\..\\x") == L"%2E.%5C..%5Cx");
    CHECK(safeFileName(L"CON") == L"%43ON");
    CHECK(safeFileName(L"com1.log") == L"%63om1.log");
    CHECK(safeFileName(L"") == L"%");
    std::set<std::wstring> seen;
    for (const wchar_t* name :
         {L"a/b", L"a:b", L"a%2Fb", L".", L"..", L" a", L"a ", L"a.", L"NUL", L"nul ", L"x\x01y"}) {
        const std::wstring safe = safeFileName(name);
        CAPTURE(name);
        CHECK(isPlainFileName(safe));
        CHECK(seen.insert(safe).second);
    }
}

TEST_CASE("long names stay short and apart")
{
    const std::wstring a = safeFileName(std::wstring(5000, L'a') + L"1");
    const std::wstring b = safeFileName(std::wstring(5000, L'a') + L"2");
    CHECK(a.size() <= 120);
    CHECK(a != b);
}

TEST_CASE("only plain file names open files")
{
    for (const wchar_t* good : {L"hello", L"Hello there", L"a.b", L"com", L"com10", L"conx"})
        CHECK(isPlainFileName(good));
    for (const wchar_t* bad :
         {L"", L"..", L"..\\x", L"a/b", L"C:x", L"x:stream", L"CON", L"con.txt", L"LPT9", L"x.",
          L"x ", L" x", L"a\tb", L"a*", L"\\\\host\\share"}) {
        CAPTURE(bad);
        CHECK_FALSE(isPlainFileName(bad));
    }
    CHECK_FALSE(isPlainFileName(std::wstring(201, L'a')));
}

TEST_CASE("a star stands for any run of characters")
{
    CHECK(wildcardMatch(L"*IM From: *", L">IM From: Joe"));
    CHECK(wildcardMatch(L"*IM From: *", L"IM From: "));
    CHECK_FALSE(wildcardMatch(L"*IM From: *", L"im from: Joe"));
    CHECK(wildcardMatch(L"*a*b", L"aab ab"));
    CHECK_FALSE(wildcardMatch(L"a*b", L"ab "));
    CHECK(wildcardMatch(L"**", L""));
    CHECK_FALSE(wildcardMatch(L"", L"x"));
    CHECK_FALSE(wildcardMatch(L"*a*a*a*a*a*b", std::wstring(20000, L'a')));
}
