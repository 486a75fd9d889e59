// What the agent wrote into shared memory is taken apart without trust in it.
#include "hook/EditLines.h"

#include "base/text.h"
#include "hook/wire.h"

#include <cstring>
#include <doctest/doctest.h>

using namespace velora;

namespace {

std::string packed(const std::wstring& text, bool soft)
{
    const std::string units = toUtf16le(text);
    const wire::LineHead head{static_cast<std::uint16_t>(units.size() / 2),
                              static_cast<std::uint16_t>(soft)};
    std::string bytes(sizeof head, '\0');
    std::memcpy(bytes.data(), &head, sizeof head);
    return bytes + units;
}

} // namespace

TEST_CASE("lines come back as they were written")
{
    const std::string bytes =
        packed(L"Guest:\t\x20AC", true) + packed(L"", false) + packed(L"end", false);
    const auto lines = parseLines(bytes, 3);
    REQUIRE(lines);
    CHECK(*lines
          == std::vector<EditLine>{{L"Guest:\t\x20AC", true}, {L"", false}, {L"end", false}});
    CHECK(parseLines(bytes, 2)->size() == 2);
    CHECK(parseLines("", 0)->empty());
}

TEST_CASE("bytes that end early, and counts that cannot be, are refused")
{
    const std::string bytes = packed(L"abc", false) + packed(L"defg", false);
    for (std::size_t length = 0; length < bytes.size(); ++length)
        CHECK_FALSE(parseLines(bytes.substr(0, length), 2).has_value());
    CHECK_FALSE(parseLines(bytes, 3).has_value());
    CHECK_FALSE(parseLines(bytes, 0xFFFFFFFFu).has_value());
    CHECK_FALSE(parseLines(std::string(4, '\xFF'), 1).has_value());
}

TEST_CASE("paragraph ends become CR LF")
{
    CHECK(withCrLf(L"a\rb\nc\r\nd\r\r") == L"a\r\nb\r\nc\r\nd\r\n\r\n");
    CHECK(withCrLf(L"\n\r") == L"\r\n\r\n");
    CHECK(withCrLf(L"") == L"");
}
