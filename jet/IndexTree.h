#pragma once
// An index: a tree of pages whose leaves hold one entry (key, row) for each record and are linked
// in order. The root keeps its page number for life.
#include "jet/IndexPage.h"
#include "jet/UsageMap.h"

namespace velora::jet {

class IndexTree {
public:
    /// `map` is the index's own usage map; it lists every page of the tree.
    IndexTree(Pager& pager, PageNo owner, PageNo root, RowId map)
        : pager_(pager), space_(pager), map_(pager, map), owner_(owner), root_(root)
    {
    }

    /// A place between entries or at one. Good until the tree changes.
    struct Place {
        PageNo leaf = 0; ///< 0 = nowhere: past an end
        std::size_t at = 0;
    };
    /// The first entry not less than `bytes`.
    Place lowerBound(std::string_view bytes);
    Place first();
    Place last();
    Place after(Place place);
    Place before(Place place);
    std::string entry(Place place);
    bool startsWith(Place place, std::string_view bytes);

    void insert(const std::string& entry);
    /// 3049 when the entry is not there.
    void erase(const std::string& entry);

    /// Gives all pages of the tree back, the root included. The usage map stays.
    void release();

    static void makeEmptyRoot(Page& page, PageNo owner)
    {
        writeIndexPage(page, owner, true, {}, {});
    }

private:
    /// A child of a node: its last entry (unknown = empty, only for the tail) and its page.
    struct Child {
        std::string last;
        PageNo page;
    };
    using Children = std::vector<Child>;
    struct Step {
        PageNo node;
        std::size_t child;
    };
    using Path = std::vector<Step>; ///< from the root downwards, without the leaf

    IndexPage look(PageNo no) { return IndexPage(pager_, no, owner_); }
    PageNo descend(std::string_view bytes, Path* path);
    PageNo edge(PageNo from, bool right);
    Place skipEmpty(Place place, bool forward);

    PageNo newPage();
    void dropPage(PageNo page);
    Children childrenOf(PageNo node);
    void storeChildren(PageNo node, const Children& children);
    void linkNodes(const Children& children);
    std::string lastUnder(PageNo page);

    void overflow(PageNo leaf, Path path, const std::vector<std::string>& entries,
                  std::size_t added);
    Children spread(PageNo no, const std::vector<std::string>& entries,
                    const std::vector<std::size_t>& cuts);
    void replaceChild(Path path, const Children& with);
    void growRoot(const Children& children);
    void lastChanged(Path path, const std::string& last);
    void dropLeaf(PageNo leaf, Path path);
    void dropChild(Path path);

    Pager& pager_;
    Space space_;
    UsageMap map_;
    PageNo owner_;
    PageNo root_;
};

/// Where to cut entries that do not fit one page: the starts of the second and further pages.
/// `added` is the entry that made it too much, `atEnd` that the page is the last of its level.
/// Exposed for its test.
std::vector<std::size_t> cutEntries(const std::vector<std::string>& entries, std::size_t added,
                                    bool atEnd);

} // namespace velora::jet
