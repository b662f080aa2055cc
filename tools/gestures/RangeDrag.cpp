#include "tools/gestures/RangeDrag.h"

namespace vellum {

void RangeDrag::forget() {
    *this = RangeDrag();
}

void RangeDrag::restart(const std::optional<Range>& highlighted) {
    forget();
    before_ = highlighted;
}

std::optional<RangeDrag::Move> RangeDrag::press(const std::optional<Range>& highlighted) {
    std::optional<Move> unreleased;
    if (dragging_)
        unreleased = release(highlighted);
    followed_ = false;
    rangeAtPress_ = highlighted.has_value();
    return unreleased;
}

void RangeDrag::move() {
    dragging_ = dragging_ || rangeAtPress_;
}

void RangeDrag::follow(const std::optional<Range>& highlighted) {
    if (!dragging_)
        return;
    if (!highlighted) {
        forget();
        return;
    }
    // A range of another length is being resized, not moved.
    if (before_ && highlighted->first - before_->first == highlighted->second - before_->second)
        offset_ = static_cast<int>(highlighted->first) - static_cast<int>(before_->first);
    followed_ = true;
}

std::optional<RangeDrag::Move> RangeDrag::release(const std::optional<Range>& highlighted) {
    std::optional<Move> result;
    if (followed_ && before_)
        result =
            Move{offset_, static_cast<int>(before_->first), static_cast<int>(before_->second) - 1};
    restart(highlighted);
    return result;
}

} // namespace vellum
