#pragma once
// The catalogue: the engine's own tables that name all others, and how a table is made, renamed and
// deleted.
#include "jet/Table.h"

namespace velora::jet {

inline constexpr PageNo kObjectsTable = 2;
inline constexpr PageNo kAcesTable = 3;
inline constexpr std::int32_t kTablesContainer = 0x0F000001;
inline constexpr int kLocalTable = 1;

/// One row of MSysObjects.
struct CatalogueEntry {
    RowId row;
    std::int32_t id = 0;
    std::int32_t parent = 0;
    std::wstring name;
    int type = 0;
    std::uint32_t flags = 0;
    RawValue properties; ///< the twelve bytes of the long value

    bool isSystem() const { return flags & 0x80000002u; }
};

/// A table to be made: columns and indexes as TableDef has them, without pages and maps.
struct NewTable {
    std::wstring name;
    TableDef def;
    std::string properties;
};

class Catalogue {
public:
    explicit Catalogue(Pager& pager);

    /// Everything in the container of tables, in name order.
    std::vector<CatalogueEntry> list();
    std::optional<CatalogueEntry> find(std::wstring_view name);
    /// Every object of the file.
    std::vector<CatalogueEntry> all();
    std::string propertiesOf(const CatalogueEntry& entry);

    PageNo create(const NewTable& table);
    void rename(const CatalogueEntry& entry, std::wstring_view name);
    void remove(const CatalogueEntry& entry);

    /// What a row of MSysObjects says; `def` is that table's definition. 3049 when it says nothing.
    static CatalogueEntry entryOf(const TableDef& def, RowId row, const Record& record);

private:
    std::size_t nameIndex() const;
    std::string sid(Byte first, Byte second);
    void addObject(PageNo id, const NewTable& table);
    void addAces(PageNo id);
    void removeAces(std::int32_t id);
    const LongValueMaps& propertyMaps() const;

    Pager& pager_;
    Table objects_;
    Table aces_;
};

/// The number of days that the file's dates count, now.
double jetNow();

} // namespace velora::jet
