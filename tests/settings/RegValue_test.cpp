#include "base/trap.h"
#include "settings/RegValue.h"

#include <doctest/doctest.h>

using namespace velora;

namespace {
Bytes bytes(std::initializer_list<int> values)
{
    Bytes out;
    for (const int value : values)
        out += static_cast<unsigned char>(value);
    return out;
}
} // namespace

TEST_CASE("the type of a value decides how it is stored")
{
    struct Case {
        RegValue value;
        std::optional<ValueKind> kind;
        std::wstring text;
    };
    const Case cases[] = {
        {std::int16_t{-7}, ValueKind::Number, L"-7"},
        {std::int32_t{INT32_MIN}, ValueKind::Number, L"-2147483648"},
        {true, ValueKind::Text, L"True"},
        {false, ValueKind::Text, L"False"},
        {1.5f, ValueKind::Text, L"1.5"},
        {0.1, ValueKind::Text, L"0.1"},
        {std::wstring(L"a b"), ValueKind::Text, L"a b"},
        {RegValue(), std::nullopt, L""},
        {bytes({0x41, 0, 0x42, 0}), std::nullopt, L"AB"},
    };
    for (const Case& c : cases) {
        CAPTURE(c.text);
        CHECK(kindFor(c.value) == c.kind);
        CHECK(textOf(c.value) == c.text);
    }
}

TEST_CASE("values as the registry's bytes")
{
    CHECK(encodeValue(std::wstring(L"A\x20AC"), ValueKind::Text)
          == bytes({0x41, 0, 0xAC, 0x20, 0, 0}));
    CHECK(encodeValue(true, ValueKind::ExpandText)
          == bytes({'T', 0, 'r', 0, 'u', 0, 'e', 0, 0, 0}));
    CHECK(encodeValue(std::int32_t{0x01020304}, ValueKind::Number) == bytes({4, 3, 2, 1}));
    CHECK(encodeValue(std::int16_t{-2}, ValueKind::Number) == bytes({0xFE, 0xFF, 0xFF, 0xFF}));
    CHECK(encodeValue(bytes({1, 0, 2}), ValueKind::Binary) == bytes({1, 0, 2}));

    const auto mismatch = [](const RegValue& value, ValueKind kind) {
        try {
            encodeValue(value, kind);
            return false;
        } catch (const Error& e) {
            return e.code() == 13;
        }
    };
    CHECK(mismatch(std::wstring(L"5"), ValueKind::Number));
    CHECK(mismatch(bytes({1, 2, 3, 4}), ValueKind::Number));
    CHECK(mismatch(std::wstring(L"5"), ValueKind::Binary));
    CHECK(mismatch(RegValue(), ValueKind::None));
    CHECK(mismatch(bytes({1}), static_cast<ValueKind>(7)));
}

TEST_CASE("stored bytes come back only when their size fits their kind")
{
    CHECK(decodeValue(bytes({'a', 0, 'b', 0, 0, 0}), ValueKind::Text) == RegValue(L"ab"));
    CHECK(decodeValue(bytes({'a', 0, 'b', 0}), ValueKind::ExpandText) == RegValue(L"ab"));
    CHECK(decodeValue(bytes({'a', 0, 0, 0, 'b', 0}), ValueKind::Text) == RegValue(L"a"));
    CHECK(decodeValue({}, ValueKind::Text) == RegValue(L""));
    CHECK_FALSE(decodeValue(bytes({'a', 0, 'b'}), ValueKind::Text));
    CHECK(decodeValue(bytes({0x18, 0, 0, 0x80}), ValueKind::Number)
          == RegValue(static_cast<std::int32_t>(0x80000018)));
    CHECK_FALSE(decodeValue(bytes({1, 0, 0}), ValueKind::Number));
    CHECK_FALSE(decodeValue(bytes({1, 0, 0, 0, 0, 0, 0, 0}), ValueKind::Number));
    CHECK(decodeValue(bytes({1, 2, 3}), ValueKind::Binary) == RegValue(bytes({1, 2, 3})));
    CHECK_FALSE(decodeValue(bytes({'a', 0}), static_cast<ValueKind>(7)));
    CHECK_FALSE(decodeValue({}, ValueKind::None));
}

TEST_CASE("what a setting makes of a stored value")
{
    CHECK(asBoolean(RegValue(L"True")) == true);
    CHECK(asBoolean(RegValue(L" false ")) == false);
    for (const RegValue& wrong : {RegValue(L""), RegValue(L"yes"), RegValue(std::int32_t{1}),
                                  RegValue(bytes({1})), RegValue()})
        CHECK_FALSE(asBoolean(wrong));
    CHECK(asText(RegValue(L"x")) == L"x");
    CHECK_FALSE(asText(RegValue(std::int32_t{1})));
    CHECK(asLong(RegValue(std::int32_t{-1})) == -1);
    CHECK_FALSE(asLong(RegValue(L"5")));
    CHECK_FALSE(asLong(RegValue(bytes({5, 0, 0, 0}))));
    CHECK(asInteger(RegValue(std::int32_t{32767})) == 32767);
    CHECK(asInteger(RegValue(std::int32_t{-32768})) == -32768);
    CHECK_FALSE(asInteger(RegValue(std::int32_t{32768})));
    CHECK_FALSE(asInteger(RegValue(std::int32_t{-32769})));
}
