#pragma once
// Records as rows of bytes.
#include "jet/TableDef.h"

#include <optional>

namespace velora::jet {

/// The raw bytes of one field, absent = Null. A bool is one byte, 0 or 1, and never Null.
using RawValue = std::optional<std::string>;
/// In the order of TableDef::columns.
using Record = std::vector<RawValue>;

/// 3049 when the row does not hold together. Columns that are younger than the row are Null.
Record decodeRow(const TableDef& def, Bytes row);
/// One field of it.
RawValue decodeField(const TableDef& def, Bytes row, const Column& column);
/// 3163 when the record is longer than a page holds.
std::string encodeRow(const TableDef& def, const Record& record);

/// Text as the file holds it: UTF-16LE, or compressed behind the bytes FF FE.
std::wstring decodeText(std::string_view bytes);
std::string encodeText(std::wstring_view text);

std::int32_t decodeLong(std::string_view bytes);
std::string encodeLong(std::int32_t value);
std::string encodeDate(double days);

/// The key of one index for a record; absent when the index leaves such a record out. 3251 for
/// columns whose keys this engine cannot make.
std::optional<std::string> keyOf(const TableDef& def, const DataIndex& index, const Record& record);
/// 3058 when the index wants a value in a column that has none.
void checkKeyNulls(const TableDef& def, const DataIndex& index, const Record& record);
bool hasNullKey(const TableDef& def, const DataIndex& index, const Record& record);
/// False when this engine cannot keep the index up to date.
bool canWriteKey(const TableDef& def, const DataIndex& index);
/// Appends one column's part of a key.
void addKeyPart(std::string& key, const Column& column, const RawValue& value, bool ascending);

} // namespace velora::jet
