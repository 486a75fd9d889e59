#pragma once
// An open database, shared by its object and the recordsets that came from it.
#include "jet/Catalogue.h"
#include "jet/clsJetDatabase.h"

#include <map>

namespace velora::jet {

class Engine {
public:
    /// Opens an existing file and checks that it is a database.
    Engine(JetFiles& files, const std::wstring& path);

    JetFiles& files() { return files_; }
    const std::wstring& path() const { return path_; }
    /// 3420 once the database is closed.
    Pager& pager();
    Catalogue& catalogue();
    bool isOpen() const { return pager_ != nullptr; }
    void close();

    /// The entry of a table of that name; `missing` is the error when there is none.
    CatalogueEntry entry(std::wstring_view name, long missing);
    std::shared_ptr<Table> table(const CatalogueEntry& entry);
    /// 3420 for a table that has been deleted since.
    Table& live(const std::shared_ptr<Table>& table);
    void forget(PageNo table) { tables_.erase(table); }
    /// After a rollback: what was made in the transaction is gone.
    void forgetUndone();

private:
    JetFiles& files_;
    std::wstring path_;
    std::unique_ptr<Pager> pager_;
    std::unique_ptr<Catalogue> catalogue_;
    std::map<PageNo, std::shared_ptr<Table>> tables_;
};

/// A table to be made, from what the caller says: 3125, 3190, 3191, 3259, 3265.
NewTable newTable(const JetTable& table);
/// 3125 for what cannot be the name of a table, a field or an index.
void checkName(std::wstring_view name);
/// A new empty database, complete or absent whatever happens. 3204 when the file exists.
void createFile(JetFiles& files, const std::wstring& path);
/// Where a file that is to take another's place is built.
std::wstring buildPath(const std::wstring& path);

} // namespace velora::jet
