// How an index tree grows and shrinks.
#include "jet/IndexTree.h"

#include <algorithm>

namespace velora::jet {
namespace {

std::string nodeEntry(const std::string& last, PageNo child)
{
    std::string entry = last;
    for (int shift = 24; shift >= 0; shift -= 8)
        add8(entry, child >> shift);
    return entry;
}

bool fits(const std::vector<std::string>& entries, std::size_t from, std::size_t to)
{
    return packedSize(entries, from, to) <= kIndexRoom;
}

/// Fills page after page from the left: what always works.
std::vector<std::size_t> cutGreedily(const std::vector<std::string>& entries)
{
    std::vector<std::size_t> cuts;
    std::size_t from = 0;
    for (std::size_t i = 1; i < entries.size(); ++i)
        if (!fits(entries, from, i + 1)) {
            cuts.push_back(i);
            from = i;
        }
    return cuts;
}

std::vector<std::string> entriesOf(const IndexPage& page)
{
    std::vector<std::string> entries;
    entries.reserve(page.count() + 1);
    for (std::size_t i = 0; i < page.count(); ++i)
        entries.push_back(page.entry(i));
    return entries;
}

} // namespace

std::vector<std::size_t> cutEntries(const std::vector<std::string>& entries, std::size_t added,
                                    bool atEnd)
{
    const std::size_t n = entries.size();
    // Ascending inserts fill their pages: the full page stays, the new entry begins another.
    if (atEnd && added + 1 == n && fits(entries, 0, n - 1))
        return {n - 1};
    std::size_t total = 0, half = 1, sum = 0;
    for (const std::string& entry : entries)
        total += entry.size();
    while (half + 1 < n && (sum += entries[half - 1].size()) < total / 2)
        ++half;
    // A half can be larger than the page was: its entries share less once the cut separates them
    // from the prefix of the whole. Then a cut farther from the middle may do.
    for (std::size_t off = 0; off < n; ++off)
        for (const std::size_t cut : {half + off, half - off})
            if (cut >= 1 && cut < n && fits(entries, 0, cut) && fits(entries, cut, n))
                return {cut};
    return cutGreedily(entries);
}

void IndexTree::insert(const std::string& entry)
{
    Path path;
    const PageNo leaf = descend(entry, &path);
    const IndexPage page = look(leaf);
    const std::size_t at = page.lowerBound(entry);
    require(at == page.count() || page.entry(at) != entry, "an index holds an entry already");
    const bool raisesLast = at == page.count();
    if (!insertInPlace(pager_, leaf, owner_, at, entry)) {
        std::vector<std::string> entries = entriesOf(page);
        entries.insert(entries.begin() + static_cast<long>(at), entry);
        if (!fits(entries, 0, entries.size())) {
            overflow(leaf, std::move(path), entries, at);
            path.clear();
            if (raisesLast && descend(entry, &path) != root_)
                lastChanged(std::move(path), entry);
            return;
        }
        const IndexLinks links{page.previous(), page.next(), 0};
        writeIndexPage(pager_.write(leaf), owner_, true, links, entries);
    }
    if (raisesLast)
        lastChanged(std::move(path), entry);
}

/// A leaf's entries no longer fit it: some move to new leaves behind it.
void IndexTree::overflow(PageNo leaf, Path path, const std::vector<std::string>& entries,
                         std::size_t added)
{
    const auto cuts = cutEntries(entries, added, look(leaf).next() == 0);
    if (leaf == root_) {
        // The root's content moves out; the root becomes the node above it.
        const PageNo moved = newPage();
        IndexTree::makeEmptyRoot(pager_.write(moved), owner_);
        growRoot(spread(moved, entries, cuts));
        return;
    }
    replaceChild(std::move(path), spread(leaf, entries, cuts));
}

/// Writes the pieces of a leaf into it and into new leaves linked behind it.
IndexTree::Children IndexTree::spread(PageNo no, const std::vector<std::string>& entries,
                                      const std::vector<std::size_t>& cuts)
{
    const PageNo before = look(no).previous();
    const PageNo behind = look(no).next();
    std::vector<PageNo> pages{no};
    for (std::size_t i = 0; i < cuts.size(); ++i)
        pages.push_back(newPage());
    Children pieces;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const auto from = entries.begin() + static_cast<long>(i ? cuts[i - 1] : 0);
        const auto to =
            entries.begin() + static_cast<long>(i < cuts.size() ? cuts[i] : entries.size());
        const IndexLinks links{i ? pages[i - 1] : before,
                               i + 1 < pages.size() ? pages[i + 1] : behind, 0};
        writeIndexPage(pager_.write(pages[i]), owner_, true, links, {from, to});
        pieces.push_back({*(to - 1), pages[i]});
    }
    if (behind) {
        require(look(behind).isLeaf(), "the leaves of an index lead astray");
        pager_.write(behind).put32(12, pages.back());
    }
    return pieces;
}

