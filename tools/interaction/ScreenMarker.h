// The marker of an adjusting drag straight on the screen of a view of the legacy renderer, which
// keeps no drawing of tools. Main thread only.
#pragma once

namespace vellum {

struct AdjustMarker;

class ScreenMarker {
public:
    /// In the active view, in place of the one there is.
    void draw(const AdjustMarker& marker);
    void erase();
    /// The view is drawn anew, and the marker goes with its old picture.
    void forget() { drawn_ = false; }

private:
    bool drawn_ = false;
};

} // namespace vellum
