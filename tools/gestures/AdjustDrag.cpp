#include "tools/gestures/AdjustDrag.h"

#include <utility>

namespace vellum {

namespace {
constexpr int kDragPerStep = 10; // view pixels for one unit
} // namespace

AdjustDrag::Option AdjustDrag::optionFor(bool sizeKeyHeld, bool opacityKeyHeld, bool opacityFixed) {
    if (sizeKeyHeld)
        return Option::Size;
    return opacityKeyHeld && !opacityFixed ? Option::Opacity : Option::None;
}

void AdjustDrag::begin(Option option, int value, QPoint anchor) {
    option_ = option;
    startValue_ = value;
    anchor_ = anchor;
}

bool AdjustDrag::end() {
    return std::exchange(option_, Option::None) != Option::None;
}

int AdjustDrag::valueAt(QPoint position) const {
    return (position.x() - anchor_.x()) / kDragPerStep + startValue_;
}

} // namespace vellum
