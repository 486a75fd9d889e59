#include "chat/modScheme.h"

#include <doctest/doctest.h>

using namespace velora;

TEST_CASE("a scheme is written and read back")
{
    FadeScheme scheme;
    scheme.fade.FadeNumber = 3;
    scheme.fade.colours = {255, 65280, 0xFFFFFF};
    scheme.fade.Wavy = scheme.fade.ULine = true;
    scheme.Author = L"Joe";
    scheme.Comments = L"a=b";
    const std::wstring text = renderScheme(scheme);
    CHECK(text.starts_with(L"[Options]\r\nFadeNumber=3\r\n[Colors]\r\nOne=255\r\nTwo=65280\r\n"));
    CHECK(text.find(L"[Style]\r\nWavy=True\r\nBold=False\r\nItalic=False\r\nULine=True\r\n[Tag]\r\n"
                    L"Author=Joe\r\nDateCreated=\r\nModified=\r\nComments=a=b\r\n")
          != std::wstring::npos);
    CHECK(parseScheme(text) == scheme);
}

TEST_CASE("the older layout is read, numbered from 0 or from 1")
{
    const auto old = parseScheme(L"FADENUMBER=six\ncolor0=1\ncolor9=10\ncolor10=11\n"
                                 L"italics=1\nunderline=True\nwavy=0");
    REQUIRE(old);
    CHECK(old->fade.FadeNumber == 6);
    CHECK(old->fade.colours[0] == 1);
    CHECK(old->fade.colours[9] == 10);
    CHECK(old->fade.Italic);
    CHECK(old->fade.ULine);
    CHECK_FALSE(old->fade.Wavy);
    const auto fromOne = parseScheme(L"fadenumber=2\rcolor1=7\rcolor10=8");
    REQUIRE(fromOne);
    CHECK(fromOne->fade.colours[0] == 7);
    CHECK(fromOne->fade.colours[9] == 8);
}

TEST_CASE("counts are clamped, colours cut, damaged files refused")
{
    const auto wild = parseScheme(L"fadenumber=99\none=-1\ntwo=x\nthree=2147483647");
    REQUIRE(wild);
    CHECK(wild->fade.FadeNumber == 10);
    CHECK(wild->fade.colours[0] == 0xFFFFFF);
    CHECK(wild->fade.colours[2] == 0xFFFFFF);
    CHECK(parseScheme(L"fadenumber=-5\none=1")->fade.FadeNumber == 1);
    for (const wchar_t* bad : {L"", L"fadenumber=3", L"one=1", L"fadenumber=\none=1", L"MZ\x90",
                               L"fadenumber=1\ncolor11=5\ncolor-1=5\ncolor99999999999=1"}) {
        CAPTURE(bad);
        CHECK_FALSE(parseScheme(bad).has_value());
    }
}

TEST_CASE("a value cannot add lines to the file")
{
    FadeScheme scheme;
    scheme.fade.colours[0] = 5;
    scheme.Comments = L"x\r\nOne=99";
    CHECK(parseScheme(renderScheme(scheme))->fade.colours[0] == 5);
    CHECK(schemeTagText(scheme)
          == L"Author:  Orv Software\r\nCreated:  Unknown\r\nModified By:  Unknown");
}
