#pragma once
// The row of text buttons over a box that mail and instant messages are written in. They act on
// the selection of that box.
#include "aolhost/Controls.h"
#include "aolhost/RichText.h"

#include <vector>

namespace aolhost {

class FormatBar {
public:
    /// Makes `count` buttons (at most ten) as children of `parent`, next in its order.
    void build(HWND parent, RichText& target, int count);
    void place(int x, int y);
    void show(bool visible);
    int width() const { return static_cast<int>(icons_.size()) * kStep; }

    static constexpr int kStep = 25;

private:
    std::vector<IconButton*> icons_;
};

} // namespace aolhost
