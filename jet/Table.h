#pragma once
// One table of an open database: its records, and every index kept in step with them.
#include "jet/FieldRules.h"
#include "jet/IndexTree.h"
#include "jet/RowCodec.h"

#include <functional>

namespace velora::jet {

class Table {
public:
    Table(Pager& pager, TableDef def) : pager_(pager), def_(std::move(def)) {}

    const TableDef& def() const { return def_; }
    PageNo page() const { return def_.page; }
    /// Place of the column in TableDef::columns; 3265 when there is none of that name.
    std::size_t columnAt(std::wstring_view name) const;

    /// By column; as long as none are set everything is allowed.
    void setRules(const std::vector<FieldRule>& rules);
    const FieldRule& rule(std::size_t column) const { return rules_.at(column); }
    bool hasRules() const { return !rules_.empty(); }

    std::uint32_t recordCount() { return jet::recordCount(pager_, def_.page); }
    IndexTree tree(std::size_t dataIndex);

    /// The record's row, whatever way leads there; false when it has been deleted.
    bool fetch(RowId id, std::string& row);
    Record record(RowId id);

    /// 3022, 3058, 3314, 3315 before anything is changed.
    RowId insert(const Record& record);
    /// The row may move; its new place.
    RowId update(RowId id, const Record& record);
    void erase(RowId id);

    /// Every row, page after page as the table's map lists them. The callback answers false to
    /// stop.
    void scan(const std::function<bool(RowId, Bytes)>& visit);
    /// The data pages of the table.
    std::vector<PageNo> ownedPages();

    /// Gives every page of the table back, its definition included, and its long values.
    void release();

private:
    using Keys = std::vector<std::optional<std::string>>; ///< by data index
    Keys keysOf(const Record& record) const;
    void check(const Record& record) const;
    void checkWritable() const;
    bool hasKey(std::size_t dataIndex, const std::string& key);
    void checkUnique(const Record& record, const Keys& keys, const Keys* former);
    void addEntry(std::size_t dataIndex, const std::string& key, RowId id);
    void removeEntry(std::size_t dataIndex, const std::string& key, RowId id);

    RowId store(const std::string& row);
    bool tryPage(PageNo no, std::size_t size);
    PageNo pageFor(std::size_t size);
    void unstore(RowId id);
    void pageChanged(PageNo no);
    void releaseLongValues(const Record& record, const Record* kept);
    RowId follow(RowId id, int hops);
    void releaseMapped(std::uint32_t map, PageNo owner);
    void releaseMaps(const std::vector<RowId>& maps);

    Pager& pager_;
    TableDef def_;
    std::vector<FieldRule> rules_;
    PageNo lastInsert_ = 0;
    unsigned generation_ = 0;
};

} // namespace velora::jet
