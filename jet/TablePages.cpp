// Which pages a table has, and which of them takes a new row.
#include "jet/DataPage.h"
#include "jet/LongValue.h"
#include "jet/Table.h"

#include <algorithm>
#include <set>

namespace velora::jet {
namespace {

/// A page with less room than this is no longer tried for new rows.
constexpr std::size_t kWorthTrying = 400;
constexpr int kPagesTried = 8;

} // namespace

bool Table::tryPage(PageNo no, std::size_t size)
{
    const Page& page = pager_.read(no);
    require(isDataPage(page) && ownerOf(page) == def_.page, "a map lists another table's page");
    return hasRoomFor(page, size);
}

PageNo Table::pageFor(std::size_t size)
{
    if (generation_ != pager_.generation()) {
        generation_ = pager_.generation();
        lastInsert_ = 0;
    }
    if (lastInsert_ && tryPage(lastInsert_, size))
        return lastInsert_;
    Space space(pager_);
    UsageMap free(pager_, rowAt(def_.freeMap));
    PageNo no = free.next(1);
    for (int tried = 0; no && tried < kPagesTried; ++tried, no = free.next(no + 1)) {
        if (tryPage(no, size))
            return no;
        const Page& page = pager_.read(no);
        if (freeBytes(page) < kWorthTrying || rowsOf(page) >= kMaxRows)
            free.remove(no);
    }
    no = space.allocate();
    makeDataPage(pager_.write(no), def_.page);
    UsageMap(pager_, rowAt(def_.ownedMap)).add(no, space);
    free.add(no, space);
    return no;
}

RowId Table::store(const std::string& row)
{
    const PageNo no = pageFor(row.size());
    lastInsert_ = no;
    return {no, addRow(pager_.write(no), Bytes(row))};
}

/// Takes the row's bytes out, and those that it points to.
void Table::unstore(RowId id)
{
    const RowId target = follow(id, 0);
    if (!(target == id)) {
        removeRow(pager_.write(target.page), target.row);
        if (target.page != id.page)
            pageChanged(target.page);
    }
    removeRow(pager_.write(id.page), id.row);
    pageChanged(id.page);
}

/// Rows have left the page: it may take new ones, or is no page of the table any more.
void Table::pageChanged(PageNo no)
{
    Space space(pager_);
    UsageMap free(pager_, rowAt(def_.freeMap));
    const Page& page = pager_.read(no);
    if (isEmpty(page)) {
        UsageMap(pager_, rowAt(def_.ownedMap)).remove(no);
        free.remove(no);
        if (lastInsert_ == no)
            lastInsert_ = 0;
        space.release(no);
    } else if (freeBytes(page) >= kWorthTrying && rowsOf(page) < kMaxRows && !free.contains(no)) {
        free.add(no, space);
    }
}

std::vector<PageNo> Table::ownedPages()
{
    std::vector<PageNo> pages;
    const UsageMap owned(pager_, rowAt(def_.ownedMap));
    for (PageNo no = owned.next(1); no; no = owned.next(no + 1))
        pages.push_back(no);
    return pages;
}

void Table::scan(const std::function<bool(RowId, Bytes)>& visit)
{
    std::string row;
    for (const PageNo no : ownedPages()) {
        pager_.trim();
        require(isDataPage(pager_.read(no)) && ownerOf(pager_.read(no)) == def_.page,
                "a map lists another table's page");
        for (std::size_t i = 0; i < std::min(rowsOf(pager_.read(no)), kMaxRows); ++i) {
            const RowId id{no, static_cast<Byte>(i)};
            if (fetch(id, row) && !visit(id, Bytes(row)))
                return;
        }
    }
}

void Table::release()
{
    Pager::Operation operation(pager_);
    std::vector<RowId> maps;
    for (std::size_t i = 0; i < def_.data.size(); ++i) {
        tree(i).release();
        maps.push_back(rowAt(def_.data[i].map));
    }
    for (const LongValueMaps& own : def_.longValues) {
        releaseMapped(own.owned, kLongValueOwner);
        maps.push_back(rowAt(own.owned));
        maps.push_back(rowAt(own.free));
    }
    releaseMapped(def_.ownedMap, def_.page);
    maps.push_back(rowAt(def_.ownedMap));
    maps.push_back(rowAt(def_.freeMap));
    releaseMaps(maps);
    for (const PageNo no : def_.pages)
        Space(pager_).release(no);
    operation.done();
}

void Table::releaseMapped(std::uint32_t map, PageNo owner)
{
    const UsageMap owned(pager_, rowAt(map));
    for (PageNo no = owned.next(1); no; no = owned.next(no + 1)) {
        require(ownerOf(pager_.read(no)) == owner, "a map lists another table's page");
        Space(pager_).release(no);
    }
}

/// Takes the maps' rows out; their page may hold those of other tables, too.
void Table::releaseMaps(const std::vector<RowId>& maps)
{
    Space space(pager_);
    std::set<PageNo> pages;
    for (const RowId map : maps) {
        for (const PageNo no : UsageMap(pager_, map).bitmapPages())
            space.release(no);
        removeRow(pager_.write(map.page), map.row);
        pages.insert(map.page);
    }
    for (const PageNo no : pages)
        if (isEmpty(pager_.read(no)))
            space.release(no);
}

} // namespace velora::jet
