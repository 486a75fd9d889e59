#include "settings/RegValue.h"

#include "base/text.h"
#include "base/trap.h"

#include <array>
#include <concepts>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace velora {
namespace {

constexpr unsigned long kTypeMismatch = 13;

template <class... Visitors>
struct Overload : Visitors... {
    using Visitors::operator()...;
};
/// Clang 14 does not deduce the parameters of an aggregate by itself.
template <class... Visitors>
Overload(Visitors...) -> Overload<Visitors...>;

std::wstring numberText(std::int32_t value)
{
    return std::to_wstring(value);
}

/// The fewest digits that read back as the same number. (std::to_chars would do it, with tables
/// that are a tenth of the program.)
template <std::floating_point Number>
std::wstring numberText(Number value)
{
    std::array<char, 64> digits;
    int length = 0;
    for (int precision = 1; precision <= std::numeric_limits<Number>::max_digits10; ++precision) {
        length = std::snprintf(digits.data(), digits.size(), "%.*g", precision,
                               static_cast<double>(value));
        if (static_cast<Number>(std::strtod(digits.data(), nullptr)) == value)
            break;
    }
    return from1252({digits.data(), static_cast<std::size_t>(length)});
}

std::string_view asChars(const Bytes& bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

Bytes asBytes(std::string_view chars)
{
    return {reinterpret_cast<const unsigned char*>(chars.data()), chars.size()};
}

Bytes encodeNumber(const RegValue& value)
{
    std::int32_t number;
    if (const auto* integer = std::get_if<std::int16_t>(&value))
        number = *integer;
    else if (const auto* wide = std::get_if<std::int32_t>(&value))
        number = *wide;
    else
        throw Error("Type mismatch", kTypeMismatch);
    const auto bits = static_cast<std::uint32_t>(number);
    Bytes bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<unsigned char>(bits >> shift);
    return bytes;
}

} // namespace

std::optional<ValueKind> kindFor(const RegValue& value)
{
    return std::visit(Overload{
                          [](std::int16_t) { return std::optional(ValueKind::Number); },
                          [](std::int32_t) { return std::optional(ValueKind::Number); },
                          [](std::monostate) { return std::optional<ValueKind>(); },
                          [](const Bytes&) { return std::optional<ValueKind>(); },
                          [](const auto&) { return std::optional(ValueKind::Text); },
                      },
                      value);
}

std::wstring textOf(const RegValue& value)
{
    return std::visit(Overload{
                          [](std::monostate) { return std::wstring(); },
                          [](bool on) { return std::wstring(on ? L"True" : L"False"); },
                          [](const std::wstring& text) { return text; },
                          [](const Bytes& bytes) { return fromUtf16le(asChars(bytes)); },
                          [](auto number) { return numberText(number); },
                      },
                      value);
}

Bytes encodeValue(const RegValue& value, ValueKind kind)
{
    switch (kind) {
    case ValueKind::Text:
    case ValueKind::ExpandText: return asBytes(toUtf16le(textOf(value) + L'\0'));
    case ValueKind::Number: return encodeNumber(value);
    case ValueKind::Binary:
        if (const auto* bytes = std::get_if<Bytes>(&value))
            return *bytes;
        throw Error("Binary values need a byte array", kTypeMismatch);
    case ValueKind::None: break;
    }
    throw Error("Type mismatch", kTypeMismatch);
}

std::optional<RegValue> decodeValue(const Bytes& stored, ValueKind kind)
{
    switch (kind) {
    case ValueKind::Text:
    case ValueKind::ExpandText: {
        if (stored.size() % 2 != 0)
            return std::nullopt;
        std::wstring text = fromUtf16le(asChars(stored));
        text.resize(std::min(text.find(L'\0'), text.size()));
        return text;
    }
    case ValueKind::Number: {
        if (stored.size() != 4)
            return std::nullopt;
        std::uint32_t bits = 0;
        for (std::size_t i = 4; i-- > 0;)
            bits = bits << 8 | stored[i];
        return static_cast<std::int32_t>(bits);
    }
    case ValueKind::Binary: return stored;
    case ValueKind::None: break;
    }
    return std::nullopt;
}

std::optional<bool> asBoolean(const RegValue& value)
{
    if (const auto* on = std::get_if<bool>(&value))
        return *on;
    const auto* text = std::get_if<std::wstring>(&value);
    if (text && equalNoCase(trimView(*text), L"True"))
        return true;
    if (text && equalNoCase(trimView(*text), L"False"))
        return false;
    return std::nullopt;
}

std::optional<std::wstring> asText(const RegValue& value)
{
    const auto* text = std::get_if<std::wstring>(&value);
    return text ? std::optional(*text) : std::nullopt;
}

std::optional<long> asLong(const RegValue& value)
{
    if (const auto* integer = std::get_if<std::int16_t>(&value))
        return *integer;
    const auto* wide = std::get_if<std::int32_t>(&value);
    return wide ? std::optional<long>(*wide) : std::nullopt;
}

std::optional<long> asInteger(const RegValue& value)
{
    const auto number = asLong(value);
    return number && *number >= INT16_MIN && *number <= INT16_MAX ? number : std::nullopt;
}

} // namespace velora
