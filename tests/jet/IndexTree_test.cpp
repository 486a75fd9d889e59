#include "jet/DataPage.h"
#include "jet/IndexTree.h"
#include "support/jet_memory.h"

#include <doctest/doctest.h>

#include <algorithm>

using namespace velora;
using namespace velora::jet;

namespace {

constexpr PageNo kOwner = 99;

/// Pages 0..5 that nobody looks at but 1 and 6: the global map and the index's own.
class Bed {
public:
    Bed() : pager(files, L"i", JetFiles::Mode::createNew)
    {
        Pager::Operation operation(pager);
        for (PageNo i = 0, no = 0; i < 8; ++i)
            pager.append(no);
        makeDataPage(pager.write(1), 1);
        std::string free(69, '\xFF');
        free.replace(0, 6, 6, '\0');
        addRow(pager.write(1), Bytes(free));
        makeDataPage(pager.write(6), 0);
        addRow(pager.write(6), Bytes(std::string(69, '\0')));
        IndexTree::makeEmptyRoot(pager.write(7), kOwner);
        Space space(pager);
        UsageMap(pager, {6, 0}).add(7, space);
        operation.done();
    }
    IndexTree tree() { return IndexTree(pager, kOwner, 7, {6, 0}); }
    void insert(const std::string& entry)
    {
        Pager::Operation operation(pager);
        tree().insert(entry);
        operation.done();
    }
    void erase(const std::string& entry)
    {
        Pager::Operation operation(pager);
        tree().erase(entry);
        operation.done();
    }
    std::vector<std::string> all()
    {
        std::vector<std::string> entries;
        IndexTree own = tree();
        for (auto place = own.first(); place.leaf; place = own.after(place))
            entries.push_back(own.entry(place));
        return entries;
    }

    MemoryFiles files;
    Pager pager;
};

std::size_t packed(const std::vector<std::string>& entries, std::size_t from, std::size_t to)
{
    return packedSize(entries, from, to);
}

} // namespace

TEST_CASE("entries are packed with their common beginning stored once")
{
    const std::vector<std::string> entries{"prefix-a", "prefix-bb", "prefix-c"};
    CHECK(packed(entries, 0, 1) == 8);
    CHECK(packed(entries, 0, 3) == 8 + 2 + 1);
    CHECK(packed(entries, 1, 1) == 0);
}

TEST_CASE("the new last entry of an index begins a page of its own")
{
    std::vector<std::string> entries;
    for (int i = 0; i < 37; ++i)
        entries.push_back(std::string(1, static_cast<char>(40 + i)) + std::string(99, 'x'));
    CHECK(cutEntries(entries, 36, true) == std::vector<std::size_t>{36});
    const auto middle = cutEntries(entries, 36, false);
    REQUIRE(middle.size() == 1);
    CHECK(middle[0] > 15);
    CHECK(middle[0] < 22);
}

TEST_CASE("a half that loses its prefix and overflows is cut elsewhere")
{
    // 40 entries of 300 bytes fit only because 290 of them are common; the new one shares nothing
    // and lies at the front, so that the first half would have to store all of every entry.
    std::vector<std::string> entries{"A" + std::string(20, 'q')};
    for (int i = 0; i < 40; ++i)
        entries.push_back(std::string(290, 'p') + std::to_string(1000000000 + i));
    REQUIRE(packed(entries, 1, 41) <= kIndexRoom);
    REQUIRE(packed(entries, 0, 21) > kIndexRoom);
    const auto cuts = cutEntries(entries, 0, false);
    REQUIRE_FALSE(cuts.empty());
    std::size_t from = 0;
    for (std::size_t i = 0; i <= cuts.size(); ++i) {
        const std::size_t to = i < cuts.size() ? cuts[i] : entries.size();
        CHECK(to > from);
        CHECK(packed(entries, from, to) <= kIndexRoom);
        from = to;
    }
    CHECK(from == entries.size());
}

TEST_CASE("a new entry amid a common beginning that it does not share cuts three ways")
{
    // Both sides share much within themselves, nothing with each other or the newcomer.
    std::vector<std::string> entries;
    for (int i = 0; i < 20; ++i)
        entries.push_back(std::string(400, 'm') + "a" + std::to_string(100 + i));
    entries.push_back(std::string(300, 'm') + "n");
    for (int i = 0; i < 20; ++i)
        entries.push_back(std::string(300, 'm') + "z" + std::string(400, 'y')
                          + std::to_string(100 + i));
    std::size_t from = 0;
    std::vector<std::size_t> cuts = cutEntries(entries, 20, false);
    cuts.push_back(entries.size());
    for (const std::size_t to : cuts) {
        CHECK(packed(entries, from, to) <= kIndexRoom);
        from = to;
    }
}

TEST_CASE("ascending, descending and inside-out inserts, then deletion in another order")
{
    for (const int order : {0, 1, 2}) {
        CAPTURE(order);
        Bed bed;
        std::vector<std::string> entries;
        for (int i = 0; i < 600; ++i) {
            const int n = order == 0   ? i
                          : order == 1 ? 599 - i
                                       : (i % 2 ? 300 + i / 2 : 299 - i / 2);
            std::string entry = std::string(120, 'k') + std::to_string(1000 + n)
                                + std::string(static_cast<std::size_t>(n % 7) * 30, 'v');
            entry.append("\0\0\1\1", 4);
            bed.insert(entry);
            entries.push_back(entry);
        }
        std::sort(entries.begin(), entries.end());
        REQUIRE(bed.all() == entries);
        IndexTree tree = bed.tree();
        std::vector<std::string> backwards;
        for (auto place = tree.last(); place.leaf; place = tree.before(place))
            backwards.push_back(tree.entry(place));
        std::reverse(backwards.begin(), backwards.end());
        REQUIRE(backwards == entries);
        // Sequential filling wastes nothing: pages are full but for the last.
        const PageNo pages = bed.pager.pageCount();
        if (order == 0)
            CHECK(pages < 40);
        for (std::size_t i = 0; i < entries.size(); ++i)
            bed.erase(entries[(i * 263) % entries.size()]);
        CHECK(bed.all().empty());
        CHECK(IndexPage(bed.pager, 7, kOwner).isLeaf());
        CHECK(bed.pager.pageCount() == pages);
        CHECK(UsageMap(bed.pager, {6, 0}).next(8) == 0);
    }
}

TEST_CASE("an entry that is there already, or is not, is damage")
{
    Bed bed;
    bed.insert(std::string("key\0\0\1\1", 7));
    CHECK_THROWS_AS(bed.insert(std::string("key\0\0\1\1", 7)), JetError);
    CHECK_THROWS_AS(bed.erase(std::string("kez\0\0\1\1", 7)), JetError);
    CHECK(bed.all().size() == 1);
}