/// Puts `with` in the place of the child at the end of `path`.
void IndexTree::replaceChild(Path path, const Children& with)
{
    const Step step = path.back();
    path.pop_back();
    Children children = childrenOf(step.node);
    require(step.child < children.size(), "an index node has lost a child");
    const std::string last = children[step.child].last;
    const auto at = children.erase(children.begin() + static_cast<long>(step.child));
    const auto put = children.insert(at, with.begin(), with.end());
    // What a tail ends with is known to nobody but the tail itself.
    Child& lastPiece = *(put + static_cast<long>(with.size()) - 1);
    if (last.empty() || lastPiece.last.empty())
        lastPiece.last = last;

    std::vector<std::string> entries;
    for (const Child& child : children)
        entries.push_back(nodeEntry(child.last, child.page));
    // All but the last child take room on the page; that one is the tail.
    if (fits(entries, 0, entries.size() - 1)) {
        storeChildren(step.node, children);
        if (!children.back().last.empty() && !path.empty())
            lastChanged(std::move(path), children.back().last);
        return;
    }
    std::vector<std::size_t> cuts = cutEntries(entries, step.child + with.size() - 1, last.empty());
    // A node of one child is valid but wasteful: it takes the last one of its neighbour.
    for (std::size_t i = 0; i < cuts.size(); ++i)
        if ((i + 1 < cuts.size() ? cuts[i + 1] : entries.size()) - cuts[i] == 1
            && cuts[i] - (i ? cuts[i - 1] : 0) > 2)
            --cuts[i];
    cuts.push_back(children.size());
    std::vector<Children> groups;
    std::size_t from = 0;
    for (const std::size_t cut : cuts) {
        groups.emplace_back(children.begin() + static_cast<long>(from),
                            children.begin() + static_cast<long>(cut));
        from = cut;
    }
    Children pieces;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const PageNo page = i || step.node == root_ ? newPage() : step.node;
        writeIndexPage(pager_.write(page), owner_, false, {}, {});
        pieces.push_back({groups[i].back().last, page});
    }
    for (std::size_t i = 0; i < groups.size(); ++i)
        storeChildren(pieces[i].page, groups[i]);
    if (step.node == root_)
        growRoot(pieces);
    else
        replaceChild(std::move(path), pieces);
}

void IndexTree::growRoot(const Children& children)
{
    storeChildren(root_, children);
}

/// Writes a node. Its links stay; those of children that are nodes run among them alone.
void IndexTree::storeChildren(PageNo node, const Children& children)
{
    IndexLinks links;
    if (pager_.read(node).u8(0) == kNodePage) {
        links.previous = look(node).previous();
        links.next = look(node).next();
    }
    std::vector<std::string> entries;
    if (children.size() == 1) {
        const Child& only = children.front();
        entries.push_back(
            nodeEntry(only.last.empty() ? lastUnder(only.page) : only.last, only.page));
    } else {
        for (std::size_t i = 0; i + 1 < children.size(); ++i)
            entries.push_back(nodeEntry(children[i].last, children[i].page));
        links.tail = children.back().page;
    }
    writeIndexPage(pager_.write(node), owner_, false, links, entries);
    linkNodes(children);
}

void IndexTree::linkNodes(const Children& children)
{
    if (look(children.front().page).isLeaf())
        return;
    for (std::size_t i = 0; i < children.size(); ++i) {
        const PageNo previous = i ? children[i - 1].page : 0;
        const PageNo next = i + 1 < children.size() ? children[i + 1].page : 0;
        const IndexPage page = look(children[i].page);
        require(!page.isLeaf(), "an index has leaves at different depths");
        if (page.previous() == previous && page.next() == next)
            continue;
        Page& change = pager_.write(children[i].page);
        change.put32(12, previous);
        change.put32(16, next);
    }
}

/// The last entry below the path's end is another now: the entry that repeats it follows.
void IndexTree::lastChanged(Path path, const std::string& last)
{
    while (!path.empty()) {
        const Step step = path.back();
        path.pop_back();
        const IndexPage page = look(step.node);
        if (step.child < page.count()) {
            Children children = childrenOf(step.node);
            if (children[step.child].last == last)
                return;
            // It may be longer than the former one, and then not fit.
            const Child changed{last, children[step.child].page};
            path.push_back(step);
            replaceChild(std::move(path), {changed});
            return;
        }
    }
}

void IndexTree::erase(const std::string& entry)
{
    Path path;
    const PageNo leaf = descend(entry, &path);
    const IndexPage page = look(leaf);
    const std::size_t at = page.lowerBound(entry);
    require(at < page.count() && page.entry(at) == entry, "an index lacks an entry");
    if (page.count() == 1 && leaf != root_) {
        dropLeaf(leaf, std::move(path));
        return;
    }
    const bool wasLast = at + 1 == page.count();
    if (!eraseInPlace(pager_, leaf, owner_, at)) {
        std::vector<std::string> entries = entriesOf(page);
        entries.erase(entries.begin() + static_cast<long>(at));
        const IndexLinks links{page.previous(), page.next(), 0};
        writeIndexPage(pager_.write(leaf), owner_, true, links, entries);
    }
    if (wasLast && !path.empty()) {
        const IndexPage now = look(leaf);
        lastChanged(std::move(path), now.entry(now.count() - 1));
    }
}

void IndexTree::dropLeaf(PageNo leaf, Path path)
{
    const PageNo before = look(leaf).previous();
    const PageNo behind = look(leaf).next();
    if (before) {
        require(look(before).isLeaf(), "the leaves of an index lead astray");
        pager_.write(before).put32(16, behind);
    }
    if (behind) {
        require(look(behind).isLeaf(), "the leaves of an index lead astray");
        pager_.write(behind).put32(12, before);
    }
    dropPage(leaf);
    dropChild(std::move(path));
}

/// Takes the child at the end of `path`, released already, out of its node.
void IndexTree::dropChild(Path path)
{
    const Step step = path.back();
    path.pop_back();
    Children children = childrenOf(step.node);
    require(step.child < children.size(), "an index node has lost a child");
    const bool wasLast = step.child + 1 == children.size();
    children.erase(children.begin() + static_cast<long>(step.child));
    if (children.empty()) {
        if (step.node == root_) {
            makeEmptyRoot(pager_.write(root_), owner_);
        } else {
            dropPage(step.node);
            dropChild(std::move(path));
        }
        return;
    }
    storeChildren(step.node, children);
    if (wasLast && !path.empty())
        lastChanged(std::move(path), lastUnder(children.back().page));
}

} // namespace velora::jet
