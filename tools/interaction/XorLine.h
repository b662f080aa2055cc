// A line straight on the screen of a view of the legacy renderer, which keeps no drawing of tools.
// Drawn by exclusive-or: a second time, and it is gone. Main thread only.
#pragma once

#include <QPolygonF>

namespace vellum {

class XorLine {
public:
    bool isDrawn() const { return drawn_; }

    /// A closed line in the active view, in place of the one there is; view pixels, origin at the
    /// bottom left.
    void draw(const QPolygonF& line);
    void erase();
    /// The view has been drawn anew, and the line is gone with its old picture.
    void forget() { drawn_ = false; }

private:
    void toggle();

    bool drawn_ = false;
    QPolygonF line_;
};

} // namespace vellum
