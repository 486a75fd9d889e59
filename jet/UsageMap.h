#pragma once
// Usage maps: sets of pages, one bit a page, kept in a row of a map page. A map covers a window of
// pages inside its row, or, when its pages lie too far apart, refers to pages full of bits.
#include "jet/Pager.h"

#include <functional>

namespace velora::jet {

class Space;

class UsageMap {
public:
    UsageMap(Pager& pager, RowId row) : pager_(&pager), row_(row) {}

    bool contains(PageNo page) const;
    /// The first member at or after `from` and below the file's end; 0 when there is none.
    PageNo next(PageNo from) const;
    /// `space` gives the pages of bits that a wide map needs.
    void add(PageNo page, Space& space);
    void remove(PageNo page);
    /// The bitmap pages that the map refers to.
    std::vector<PageNo> bitmapPages() const;

private:
    friend class Space;
    struct Bit {
        PageNo page; ///< where the bit lies; 0 = the map does not reach that far
        std::size_t at = 0;
        Byte mask = 0;
    };
    Bit find(PageNo page) const;
    Bytes row() const;
    PageNo bitmap(std::size_t index) const;
    void set(const Bit& bit, bool on);
    bool shiftWindow(PageNo page);
    void makeWide(Space& space);

    Pager* pager_;
    RowId row_;
};

/// The pages that no table owns.
class Space {
public:
    explicit Space(Pager& pager) : pager_(pager) {}
    /// A page of zeros: the lowest free one, else a new one at the end.
    PageNo allocate();
    /// The page is zeroed and free.
    void release(PageNo page);

private:
    void take(PageNo page);
    Pager& pager_;
};

} // namespace velora::jet
