#pragma once
// Placing controls in rows and columns. A form says what stands beside what and what grows:
//
//   setLayout(rows({lblFolder, columns({grow(txtFolder), cmdBrowse}), grow(lstSounds),
//                   buttonRow({cmdOK, cmdCancel})}));
//
// The computation knows no window; all lengths are pixels.
#include "ui/Geometry.h"

#include <utility>
#include <vector>

namespace velora {

/// The distances of a dialog: from its edge, between unrelated things, between a label and its
/// control or two buttons.
inline constexpr int kMargin = 11;
inline constexpr int kGap = 7;
inline constexpr int kNear = 4;

/// Something that can be put into a layout. It must outlive the layout.
class Placeable {
public:
    virtual Size preferredSize() const = 0;
    virtual void place(const Rect& where) = 0;
    /// False for what is hidden: it gets no room and no gap.
    virtual bool takesSpace() const { return true; }

protected:
    ~Placeable() = default;
};

enum class Align { stretch, start, middle, end };

/// A node of a layout: a control, blank space, or a row or column of nodes. Copies share nothing
/// but the controls.
class Box {
public:
    Box() = default;
    Box(Placeable& item) : item_(&item) {} // NOLINT: implicit, so that lists of controls read well

    /// The share of the room left over along the parent's direction (0 = keeps its size).
    Box grow(int weight = 1) const;
    /// At least this long; 0 leaves that direction as it is.
    Box atLeast(Size least) const;
    /// Where it stands across the parent's direction (the default fills it).
    Box align(Align how) const;
    Box margins(int left, int top, int right, int bottom) const;
    Box margins(int all = kMargin) const { return margins(all, all, all, all); }
    /// Children along the direction all get the longest one's size (buttons of a row).
    Box sameSizes() const;
    /// A control behind the whole node, its margins included (a group box).
    Box framedBy(Placeable& frame) const;

    Size preferredSize() const;
    void arrange(const Rect& where) const;
    bool takesSpace() const;

private:
    friend Box line(std::vector<Box> children, int gap, bool vertical);

    Placeable* item_ = nullptr;
    Placeable* frame_ = nullptr;
    std::vector<Box> children_;
    bool vertical_ = false;
    bool container_ = false;
    bool sameSizes_ = false;
    int gap_ = 0;
    int grow_ = 0;
    Align align_ = Align::stretch;
    Size least_;
    Rect margins_; // the four widths

    std::vector<int> lengths(const std::vector<const Box*>& shown, int available) const;
    std::vector<const Box*> shownChildren() const;
    Rect aligned(const Rect& cell, bool verticalParent) const;
    int along(Size size) const { return vertical_ ? size.height : size.width; }
    int across(Size size) const { return vertical_ ? size.width : size.height; }
};

Box line(std::vector<Box> children, int gap, bool vertical);

/// One under the other.
inline Box rows(std::vector<Box> children, int gap = kGap)
{
    return line(std::move(children), gap, true);
}
/// One beside the other.
inline Box columns(std::vector<Box> children, int gap = kGap)
{
    return line(std::move(children), gap, false);
}
inline Box grow(const Box& box, int weight = 1)
{
    return box.grow(weight);
}
/// Blank room: as much as is left, or exactly `length` both ways.
inline Box space()
{
    return Box().grow();
}
inline Box blank(int length)
{
    return Box().atLeast({length, length});
}
/// Buttons of one width at the right end.
Box buttonRow(std::vector<Box> buttons);
/// Buttons of one width in the middle.
Box buttonRowCentred(std::vector<Box> buttons);

} // namespace velora
