#include "support/jet_check.h"

#include "jet/DataPage.h"
#include "jet/Engine.h"
#include "jet/IndexKey.h"

#include <algorithm>
#include <set>

namespace velora {
namespace {

using namespace jet;

struct Wrong {
    std::string what;
};

void expect(bool holds, const std::string& what)
{
    if (!holds)
        throw Wrong{what};
}

class Checker {
public:
    explicit Checker(Pager& pager) : pager_(pager) {}

    void run()
    {
        for (const PageNo no : {0u, 1u})
            use(no, "fixed");
        Catalogue catalogue(pager_);
        std::size_t tables = 0;
        for (const CatalogueEntry& entry : catalogue.all())
            if (entry.type == kLocalTable) {
                ++tables;
                checkTable(static_cast<PageNo>(entry.id));
            }
        expect(tables == catalogue.list().size(), "the catalogue's index and rows differ");
        checkFree();
    }
    std::size_t levels() const { return levels_; }

private:
    void use(PageNo no, const std::string& what)
    {
        expect(no < pager_.pageCount(), what + ": a page beyond the end");
        const auto [owner, first] = owners_.emplace(no, what);
        expect(first, what + ": page " + std::to_string(no) + " belongs to " + owner->second);
    }

    std::set<PageNo> members(std::uint32_t map, const std::string& what)
    {
        const UsageMap usage(pager_, rowAt(map));
        if (!owners_.count(rowAt(map).page))
            use(rowAt(map).page, "maps");
        for (const PageNo no : usage.bitmapPages())
            use(no, what + " bitmap");
        std::set<PageNo> pages;
        for (PageNo no = usage.next(1); no; no = usage.next(no + 1)) {
            expect(usage.contains(no), "a map contradicts itself");
            pages.insert(no);
        }
        return pages;
    }

    void checkTable(PageNo no)
    {
        Table table(pager_, readTableDef(pager_, no));
        const TableDef& def = table.def();
        for (const PageNo page : def.pages)
            use(page, "definition");
        const std::string name = "table " + std::to_string(no);
        const auto owned = members(def.ownedMap, name);
        const auto free = members(def.freeMap, name);
        for (const PageNo page : owned)
            use(page, name + " data");
        for (const PageNo page : free)
            expect(owned.count(page) != 0, name + ": free space on a page of others");
        for (const LongValueMaps& maps : def.longValues) {
            members(maps.free, name);
            for (const PageNo page : members(maps.owned, name)) {
                use(page, name + " long value");
                expect(ownerOf(pager_.read(page)) == kLongValueOwner, "a page of long values");
            }
        }
        std::uint32_t rows = 0;
        std::vector<std::set<std::string>> entries(def.data.size());
        table.scan([&](RowId id, Bytes row) {
            ++rows;
            const Record record = decodeRow(def, row);
            for (std::size_t i = 0; i < def.data.size(); ++i)
                if (canWriteKey(def, def.data[i]))
                    if (auto key = keyOf(def, def.data[i], record)) {
                        addRowId(*key, id);
                        entries[i].insert(*key);
                    }
            return true;
        });
        for (const PageNo page : owned) {
            const Page& data = pager_.read(page);
            expect(data.u16(2) == freeBytes(data), name + ": the free bytes of a data page");
        }
        expect(rows == table.recordCount(), name + ": the record count");
        for (std::size_t i = 0; i < def.data.size(); ++i)
            checkIndex(def, i, entries[i], name + " index " + std::to_string(i));
    }

    struct Level {
        PageNo last = 0;     ///< the leaf met before
        std::string highest; ///< entry met before
        std::size_t depth = 0;
    };

    void checkIndex(const TableDef& def, std::size_t i, const std::set<std::string>& rows,
                    const std::string& name)
    {
        const DataIndex& index = def.data[i];
        const auto mapped = members(index.map, name);
        pages_.clear();
        found_.clear();
        Level level;
        checkNode(def.page, index.root, 1, level, name);
        expect(level.last == 0 || IndexPage(pager_, level.last, def.page).next() == 0,
               name + ": the last leaf has a successor");
        for (const PageNo page : pages_)
            use(page, name);
        expect(pages_ == mapped, name + ": its map lists other pages");
        if (canWriteKey(def, index)) {
            expect(std::equal(found_.begin(), found_.end(), rows.begin(), rows.end()),
                   name + ": entries and rows differ");
            std::set<std::string> distinct;
            for (const std::string& entry : found_)
                distinct.insert(entry.substr(0, entry.size() - kRowIdSize));
            expect(distinct.size() == pager_.read(def.page).u32(63 + 12 * i + 4),
                   name + ": the number of distinct keys");
        }
    }

