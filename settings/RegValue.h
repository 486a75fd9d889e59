#pragma once
// The values that the settings store holds, and the rules by which they become text and come back.
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace velora {

/// The registry's own numbers for the kinds of value that the program knows.
enum class ValueKind : unsigned long {
    None = 0,
    Text = 1,       ///< REG_SZ
    ExpandText = 2, ///< REG_EXPAND_SZ
    Binary = 3,     ///< REG_BINARY
    Number = 4,     ///< REG_DWORD
};

using Bytes = std::basic_string<unsigned char>;

/// A typed value: nothing, Integer, Long, Boolean, Single, Double, String or a byte array.
using RegValue = std::variant<std::monostate, std::int16_t, std::int32_t, bool, float, double,
                              std::wstring, Bytes>;

/// The kind that a value is written as; absent for the types that leave the choice to the caller.
std::optional<ValueKind> kindFor(const RegValue& value);

/// The value's text: "True"/"False", decimal numbers, text as it is; bytes are taken as UTF-16LE.
std::wstring textOf(const RegValue& value);

/// The bytes that the registry stores for a value of that kind (text with its terminating zero).
/// Throws Error 13 (type mismatch) when the value cannot be written so.
Bytes encodeValue(const RegValue& value, ValueKind kind);

/// The reverse: text, a Long or bytes. Absent when the size does not fit the kind or the kind is
/// none of ours. Text ends at its first zero.
std::optional<RegValue> decodeValue(const Bytes& stored, ValueKind kind);

/// What the program makes of a stored value. Absent when it is of another type than the one that
/// such values are stored as, or has no meaning in it: the default then applies.
std::optional<bool> asBoolean(const RegValue& value);
std::optional<std::wstring> asText(const RegValue& value);
std::optional<long> asLong(const RegValue& value);
/// A Long that also fits 16 bits.
std::optional<long> asInteger(const RegValue& value);

} // namespace velora
