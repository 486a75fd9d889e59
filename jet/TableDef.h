#pragma once
// Table definitions: columns, indexes and where the maps lie, as the definition pages hold them.
#include "jet/Pager.h"

namespace velora::jet {

enum ColumnType : Byte {
    kBoolColumn = 1,
    kByteColumn,
    kIntColumn,
    kLongColumn,
    kCurrencyColumn,
    kSingleColumn,
    kDoubleColumn,
    kDateColumn,
    kBinaryColumn,
    kTextColumn,
    kOleColumn,
    kMemoColumn,
    kGuidColumn = 15,
    kNumericColumn = 16
};
/// Bytes in the fixed area; 0 for columns of variable length and for bool (a bit of the null mask).
std::size_t fixedSize(Byte type);
inline bool isLongValue(Byte type)
{
    return type == kOleColumn || type == kMemoColumn;
}

enum ColumnFlag : Byte { kFixedFlag = 1, kUpdatableFlag = 2, kAutoNumberFlag = 4 };
enum IndexFlag : Byte { kUniqueFlag = 1, kIgnoreNulls = 2, kRequiredFlag = 8, kAlwaysFlag = 0x80 };
inline constexpr Byte kSystemTable = 0x53;
inline constexpr Byte kUserTable = 0x4E;

struct Column {
    std::wstring name;
    Byte type = kTextColumn;
    std::uint16_t number = 0;
    std::uint16_t varIndex = 0;
    std::uint16_t position = 0;
    std::uint32_t sortOrder = 0x0409;
    Byte flags = kUpdatableFlag;
    Byte ext = 0;
    std::uint16_t fixedAt = 0;
    std::uint16_t size = 0; ///< bytes
    bool fixed() const { return flags & kFixedFlag; }
};

struct KeyColumn {
    std::uint16_t number;
    bool ascending = true;
};

/// The tree behind one or more logical indexes.
struct DataIndex {
    std::vector<KeyColumn> columns;
    std::uint32_t map = 0;
    PageNo root = 0;
    Byte flags = 0;
};

struct LogicalIndex {
    std::wstring name;
    std::uint32_t number = 0;
    std::uint32_t data = 0;
    Byte type = 0; ///< 0 plain, 1 primary, 2 foreign
};

struct LongValueMaps {
    std::uint16_t column;
    std::uint32_t owned, free;
};

struct TableDef {
    PageNo page = 0;
    std::vector<PageNo> pages; ///< that the definition takes, the first included
    Byte type = kUserTable;
    std::uint16_t maxColumns = 0; ///< as rows count them
    std::uint16_t varColumns = 0;
    std::vector<Column> columns; ///< in the definition's order
    std::vector<DataIndex> data;
    std::vector<LogicalIndex> indexes; ///< by name
    std::uint32_t ownedMap = 0, freeMap = 0;
    std::vector<LongValueMaps> longValues;

    const Column* find(std::uint16_t number) const;
};

/// 3049 for what is no sound definition.
TableDef readTableDef(Pager& pager, PageNo page);
/// The definition's bytes for one page; 3190 when they need more. Counts are zero.
std::string renderTableDef(const TableDef& def);
/// Fills in a definition page from renderTableDef's bytes.
void writeTableDef(Page& page, const std::string& definition);

// The counts that a definition page carries.
std::uint32_t recordCount(Pager& pager, PageNo def);
void addRecords(Pager& pager, PageNo def, int change);
void addDistinctKeys(Pager& pager, PageNo def, std::size_t dataIndex, int change);

} // namespace velora::jet
