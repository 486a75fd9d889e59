#include "ui/Layout.h"

#include <algorithm>
#include <numeric>

namespace velora {

Box line(std::vector<Box> children, int gap, bool vertical)
{
    Box box;
    box.children_ = std::move(children);
    box.container_ = true;
    box.vertical_ = vertical;
    box.gap_ = gap;
    return box;
}

Box buttonRow(std::vector<Box> buttons)
{
    return columns({space(), columns(std::move(buttons), 6).sameSizes()}, 0);
}

Box buttonRowCentred(std::vector<Box> buttons)
{
    return columns({space(), columns(std::move(buttons), 6).sameSizes(), space()}, 0);
}

Box Box::grow(int weight) const
{
    Box copy = *this;
    copy.grow_ = weight;
    return copy;
}

Box Box::atLeast(Size least) const
{
    Box copy = *this;
    copy.least_ = least;
    return copy;
}

Box Box::align(Align how) const
{
    Box copy = *this;
    copy.align_ = how;
    return copy;
}

Box Box::margins(int left, int top, int right, int bottom) const
{
    Box copy = *this;
    copy.margins_ = {left, top, right, bottom};
    return copy;
}

Box Box::sameSizes() const
{
    Box copy = *this;
    copy.sameSizes_ = true;
    return copy;
}

Box Box::framedBy(Placeable& frame) const
{
    Box copy = *this;
    copy.frame_ = &frame;
    return copy;
}

std::vector<const Box*> Box::shownChildren() const
{
    std::vector<const Box*> shown;
    for (const Box& child : children_)
        if (child.takesSpace())
            shown.push_back(&child);
    return shown;
}

bool Box::takesSpace() const
{
    if (item_)
        return item_->takesSpace();
    if (frame_ && !frame_->takesSpace())
        return false;
    // Blank space always counts; a row whose controls are all hidden does not.
    return !container_ || std::any_of(children_.begin(), children_.end(), [](const Box& child) {
        return child.takesSpace();
    });
}

Size Box::preferredSize() const
{
    Size size;
    if (item_) {
        size = item_->preferredSize();
    } else if (container_) {
        // Each child is asked once: asked twice, deep layouts would take for ever.
        const auto shown = shownChildren();
        const int count = static_cast<int>(shown.size());
        int total = 0, longest = 0, widest = 0;
        for (const Box* child : shown) {
            const Size wanted = child->preferredSize();
            total += along(wanted);
            longest = std::max(longest, along(wanted));
            widest = std::max(widest, across(wanted));
        }
        total = (sameSizes_ ? longest * count : total) + gap_ * std::max(0, count - 1);
        size = vertical_ ? Size{widest, total} : Size{total, widest};
    }
    size.width = std::max(size.width + margins_.left + margins_.right, least_.width);
    size.height = std::max(size.height + margins_.top + margins_.bottom, least_.height);
    return size;
}

// The children's lengths along the direction; what `available` has beyond them goes to the growing
// ones. With too little room the growing ones give way first.
std::vector<int> Box::lengths(const std::vector<const Box*>& shown, int available) const
{
    std::vector<int> result;
    for (const Box* child : shown)
        result.push_back(along(child->preferredSize()));
    if (sameSizes_ && !result.empty())
        std::fill(result.begin(), result.end(), *std::max_element(result.begin(), result.end()));
    int weights = 0;
    for (const Box* child : shown)
        weights += child->grow_;
    if (available <= 0 || weights == 0)
        return result;
    int spare = available - std::accumulate(result.begin(), result.end(), 0)
                - gap_ * (static_cast<int>(shown.size()) - 1);
    for (std::size_t i = 0; i < shown.size(); ++i) {
        if (shown[i]->grow_ == 0)
            continue;
        // The rest is divided anew each time, so that rounding loses no pixel.
        const int share = spare * shown[i]->grow_ / weights;
        const int length = std::max(0, result[i] + share);
        spare -= length - result[i];
        weights -= shown[i]->grow_;
        result[i] = length;
    }
    return result;
}

Rect Box::aligned(const Rect& cell, bool verticalParent) const
{
    if (align_ == Align::stretch)
        return cell;
    const Size wanted = preferredSize();
    const int room = verticalParent ? cell.width() : cell.height();
    const int length = std::min(room, verticalParent ? wanted.width : wanted.height);
    const int lead = align_ == Align::start ? 0
                     : align_ == Align::end ? room - length
                                            : (room - length) / 2;
    Rect result = cell;
    if (verticalParent) {
        result.left += lead;
        result.right = result.left + length;
    } else {
        result.top += lead;
        result.bottom = result.top + length;
    }
    return result;
}

void Box::arrange(const Rect& where) const
{
    const Rect inner{where.left + margins_.left, where.top + margins_.top,
                     where.right - margins_.right, where.bottom - margins_.bottom};
    if (frame_)
        frame_->place(where);
    if (item_)
        item_->place(inner);
    const auto shown = shownChildren();
    const auto along = lengths(shown, vertical_ ? inner.height() : inner.width());
    int at = vertical_ ? inner.top : inner.left;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const Rect cell = vertical_ ? Rect{inner.left, at, inner.right, at + along[i]}
                                    : Rect{at, inner.top, at + along[i], inner.bottom};
        shown[i]->arrange(shown[i]->aligned(cell, vertical_));
        at += along[i] + gap_;
    }
}

} // namespace velora
