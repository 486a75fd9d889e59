#pragma once
// One page of an index: entries in ascending order of their bytes. On leaves an entry is key and
// row; on nodes it is the last entry of a child and the child's page, big-endian.
#include "jet/Pager.h"

namespace velora::jet {

inline constexpr std::size_t kRowIdSize = 4;
inline constexpr std::size_t kChildSize = 4;

/// A checked look at an index page. The ends of its entries are worked out once and kept with the
/// page until it changes.
class IndexPage {
public:
    /// 3049 when the page is no sound index page of that table.
    IndexPage(Pager& pager, PageNo no, PageNo owner);

    bool isLeaf() const { return leaf_; }
    std::size_t count() const { return ends_->size(); }
    PageNo previous() const { return page_->u32(12); }
    PageNo next() const { return page_->u32(16); }
    PageNo tail() const { return page_->u32(20); }

    /// The whole entry, its child number (nodes) left out.
    std::string entry(std::size_t i) const;
    PageNo child(std::size_t i) const;
    /// The first entry that is not less than `bytes`; count() when all are less.
    std::size_t lowerBound(std::string_view bytes) const;
    bool startsWith(std::size_t i, std::string_view bytes) const;
    std::size_t prefix() const { return prefix_; }
    std::size_t used() const { return ends_->empty() ? 0 : ends_->back(); }

private:
    std::string_view stored(std::size_t i) const;
    int compare(std::size_t i, std::string_view bytes) const;

    const Page* page_;
    const std::vector<std::uint16_t>* ends_;
    std::size_t prefix_ = 0;
    bool leaf_ = false;
};

/// Bytes that the entries [from, to) take on a page, the common prefix stored once.
std::size_t packedSize(const std::vector<std::string>& entries, std::size_t from, std::size_t to);
inline constexpr std::size_t kIndexRoom = kPageSize - 480;

struct IndexLinks {
    PageNo previous = 0, next = 0, tail = 0;
};
/// Writes a page anew. A prefix is taken out only when the entries would not fit otherwise.
void writeIndexPage(Page& page, PageNo owner, bool leaf, const IndexLinks& links,
                    const std::vector<std::string>& entries);

/// Adds an entry at place `i` of a leaf without unpacking it; false when it needs more than that.
bool insertInPlace(Pager& pager, PageNo no, PageNo owner, std::size_t i, std::string_view entry);
/// The same for taking an entry out. Not the first one.
bool eraseInPlace(Pager& pager, PageNo no, PageNo owner, std::size_t i);

} // namespace velora::jet
