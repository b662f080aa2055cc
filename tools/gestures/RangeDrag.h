// A highlighted range of the time slider being dragged along it, as far as the slider tells: idle →
// pressed with a range → dragged → the time followed with the range as long as before → released.
// Knows neither the slider nor the drawing.
#pragma once

#include <optional>
#include <utility>

namespace vellum {

class RangeDrag {
public:
    using Range = std::pair<double, double>; ///< frames, [start, end)

    /// What a drag that has ended asks for: the drawings of frames `start`..`end` go `offset`
    /// frames on, the last one with them. By 0 frames, everything stays and only has to be shown
    /// where it is.
    struct Move {
        int offset = 0;
        int start = 0;
        int end = 0;
    };

    // `highlighted` is the range that the slider highlights now, empty when it highlights none.

    /// Forgets any drag; the next one starts from `highlighted`.
    void restart(const std::optional<Range>& highlighted);
    /// Forgets any drag and where the next one would start.
    void forget();

    /// The first button goes down. A drag whose release never came ends before it.
    std::optional<Move> press(const std::optional<Range>& highlighted);
    /// The pointer moves while a button is down.
    void move();
    /// The time has changed.
    void follow(const std::optional<Range>& highlighted);
    /// The last button is up. `highlighted` is where the next drag starts.
    std::optional<Move> release(const std::optional<Range>& highlighted);

    bool isDragging() const { return dragging_; }
    /// Frames by which the range has been dragged so far.
    int offset() const { return offset_; }
    /// The range as it was before the drag.
    const std::optional<Range>& before() const { return before_; }

private:
    bool rangeAtPress_ = false;
    bool dragging_ = false;
    bool followed_ = false; ///< the time has changed during the drag
    std::optional<Range> before_;
    int offset_ = 0;
};

} // namespace vellum
