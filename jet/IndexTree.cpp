#include "jet/IndexTree.h"

namespace velora::jet {
namespace {

constexpr std::size_t kMaxDepth = 16;

} // namespace

/// The leaf where `bytes` belongs, with the way to it.
PageNo IndexTree::descend(std::string_view bytes, Path* path)
{
    PageNo no = root_;
    for (std::size_t depth = 0; depth < kMaxDepth; ++depth) {
        const IndexPage page = look(no);
        if (page.isLeaf())
            return no;
        std::size_t i = page.lowerBound(bytes);
        PageNo down = 0;
        if (i < page.count()) {
            down = page.child(i);
        } else if (page.tail()) {
            down = page.tail();
        } else {
            require(page.count() > 0, "an index node without children");
            down = page.child(--i);
        }
        if (path)
            path->push_back({no, i});
        no = down;
    }
    damaged("an index is too deep");
}

PageNo IndexTree::edge(PageNo no, bool right)
{
    for (std::size_t depth = 0; depth < kMaxDepth; ++depth) {
        const IndexPage page = look(no);
        if (page.isLeaf())
            return no;
        if (page.tail() && (right || page.count() == 0)) {
            no = page.tail();
        } else {
            require(page.count() > 0, "an index node without children");
            no = page.child(right ? page.count() - 1 : 0);
        }
    }
    damaged("an index is too deep");
}

/// From a place that may lie past its leaf's end (or before its start) to the next entry.
IndexTree::Place IndexTree::skipEmpty(Place place, bool forward)
{
    for (PageNo steps = 0; steps <= pager_.pageCount(); ++steps) {
        const IndexPage page = look(place.leaf);
        require(page.isLeaf(), "the leaves of an index lead astray");
        if (page.count() && forward && place.at < page.count())
            return place;
        if (page.count() && !forward && place.at > 0)
            return {place.leaf, place.at - 1};
        place.leaf = forward ? page.next() : page.previous();
        if (!place.leaf)
            return {};
        place.at = forward ? 0 : look(place.leaf).count();
    }
    damaged("the leaves of an index lead in a circle");
}

IndexTree::Place IndexTree::lowerBound(std::string_view bytes)
{
    const PageNo leaf = descend(bytes, nullptr);
    return skipEmpty({leaf, look(leaf).lowerBound(bytes)}, true);
}

IndexTree::Place IndexTree::first()
{
    return skipEmpty({edge(root_, false), 0}, true);
}

IndexTree::Place IndexTree::last()
{
    const PageNo leaf = edge(root_, true);
    return skipEmpty({leaf, look(leaf).count()}, false);
}

IndexTree::Place IndexTree::after(Place place)
{
    return skipEmpty({place.leaf, place.at + 1}, true);
}

IndexTree::Place IndexTree::before(Place place)
{
    return skipEmpty(place, false);
}

std::string IndexTree::entry(Place place)
{
    const IndexPage page = look(place.leaf);
    require(page.isLeaf() && place.at < page.count(), "an index place is gone");
    return page.entry(place.at);
}

bool IndexTree::startsWith(Place place, std::string_view bytes)
{
    const IndexPage page = look(place.leaf);
    return place.at < page.count() && page.startsWith(place.at, bytes);
}

void IndexTree::release()
{
    for (PageNo page = map_.next(1); page; page = map_.next(page + 1)) {
        look(page); // the map may be wrong; another table's page must not go with this one
        space_.release(page);
    }
}

PageNo IndexTree::newPage()
{
    const PageNo page = space_.allocate();
    map_.add(page, space_);
    return page;
}

void IndexTree::dropPage(PageNo page)
{
    map_.remove(page);
    space_.release(page);
}

IndexTree::Children IndexTree::childrenOf(PageNo node)
{
    const IndexPage page = look(node);
    require(!page.isLeaf(), "an index leaf stands in place of a node");
    Children children;
    for (std::size_t i = 0; i < page.count(); ++i)
        children.push_back({page.entry(i), page.child(i)});
    if (page.tail())
        children.push_back({{}, page.tail()});
    return children;
}

/// The last entry below a page, which its parent repeats.
std::string IndexTree::lastUnder(PageNo page)
{
    const IndexPage leaf = look(edge(page, true));
    require(leaf.count() > 0, "an empty index leaf");
    return leaf.entry(leaf.count() - 1);
}

} // namespace velora::jet