    /// Answers the last entry below the page.
    std::string checkNode(PageNo owner, PageNo no, std::size_t depth, Level& level,
                          const std::string& name)
    {
        expect(pages_.insert(no).second, name + ": a page is there twice");
        const IndexPage page(pager_, no, owner);
        expect(pager_.read(no).u16(2) == kIndexRoom - page.used(), name + ": free bytes");
        for (std::size_t i = 0; i < page.count(); ++i)
            expect(i == 0 || page.entry(i - 1) < page.entry(i), name + ": out of order");
        if (page.isLeaf()) {
            expect(level.depth == 0 || level.depth == depth, name + ": leaves at two depths");
            level.depth = depth;
            levels_ = std::max(levels_, depth);
            expect(page.previous() == level.last, name + ": a leaf's predecessor");
            expect(!level.last || IndexPage(pager_, level.last, owner).next() == no,
                   name + ": a leaf's successor");
            level.last = no;
            expect(page.count() || depth == 1, name + ": an empty leaf");
            for (std::size_t i = 0; i < page.count(); ++i)
                found_.push_back(page.entry(i));
            expect(page.count() == 0 || level.highest < page.entry(0), name + ": leaves overlap");
            if (page.count())
                level.highest = page.entry(page.count() - 1);
            return level.highest;
        }
        std::vector<PageNo> children;
        std::string last;
        for (std::size_t i = 0; i < page.count(); ++i) {
            last = checkNode(owner, page.child(i), depth + 1, level, name);
            expect(last == page.entry(i), name + ": a node names another last entry");
            children.push_back(page.child(i));
        }
        expect(page.tail() ? page.count() >= 1 : page.count() == 1, name + ": a node's tail");
        if (page.tail()) {
            last = checkNode(owner, page.tail(), depth + 1, level, name);
            children.push_back(page.tail());
        }
        for (std::size_t i = 0; i < children.size(); ++i) {
            const IndexPage child(pager_, children[i], owner);
            if (child.isLeaf())
                continue;
            expect(child.previous() == (i ? children[i - 1] : 0)
                       && child.next() == (i + 1 < children.size() ? children[i + 1] : 0),
                   name + ": the links between nodes");
        }
        return last;
    }

    void checkFree()
    {
        const UsageMap free(pager_, {1, 0});
        for (PageNo no = 0; no < pager_.pageCount(); ++no) {
            const bool used = owners_.count(no) != 0;
            expect(used != free.contains(no),
                   "page " + std::to_string(no) + (used ? " is used and free" : " is lost"));
        }
    }

    Pager& pager_;
    std::map<PageNo, std::string> owners_;
    std::set<PageNo> pages_;
    std::vector<std::string> found_;
    std::size_t levels_ = 0;
};

} // namespace

std::string checkJetFile(JetFiles& files, const std::wstring& path, std::size_t* levels)
{
    try {
        Pager pager(files, path, JetFiles::Mode::existing);
        Checker checker(pager);
        checker.run();
        if (levels)
            *levels = checker.levels();
    } catch (const Wrong& wrong) {
        return wrong.what;
    } catch (const JetError& error) {
        return error.what();
    }
    return {};
}

JetContent readJetFile(JetFiles& files, const std::wstring& path)
{
    JetContent content;
    const auto db = clsJetDatabase::openDatabase(path, files);
    for (const std::wstring& name : db->tableNames()) {
        if (name.starts_with(L"MSys"))
            continue;
        auto& records = content[name];
        const auto set = db->openRecordset(name);
        const auto fields = set->fieldNames();
        for (set->moveFirst(); !set->eof(); set->move(1)) {
            std::vector<JetValue> values;
            for (const std::wstring& field : fields)
                values.push_back(set->field(field));
            records.push_back(values);
        }
    }
    return content;
}

JetTable descriptionTable(const std::wstring& name)
{
    JetTable table;
    table.name = name;
    for (const wchar_t* field : {L"Filename", L"Title", L"Artist", L"Album"})
        table.fields.push_back({field});
    table.fields.push_back({L"Year", kJetText, 4});
    table.fields.push_back({L"Comments"});
    table.fields.push_back({L"Genre", kJetText, 100});
    table.fields.push_back({L"Compression Type", kJetText, 100});
    table.indexes.push_back({L"PrimaryKey", {L"Filename"}, true, true});
    return table;
}

} // namespace velora
