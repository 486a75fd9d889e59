#include "chat/modShellOpen.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("only addresses of the web reach the browser")
{
    struct Row {
        const wchar_t* target;
        const wchar_t* address;
    };
    for (const Row& row : {
             Row{L"http://example.com/a/b?c=d#e", L"http://example.com/a/b?c=d#e"},
             Row{L"HTTPS://Example.com", L"HTTPS://Example.com"},
             Row{L"www.example.com", L"http://www.example.com"},
             Row{L"http://", L""},
             Row{L"file:///c:/windows/notepad.exe", L""},
             Row{L"javascript:alert(1)", L""},
             Row{L"c:\\windows\\notepad.exe", L""},
             Row{L"notepad", L""},
             Row{L"http://a\" --evil \"b", L""},
             Row{L"http://a b", L""},
             Row{L"http://a\r\nb", L""},
             Row{L"http://host\\share", L""},
             Row{L"", L""},
         }) {
        CAPTURE(row.target);
        CHECK(browserAddress(row.target) == row.address);
    }
    CHECK(browserAddress(L"http://" + std::wstring(5000, L'a')).empty());
}

TEST_CASE("a keyword stays one argument of AOL's program")
{
    CHECK(aolKeywordArgument(L"news") == L"-snews");
    CHECK(aolKeywordArgument(L"two words\" --signon=\"x") == L"-stwowords--signon=x");
    CHECK(aolKeywordArgument(L"a\tb\r\nc\x7F") == L"-sabc");
    CHECK(aolKeywordArgument(L"aol://2719:2-2-Room") == L"-saol://2719:2-2-Room");
    CHECK(aolKeywordArgument(L" \" ").empty());
    CHECK(aolKeywordArgument(std::wstring(5000, L'k')).size() == 202);
}

TEST_CASE("the address of a local page")
{
    CHECK(fileAddress(L"C:\\Program Files\\Velora 10\\help\\index.html", L"support")
          == L"file:///C:/Program%20Files/Velora%2010/help/index.html#support");
    CHECK(fileAddress(L"C:\\a#b%c\"d\\\x00E9.html", {}) == L"file:///C:/a%23b%25c%22d/%C3%A9.html");
}
